#pragma once

#include "Platform/Compositor/CompositorEnd.h"
#include "Platform/Compositor/WindowParts.h"
#include "Platform/Compositor/WindowTable.h"
#include "Platform/Hyprland/HotKeys.h"
#include "Platform/Hyprland/Instance.h"
#include "Platform/Hyprland/Session.h"
#include "Platform/Hyprland/WindowAccess.h"
#include "Platform/Linux/Desktop.h"
#include "Platform/Linux/Holders/KnownHolders.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Linux/Services/SoundThemeBeep.h"

#include <string_view>

namespace platform::hyprland {

/// A Hyprland desktop. When no compositor has shown this session's windows for a while, it counts as gone and the loop
/// ends; one that is started anew on the same display meanwhile is taken.
class Desktop final : public linux::Desktop, private Session::Follower {
public:
    /// Connects at once if the compositor is there, else when it is. `naming`: the text for a combination in the
    /// compositor's lists.
    Desktop(linux::MainLoop& mainLoop, const InstanceFacts& facts, HotKeys::Naming naming);

    [[nodiscard]] std::string_view name() const override { return "Hyprland"; }

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
    HotKeys hotKeys;
    linux::KnownHolders holders;
};

} // namespace platform::hyprland
