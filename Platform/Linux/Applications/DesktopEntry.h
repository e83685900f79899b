#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace platform::linux {

class KeyFile;

/// The keys of a desktop entry that this program uses (Desktop Entry Specification, Recognized desktop entry keys).
/// Texts are empty where a key is missing or unreadable.
struct DesktopEntry {
    /// `Type=Application`.
    bool isApplication = false;
    /// `Hidden`: as if the entry did not exist, nor one of the same name in a folder that comes later.
    bool isHidden = false;
    /// Not `NoDisplay`: it is to be listed among the applications to choose from.
    bool isListed = true;
    /// `OnlyShowIn` and `NotShowIn` leave this desktop in.
    bool isForThisDesktop = true;
    /// `Terminal`: the program runs in a terminal emulator, which shows the window.
    bool needsTerminal = false;
    /// `X-GNOME-Autostart-enabled`: several desktops switch an entry for autostart off by it.
    bool isAutostartEnabled = true;
    /// In the user's language.
    std::string name;
    std::string icon;
    std::string exec;
    std::string tryExec;
    std::string windowClass;  ///< `StartupWMClass`
    std::string flatpak;      ///< `X-Flatpak`: the Flatpak application's id
    std::string snapInstance; ///< `X-SnapInstanceName`

    /// The group of a file that describes the entry itself.
    static constexpr const char* group = "Desktop Entry";

    /// Larger files are no desktop entries. One with all the world's translations has a twentieth of it.
    static constexpr std::size_t largestFile = std::size_t{1} << 20U;

    /// Nothing where that is no desktop entry. `currentDesktops` are the names in `XDG_CURRENT_DESKTOP`.
    [[nodiscard]] static std::optional<DesktopEntry> parse(std::string_view contents,
                                                           std::span<const std::string> currentDesktops = {});

    /// The same from a file that was taken apart already.
    [[nodiscard]] static std::optional<DesktopEntry> from(const KeyFile& file,
                                                          std::span<const std::string> currentDesktops = {});

    /// The same from a regular file.
    [[nodiscard]] static std::optional<DesktopEntry> read(const std::string& path,
                                                          std::span<const std::string> currentDesktops = {});
};

} // namespace platform::linux
