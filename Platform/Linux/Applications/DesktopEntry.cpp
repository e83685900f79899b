#include "Platform/Linux/Applications/DesktopEntry.h"

#include "Platform/Linux/Applications/KeyFile.h"
#include "Platform/Linux/RegularFile.h"

#include <algorithm>
#include <vector>

namespace platform::linux {
namespace {

bool isForOneOf(std::span<const std::string> desktops, const KeyFile& file) {
    const std::vector<std::string> only = file.texts(DesktopEntry::group, "OnlyShowIn");
    const std::vector<std::string> never = file.texts(DesktopEntry::group, "NotShowIn");
    // The first of the desktop's names that either list has decides.
    for (const std::string& desktop : desktops) {
        if (std::ranges::find(only, desktop) != only.end()) {
            return true;
        }
        if (std::ranges::find(never, desktop) != never.end()) {
            return false;
        }
    }
    return !file.text(DesktopEntry::group, "OnlyShowIn");
}

} // namespace

std::optional<DesktopEntry> DesktopEntry::parse(std::string_view contents,
                                                std::span<const std::string> currentDesktops) {
    const std::optional<KeyFile> file = KeyFile::parse(contents);
    return file ? from(*file, currentDesktops) : std::nullopt;
}

std::optional<DesktopEntry> DesktopEntry::from(const KeyFile& file, std::span<const std::string> currentDesktops) {
    if (!file.hasGroup(group)) {
        return std::nullopt;
    }
    const auto text = [&](const char* key) { return file.text(group, key).value_or(""); };
    return DesktopEntry{
        .isApplication = text("Type") == "Application",
        .isHidden = file.flag(group, "Hidden").value_or(false),
        .isListed = !file.flag(group, "NoDisplay").value_or(false),
        .isForThisDesktop = isForOneOf(currentDesktops, file),
        .needsTerminal = file.flag(group, "Terminal").value_or(false),
        .isAutostartEnabled = file.flag(group, "X-GNOME-Autostart-enabled").value_or(true),
        .name = file.localizedText(group, "Name").value_or(""),
        .icon = file.localizedText(group, "Icon").value_or(""),
        .exec = text("Exec"),
        .tryExec = text("TryExec"),
        .windowClass = text("StartupWMClass"),
        .flatpak = text("X-Flatpak"),
        .snapInstance = text("X-SnapInstanceName"),
    };
}

std::optional<DesktopEntry> DesktopEntry::read(const std::string& path, std::span<const std::string> currentDesktops) {
    const std::optional<std::string> contents = readRegularFile(path, largestFile, Excess::refused);
    return contents ? parse(*contents, currentDesktops) : std::nullopt;
}

} // namespace platform::linux
