#pragma once

#include "Platform/Linux/MainLoop.h"
#include "Platform/X11/Accessibility.h"
#include "Platform/X11/Beep.h"
#include "Platform/X11/Connection.h"
#include "Platform/X11/Fence.h"
#include "Platform/X11/HotKeys.h"
#include "Platform/X11/Placement.h"
#include "Platform/X11/Screens.h"
#include "Platform/X11/Turn.h"
#include "Platform/X11/Workspace.h"

#include <expected>
#include <memory>
#include <string>

namespace platform::x11 {

/// An X11 desktop: one connection and all that is done through it, fed by the main loop.
class Desktop {
public:
    /// Connects to the environment's DISPLAY. The error is a sentence for the user.
    [[nodiscard]] static std::expected<std::unique_ptr<Desktop>, std::string> open(linux::MainLoop& mainLoop);

    Desktop(linux::MainLoop& mainLoop, Connection opened);
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;
    ~Desktop() = default;

    /// Names the session among those that the user may have: the environment's display and its screen, whether or not
    /// they answer. Empty where DISPLAY names none.
    [[nodiscard]] static std::string sessionName();

    [[nodiscard]] Accessibility& accessibility() { return windows; }

    [[nodiscard]] Beep& sound() { return bell; }

    [[nodiscard]] HotKeys& hotKeyEvents() { return hotKeys; }

    [[nodiscard]] Screens& screens() { return monitors; }

    [[nodiscard]] Workspace& workspace() { return applications; }

private:
    [[nodiscard]] bool finishTurn();
    void serveEvents();
    void handle(const xcb_generic_event_t& event);
    void handlePropertyChange(const xcb_property_notify_event_t& event);
    void followKeyboardSoon();
    void renewGrabsSoon();
    [[nodiscard]] bool askForTrust();

    linux::MainLoop& mainLoop;
    Connection connection;
    Turn turn{connection};
    Fence fence{connection};
    Placement placement{connection, turn, fence};
    Accessibility windows;
    Beep bell{connection};
    HotKeys hotKeys{connection};
    Screens monitors{turn};
    Workspace applications{turn};
    std::uint8_t keyboardEvent = 0;
    bool guessIsStale = true;
    std::unique_ptr<ScheduledWork> keyboardFollow;
    std::unique_ptr<ScheduledWork> grabRenewal;
    std::unique_ptr<linux::DescriptorWatch> watch;
};

} // namespace platform::x11
