#pragma once

#include "Platform/Compositor/WindowParts.h"
#include "Platform/Compositor/WindowTable.h"
#include "Platform/Linux/Desktop.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Linux/Services/SoundThemeBeep.h"
#include "Platform/Sway/ConfigurationHolders.h"
#include "Platform/Sway/HotKeys.h"
#include "Platform/Sway/LastCommands.h"
#include "Platform/Sway/Session.h"
#include "Platform/Sway/WindowAccess.h"

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

namespace platform::sway {

/// A sway desktop. When its socket has had no listener for a while, sway counts as gone and the loop ends.
class Desktop final : public linux::Desktop, private Session::Follower {
public:
    /// A compositor that a supervisor restarts listens at the same socket before this is over.
    static constexpr std::chrono::seconds patience{15};
    /// An ending compositor removes its socket when the user logs out. The user may be back soon, with another sway
    /// whose program would find this one still running. So the socket is looked for at this interval.
    static constexpr std::chrono::seconds betweenLooks{2};

    /// `socketPath`: sway's socket, from the environment (SWAYSOCK). Connects at once if it is there, else when
    /// it appears.
    Desktop(linux::MainLoop& mainLoop, const std::string& socketPath);

    [[nodiscard]] std::string_view name() const override { return "sway"; }

    void followApplications(linux::ApplicationIdentification& identification,
                            ApplicationCatalogue& catalogue) override {
        windows.followApplications(identification, catalogue);
    }

    [[nodiscard]] DesktopParts parts() override { return windows.with(bell, hotKeys, &holders); }

private:
    void sessionOpened() override { end.reset(); }

    void sessionClosed() override;
    void sessionTold(i3ipc::EventType /*type*/, const i3ipc::Json& /*content*/) override {}

    void sessionIsQuiet() override {}

    /// Ends the loop at the limit, or once the socket is gone, unless the session opens before.
    void endUnlessBackBy(Instant limit);
    void giveUp();

    linux::MainLoop& mainLoop;
    std::string socketPath;
    Session session;
    compositor::WindowTable table;
    WindowAccess access;
    compositor::WindowParts windows{mainLoop, table, access};
    linux::SoundThemeBeep bell;
    std::unique_ptr<ScheduledWork> end;
    LastCommands lastCommands;
    HotKeys hotKeys;
    ConfigurationHolders holders{mainLoop, hotKeys};
};

} // namespace platform::sway
