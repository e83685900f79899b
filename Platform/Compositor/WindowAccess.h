#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Compositor/Window.h"
#include "Platform/Seam/Desktop/Accessibility.h"
#include "Platform/Seam/Desktop/MainActor.h"

#include <optional>
#include <string>

namespace platform::compositor {

/// The way to one compositor: keeps a `WindowTable` up to date and carries requests out. No other class knows the
/// compositor's protocol. Main thread only; rectangles are in the compositor's own space.
class WindowAccess {
public:
    WindowAccess() = default;
    WindowAccess(const WindowAccess&) = delete;
    WindowAccess& operator=(const WindowAccess&) = delete;
    virtual ~WindowAccess() = default;

    /// Brings the table up to date, within `deadline`. Asked before the first reading of each turn of the event loop; a
    /// window access that receives an event for every change has nothing to do.
    virtual void refresh(Instant deadline) = 0;

    /// Requests a window's frame; a maximized or tiled window is released. Waits until the window has come to rest and
    /// the table has its final frame, at the latest until `deadline`, and then returns `cannotComplete`. With a
    /// deadline in the past it only sends the request. `invalidUIElement` for a window that is gone.
    virtual AXError place(const WindowIdentifier& window, const corvid::CGRect& frame, Instant deadline) = 0;

    /// Shows the user how to grant the access, if it is missing and the user can grant it. Does not wait.
    virtual void prompt() {}

    /// The reason why there is no access; without meaning while there is.
    [[nodiscard]] virtual AccessObstacle obstacle() const = 0;

    /// The pointer's position; empty if the compositor does not report it.
    [[nodiscard]] virtual std::optional<corvid::CGPoint> pointer() = 0;

    /// Sets the position of the window of this process with that title, by its visible top-left corner: at once if it
    /// is shown, and otherwise when it appears, before it is drawn elsewhere if the compositor can do that. The window
    /// is above other windows, on all workspaces and in no task bar, and gets the keyboard focus.
    virtual void placeOwnWindow(const std::string& title, corvid::CGPoint topLeft) = 0;
};

} // namespace platform::compositor
