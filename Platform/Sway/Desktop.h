#pragma once

#include "Platform/Compositor/Desktop.h"
#include "Platform/Compositor/WindowTable.h"
#include "Platform/Linux/MainLoop.h"
#include "Platform/Linux/SoundThemeBeep.h"
#include "Platform/Sway/ConfigurationHolders.h"
#include "Platform/Sway/Door.h"
#include "Platform/Sway/HotKeys.h"
#include "Platform/Sway/LastCommands.h"
#include "Platform/Sway/Session.h"

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

namespace platform::sway {

/// The members that live longer than the rest of the desktop.
struct DesktopParts {
    DesktopParts(linux::MainLoop& mainLoop, const std::string& socketPath);

    compositor::WindowTable windowTable;
    Session session;
    Door door;
};

/// A sway desktop. When its socket has had no listener for a while, sway counts as gone and the loop ends.
class Desktop final : private DesktopParts, public compositor::Desktop, private Session::Follower {
public:
    /// A compositor that is started anew, as by a supervisor, listens at the same socket before this is over.
    static constexpr std::chrono::seconds patience{15};
    /// One that ends as the user leaves takes its socket along. The user may be back soon, with another sway whose
    /// program would find this one in its place.
    static constexpr std::chrono::seconds patienceAfterLeaving{2};

    /// `socketPath`: where sway listens, as the environment says (SWAYSOCK). Opens the door at once if it is there,
    /// else when it comes.
    Desktop(linux::MainLoop& mainLoop, const std::string& socketPath);

    [[nodiscard]] std::string_view name() const override { return "sway"; }

    [[nodiscard]] Beep& sound() override { return bell; }

    [[nodiscard]] HotKeyEvents& hotKeyEvents() override { return hotKeys; }

    [[nodiscard]] ShortcutHolders* shortcutHolders() override { return &holders; }

private:
    void sessionOpened() override { end.reset(); }

    void sessionClosed() override;
    void sessionTold(EventType type, const Json& content) override;

    void sessionIsQuiet() override {}

    /// Ends the loop unless the session opens before.
    void endAfter(Duration delay);

    linux::MainLoop& mainLoop;
    std::string socketPath;
    linux::SoundThemeBeep bell;
    std::unique_ptr<ScheduledWork> end;
    LastCommands lastCommands;
    HotKeys hotKeys;
    ConfigurationHolders holders{mainLoop, hotKeys};
};

} // namespace platform::sway
