#include "PlainApplications.h"

#include <algorithm>
#include <cctype>

namespace platform::linux {

std::optional<std::string> PlainIdentification::bundleIdentifier(const ApplicationClues& clues) {
    if (!clues.applicationId.empty()) {
        return clues.applicationId;
    }
    std::string name = clues.windowClass;
    std::ranges::transform(name, name.begin(), [](unsigned char letter) { return std::tolower(letter); });
    return installed.contains(name) ? std::optional(name) : std::nullopt;
}

std::optional<std::filesystem::path> PlainCatalogue::location(std::string_view bundleIdentifier) {
    return "/applications/" + std::string(bundleIdentifier) + ".desktop";
}

std::optional<std::string> PlainCatalogue::bundleIdentifier(const std::filesystem::path& location) {
    return location.stem();
}

std::string PlainCatalogue::displayName(const std::filesystem::path& location) {
    return "The " + location.stem().string();
}

Image PlainCatalogue::icon(const std::filesystem::path& /*location*/) {
    return Image({.source = ThemeIcon{"application"}, .size = {}, .accessibilityDescription = {}});
}

} // namespace platform::linux
