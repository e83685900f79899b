#pragma once

#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/Desktop.h"
#include "Platform/Linux/MainLoop.h"
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
};

enum class DesktopKind : std::uint8_t {
    sway,
    kwin,
    gnomeShell,
    x11,
    /// A Wayland session of a compositor without an interface to its windows for us.
    unsupported,
    /// Nothing shows windows here.
    none,
};

/// The placer of the session's windows. A plain X11 desktop is chosen only without a Wayland session.
[[nodiscard]] DesktopKind desktopKind(const SessionFacts& facts);

/// The desktop of the session; loop and bus must outlive it. A desktop without a backend is not an error: the program
/// runs on it, and reports the missing requirement. The error is a sentence for the user.
[[nodiscard]] std::expected<std::unique_ptr<platform::linux::Desktop>, std::string>
openDesktop(platform::linux::MainLoop& mainLoop, platform::linux::SessionBus& sessionBus, const SessionFacts& facts,
            const ProgramFolders& folders);

} // namespace tessel
