#pragma once

#include "Platform/Compositor/Desktop.h"
#include "Platform/KWin/AccelHolders.h"
#include "Platform/KWin/Door.h"
#include "Platform/KWin/HotKeys.h"
#include "Platform/Linux/SoundThemeBeep.h"

#include <filesystem>
#include <memory>
#include <string_view>

namespace platform::kwin {

/// The members that live longer than the rest of the desktop.
struct DesktopParts {
    DesktopParts(linux::MainLoop& mainLoop, const std::filesystem::path& script, HotKeys::Naming naming);

    /// A connection of its own: a placement reads it while it waits.
    linux::SessionBus bus;
    compositor::WindowTable table;
    Door door;
    HotKeys hotKeys;
    AccelHolders holders;
};

/// Plasma on Wayland: KWin, by a script of ours in it, and KGlobalAccel for the keys.
class Desktop final : private DesktopParts, public compositor::Desktop {
public:
    /// Everything that follows takes at most this when the program starts.
    static constexpr std::chrono::seconds startPatience{2};

    /// Waits until KWin runs our script, so that the shortcuts are there at once; if it takes too long, the desktop
    /// is one that does not let us work yet. `script` is the file that KWin loads, `naming` what the user reads of the
    /// keys in the system's settings.
    Desktop(linux::MainLoop& mainLoop, const std::filesystem::path& script, HotKeys::Naming naming);

    [[nodiscard]] std::string_view name() const override { return "KWin"; }

    [[nodiscard]] Beep& sound() override { return bell; }

    [[nodiscard]] HotKeyEvents& hotKeyEvents() override { return hotKeys; }

    [[nodiscard]] ShortcutHolders* shortcutHolders() override { return &holders; }

private:
    linux::SoundThemeBeep bell;
};

} // namespace platform::kwin
