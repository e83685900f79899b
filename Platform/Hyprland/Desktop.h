#pragma once

#include "Platform/Compositor/Desktop.h"
#include "Platform/Compositor/WindowTable.h"
#include "Platform/Hyprland/BindHolders.h"
#include "Platform/Hyprland/HotKeys.h"
#include "Platform/Hyprland/Instance.h"
#include "Platform/Hyprland/Session.h"
#include "Platform/Hyprland/WindowAccess.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Linux/Services/SoundThemeBeep.h"

#include <chrono>
#include <memory>
#include <string_view>

namespace platform::hyprland {

/// The members that live longer than the rest of the desktop.
struct DesktopParts {
    DesktopParts(linux::MainLoop& mainLoop, const InstanceFacts& facts);

    compositor::WindowTable windowTable;
    Session session;
    WindowAccess access;
};

/// A Hyprland desktop. When no compositor has shown this session's windows for a while, it counts as gone and the loop
/// ends; one that is started anew on the same display meanwhile is taken.
class Desktop final : private DesktopParts, public compositor::Desktop, private Session::Follower {
public:
    static constexpr std::chrono::seconds patience{15};
    /// An ending compositor removes its folder when the user logs out. The user may be back soon, with another one
    /// whose program would find this one still running.
    static constexpr std::chrono::seconds patienceAfterLeaving{2};

    /// Connects at once if the compositor is there, else when it is. `naming`: the text for a combination in the
    /// compositor's lists.
    Desktop(linux::MainLoop& mainLoop, const InstanceFacts& facts, HotKeys::Naming naming);

    [[nodiscard]] std::string_view name() const override { return "Hyprland"; }

    [[nodiscard]] Beep& sound() override { return bell; }

    [[nodiscard]] HotKeyEvents& hotKeyEvents() override { return hotKeys; }

    [[nodiscard]] ShortcutHolders* shortcutHolders() override { return &holders; }

private:
    void sessionOpened() override { end.reset(); }

    void sessionClosed() override;
    void sessionTold(std::string_view /*event*/, std::string_view /*data*/) override {}

    void sessionIsQuiet() override {}

    /// Ends the loop unless the session opens before.
    void endAfter(Duration delay);

    linux::MainLoop& mainLoop;
    InstanceFacts facts;
    linux::SoundThemeBeep bell;
    std::unique_ptr<ScheduledWork> end;
    HotKeys hotKeys;
    BindHolders holders{mainLoop, hotKeys};
};

} // namespace platform::hyprland
