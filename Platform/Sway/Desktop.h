#pragma once

#include "Platform/Compositor/CompositorEnd.h"
#include "Platform/Compositor/WindowParts.h"
#include "Platform/Compositor/WindowTable.h"
#include "Platform/Linux/Desktop.h"
#include "Platform/Linux/Holders/KnownHolders.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Linux/Services/SoundThemeBeep.h"
#include "Platform/Sway/HotKeys.h"
#include "Platform/Sway/LastCommands.h"
#include "Platform/Sway/Session.h"
#include "Platform/Sway/WindowAccess.h"

#include <string>
#include <string_view>

namespace platform::sway {

/// A sway desktop. When its socket has had no listener for a while, sway counts as gone and the loop ends.
class Desktop final : public linux::Desktop, private Session::Follower {
public:
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
    void sessionOpened() override { end.reached(); }

    void sessionClosed() override { end.lost(); }

    Session session;
    compositor::WindowTable table;
    WindowAccess access;
    compositor::WindowParts windows;
    linux::SoundThemeBeep bell;
    compositor::CompositorEnd end;
    LastCommands lastCommands;
    HotKeys hotKeys;
    linux::KnownHolders holders;
};

} // namespace platform::sway
