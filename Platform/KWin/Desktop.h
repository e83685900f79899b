#pragma once

#include "Platform/Compositor/WindowParts.h"
#include "Platform/KWin/AccelHolders.h"
#include "Platform/KWin/HotKeys.h"
#include "Platform/KWin/WindowAccess.h"
#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/Desktop.h"
#include "Platform/Linux/Services/SoundThemeBeep.h"

#include <filesystem>
#include <memory>
#include <string_view>

namespace platform::kwin {

/// Plasma on Wayland: KWin, through our own script in it, and KGlobalAccel for the keys.
class Desktop final : public linux::Desktop {
public:
    /// The limit for all waiting below when the program starts.
    static constexpr std::chrono::seconds startPatience{2};

    /// Waits until KWin runs our script, so that the shortcuts work at once. If that takes too long, the desktop starts
    /// without the permission to move windows. `script` is the file that KWin loads, `naming` the text for the keys in
    /// the system's settings.
    Desktop(linux::MainLoop& mainLoop, const std::filesystem::path& script, HotKeys::Naming naming);

    [[nodiscard]] std::string_view name() const override { return "KWin"; }

    void followApplications(linux::ApplicationIdentification& identification,
                            ApplicationCatalogue& catalogue) override {
        windows.followApplications(identification, catalogue);
    }

    [[nodiscard]] DesktopParts parts() override { return windows.with(bell, hotKeys, &holders); }

private:
    /// A connection of its own, because a placement reads it while it waits.
    linux::SessionBus bus;
    compositor::WindowTable table;
    WindowAccess access;
    compositor::WindowParts windows;
    HotKeys hotKeys;
    AccelHolders holders;
    linux::SoundThemeBeep bell;
};

} // namespace platform::kwin
