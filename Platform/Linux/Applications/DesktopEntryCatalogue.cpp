#include "Platform/Linux/Applications/DesktopEntryCatalogue.h"

#include "Platform/Linux/Applications/DesktopEntry.h"
#include "Platform/Linux/Applications/ExecLine.h"
#include "Platform/Linux/Applications/SearchTerms.h"
#include "Platform/Linux/RegularFile.h"

#include <array>
#include <system_error>

namespace platform::linux {
namespace {

bool mayBeEntry(const std::filesystem::path& location) {
    return location.is_absolute() && location.extension() == ".desktop";
}

std::optional<DesktopEntry> applicationAt(const std::filesystem::path& location) {
    std::optional<DesktopEntry> entry = mayBeEntry(location) ? DesktopEntry::read(location) : std::nullopt;
    return entry && entry->isApplication && !entry->isHidden ? entry : std::nullopt;
}

/// The path of a file within the first of the folders that it is in.
std::optional<std::string> pathInFolder(const std::string& path, const std::vector<std::string>& folders) {
    for (const std::string& folder : folders) {
        if (path.starts_with(folder + "/")) {
            return path.substr(folder.size() + 1);
        }
    }
    return std::nullopt;
}

/// `Icon` is a file, or a name in the icon theme; a name with an ending is a common mistake that desktops forgive.
ImageSource iconSource(const std::string& icon) {
    if (icon.starts_with('/')) {
        return ImageFile{icon};
    }
    constexpr std::array<std::string_view, 3> endings{".png", ".svg", ".xpm"};
    for (const std::string_view ending : endings) {
        if (icon.size() > ending.size() && icon.ends_with(ending)) {
            return ThemeIcon{icon.substr(0, icon.size() - ending.size())};
        }
    }
    return ThemeIcon{icon.empty() ? "application-x-executable" : icon};
}

} // namespace

std::vector<std::filesystem::path> DesktopEntryCatalogue::locations() {
    const DesktopEntryIndex& index = entries.index();
    std::vector<std::filesystem::path> shown;
    for (std::size_t number = 0; number < index.size(); ++number) {
        if (index[number].isShown && isInstalled(index[number])) {
            shown.emplace_back(index.path(number));
        }
    }
    return shown;
}

std::optional<std::filesystem::path> DesktopEntryCatalogue::location(std::string_view bundleIdentifier) {
    const DesktopEntryIndex& index = entries.index();
    const std::optional<std::size_t> number = index.find(bundleIdentifier);
    return number && isInstalled(index[*number]) ? std::optional<std::filesystem::path>(index.path(*number))
                                                 : std::nullopt;
}

bool DesktopEntryCatalogue::isInstalled(const DesktopEntryIndex::Entry& entry) const {
    return entry.tryProgram.empty() ||
           ExecLine::locate(std::string(entry.tryProgram), entries.places().searchPath).has_value();
}

std::optional<std::string> DesktopEntryCatalogue::bundleIdentifier(const std::filesystem::path& location) {
    if (!applicationAt(location)) {
        return std::nullopt;
    }
    const std::vector<std::string>& folders = entries.places().folders;
    std::optional<std::string> inner = pathInFolder(location.lexically_normal(), folders);
    if (!inner) {
        std::error_code ignored;
        inner = pathInFolder(std::filesystem::canonical(location, ignored), folders);
    }
    return desktopEntryIdentifier(inner.value_or(location.filename()));
}

std::string DesktopEntryCatalogue::displayName(const std::filesystem::path& location) {
    const std::optional<DesktopEntry> entry = applicationAt(location);
    return entry && !entry->name.empty() ? entry->name : location.filename().string();
}

std::vector<std::string> DesktopEntryCatalogue::searchTerms(const std::filesystem::path& location) {
    const std::optional<std::string> contents =
        mayBeEntry(location) ? readRegularFile(location, DesktopEntry::largestFile, Excess::refused) : std::nullopt;
    return contents ? linux::searchTerms(*contents) : std::vector<std::string>();
}

Image DesktopEntryCatalogue::icon(const std::filesystem::path& location) {
    constexpr double side = 32;
    const std::optional<DesktopEntry> entry = applicationAt(location);
    return Image(
        {.source = iconSource(entry ? entry->icon : ""), .size = {side, side}, .accessibilityDescription = {}});
}

} // namespace platform::linux
