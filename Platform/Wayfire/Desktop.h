#pragma once

#include "Platform/Compositor/CompositorEnd.h"
#include "Platform/Compositor/WindowParts.h"
#include "Platform/Compositor/WindowTable.h"
#include "Platform/Linux/Desktop.h"
#include "Platform/Linux/Holders/KnownHolders.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Linux/Services/SoundThemeBeep.h"
#include "Platform/Wayfire/ConfigurationWatch.h"
#include "Platform/Wayfire/HotKeys.h"
#include "Platform/Wayfire/Session.h"
#include "Platform/Wayfire/WindowAccess.h"

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

/// A Wayfire desktop. When neither of its sockets has had a listener for a while, Wayfire counts as gone and the loop
/// ends.
class Desktop final : public linux::Desktop, private Session::Follower {
public:
    /// Connects at once if the IPC is there, else when it appears.
    Desktop(linux::MainLoop& mainLoop, Sockets where);

    [[nodiscard]] std::string_view name() const override { return "Wayfire"; }

    void followApplications(linux::ApplicationIdentification& identification,
                            ApplicationCatalogue& catalogue) override {
        windows.followApplications(identification, catalogue);
    }

    [[nodiscard]] DesktopParts parts() override { return windows.with(bell, hotKeys, &holders); }

private:
    void sessionOpened() override;
    void sessionClosed() override;

    void endUnlessItRuns();

    linux::MainLoop& mainLoop;
    Sockets sockets;
    Session session;
    compositor::WindowTable table;
    WindowAccess access;
    compositor::WindowParts windows;
    linux::SoundThemeBeep bell;
    compositor::CompositorEnd end;
    HotKeys hotKeys;
    linux::KnownHolders holders{mainLoop,
                                [this](const corvid::Shortcut& shortcut) { return hotKeys.holderOf(shortcut); }};
    /// Of the file that the present compositor reads; null while there is none.
    std::unique_ptr<ConfigurationWatch> configuration;
};

} // namespace platform::wayfire
