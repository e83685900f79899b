#pragma once

#include "Platform/Compositor/Desktop.h"
#include "Platform/KWin/AccelHolders.h"
#include "Platform/KWin/HotKeys.h"
#include "Platform/KWin/WindowAccess.h"
#include "Platform/Linux/Services/SoundThemeBeep.h"

#include <filesystem>
#include <memory>
#include <string_view>

namespace platform::kwin {

/// The members that live longer than the rest of the desktop.
struct DesktopParts {
    DesktopParts(linux::MainLoop& mainLoop, const std::filesystem::path& script, HotKeys::Naming naming);

    /// A connection of its own, because a placement reads it while it waits.
    linux::SessionBus bus;
    compositor::WindowTable table;
    WindowAccess access;
    HotKeys hotKeys;
    AccelHolders holders;
};

/// Plasma on Wayland: KWin, through our own script in it, and KGlobalAccel for the keys.
class Desktop final : private DesktopParts, public compositor::Desktop {
public:
    /// The limit for all waiting below when the program starts.
    static constexpr std::chrono::seconds startPatience{2};

    /// Waits until KWin runs our script, so that the shortcuts work at once. If that takes too long, the desktop starts
    /// without the permission to move windows. `script` is the file that KWin loads, `naming` the text for the keys in
    /// the system's settings.
    Desktop(linux::MainLoop& mainLoop, const std::filesystem::path& script, HotKeys::Naming naming);

    [[nodiscard]] std::string_view name() const override { return "KWin"; }

    [[nodiscard]] Beep& sound() override { return bell; }

    [[nodiscard]] HotKeyEvents& hotKeyEvents() override { return hotKeys; }

    [[nodiscard]] ShortcutHolders* shortcutHolders() override { return &holders; }

private:
    linux::SoundThemeBeep bell;
};

} // namespace platform::kwin
