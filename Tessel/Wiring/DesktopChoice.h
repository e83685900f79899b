#pragma once

#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/Desktop.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Seam/Desktop/Localization.h"
#include "Tessel/Wiring/SessionFacts.h"

#include <cstdint>
#include <expected>
#include <filesystem>
#include <memory>
#include <string>

namespace tessel {

/// The paths of the program's own files that a desktop shows or gets.
struct ProgramFolders {
    std::filesystem::path icons;
    /// The forms of the extension for GNOME Shell.
    std::filesystem::path shellExtension;
    /// The script that runs inside KWin.
    std::filesystem::path kwinScript;
    /// The code that runs inside Cinnamon.
    std::filesystem::path cinnamonCore;
};

/// The dependencies of a desktop. All of them outlive it.
struct DesktopNeeds {
    platform::linux::MainLoop& mainLoop;
    platform::linux::SessionBus& sessionBus;
    const platform::Localization& localization;
    ProgramFolders folders;
};

enum class DesktopKind : std::uint8_t {
    sway,
    wayfire,
    hyprland,
    kwin,
    gnomeShell,
    cinnamon,
    x11,
    /// A Wayland session of a compositor without an interface to its windows for us.
    unsupported,
    /// Nothing shows windows here.
    none,
};

/// The kind of the session's desktop. A plain X11 desktop is taken only where there is no Wayland session.
[[nodiscard]] DesktopKind desktopKind(const SessionFacts& facts);

/// The desktop of the session. One without a backend is no error: the program runs on it and says what is missing. The
/// error is a sentence for the user.
[[nodiscard]] std::expected<std::unique_ptr<platform::linux::Desktop>, std::string>
openDesktop(const DesktopNeeds& needs, const SessionFacts& facts);

} // namespace tessel
