#pragma once

#include "Platform/Compositor/Desktop.h"
#include "Platform/Compositor/WindowTable.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Linux/Services/SoundThemeBeep.h"
#include "Platform/Wayfire/BindingHolders.h"
#include "Platform/Wayfire/ConfigurationWatch.h"
#include "Platform/Wayfire/HotKeys.h"
#include "Platform/Wayfire/Session.h"
#include "Platform/Wayfire/WindowAccess.h"

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

namespace platform::wayfire {

/// The ways to a Wayfire, as paths of Unix sockets.
struct Sockets {
    /// Of the IPC: WAYFIRE_SOCKET. Where the plugin "ipc" is not loaded there is none, and this is its place.
    std::string ipc;
    /// Of the compositor itself.
    std::string wayland;
};

/// The members that live longer than the rest of the desktop.
struct DesktopParts {
    DesktopParts(linux::MainLoop& mainLoop, const Sockets& sockets);

    Sockets sockets;
    compositor::WindowTable windowTable;
    Session session;
    WindowAccess access;
};

/// A Wayfire desktop. When neither of its sockets has had a listener for a while, Wayfire counts as gone and the loop
/// ends.
class Desktop final : private DesktopParts, public compositor::Desktop, private Session::Follower {
public:
    /// A compositor that a supervisor restarts listens at the same socket before this is over.
    static constexpr std::chrono::seconds patience{15};
    /// An ending compositor removes its socket when the user logs out. The user may be back soon, with another Wayfire
    /// whose program would find this one still running.
    static constexpr std::chrono::seconds patienceAfterLeaving{2};

    /// Connects at once if the IPC is there, else when it appears.
    Desktop(linux::MainLoop& mainLoop, const Sockets& sockets);

    [[nodiscard]] std::string_view name() const override { return "Wayfire"; }

    [[nodiscard]] Beep& sound() override { return bell; }

    [[nodiscard]] HotKeyEvents& hotKeyEvents() override { return hotKeys; }

    [[nodiscard]] ShortcutHolders* shortcutHolders() override { return &holders; }

private:
    void sessionOpened() override;

    void sessionClosed() override;
    void sessionTold(std::string_view /*event*/, const Json& /*content*/) override {}

    void sessionIsQuiet() override {}

    /// Ends the loop unless the session opens before, or the compositor runs all the same, as without the plugin.
    void endAfter(Duration delay);

    linux::MainLoop& mainLoop;
    linux::SoundThemeBeep bell;
    std::unique_ptr<ScheduledWork> end;
    HotKeys hotKeys;
    BindingHolders holders{mainLoop, hotKeys};
    /// Of the file that the present compositor reads; null while there is none.
    std::unique_ptr<ConfigurationWatch> configuration;
};

} // namespace platform::wayfire
