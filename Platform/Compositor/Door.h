#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Accessibility.h"
#include "Platform/Compositor/Window.h"
#include "Platform/MainActor.h"

#include <optional>
#include <string>

namespace platform::compositor {

/// The way to one compositor: keeps a `WindowTable` up to date and carries requests out. No other class knows the
/// compositor's protocol. Main thread only; rectangles are in the compositor's own space.
class Door {
public:
    Door() = default;
    Door(const Door&) = delete;
    Door& operator=(const Door&) = delete;
    virtual ~Door() = default;

    /// Brings the table up to date, within `deadline`. Asked before the first reading of each turn of the event loop; a
    /// door that receives an event for every change has nothing to do.
    virtual void refresh(Instant deadline) = 0;

    /// Asks for a window's frame; a maximized or tiled window is released. Waits until the window has come to rest and
    /// the table has the frame that it has settled on, at the latest until `deadline`, and then gives `cannotComplete`.
    /// With a deadline that has passed it only asks. `invalidUIElement` for a window that is gone.
    virtual AXError place(const WindowIdentifier& window, const corvid::CGRect& frame, Instant deadline) = 0;

    /// Shows the user how to open the door, where it is closed and there is a way. Does not wait.
    virtual void prompt() = 0;

    /// The reason why the door is closed; without meaning while it is open.
    [[nodiscard]] virtual AccessObstacle obstacle() const = 0;

    /// Where the pointer is; nothing where the compositor does not say.
    [[nodiscard]] virtual std::optional<corvid::CGPoint> pointer() = 0;

    /// Where the window of this process that has the title is to be, with its visible top-left corner there: now if it
    /// is shown, and otherwise as soon as it appears, before it is seen elsewhere where the compositor can do that. It
    /// is above other windows, on all workspaces and in no task bar, and has the keyboard.
    virtual void placeOwnWindow(const std::string& title, corvid::CGPoint topLeft) = 0;
};

} // namespace platform::compositor
