#include "Tessel/PreviewCatalogue.h"

#include "Platform/Localization.h"
#include "Platform/Platform.h"

#include <algorithm>
#include <array>

namespace tessel {

namespace {

struct PreviewApplication {
    std::string_view bundleIdentifier;
    /// In English: the key of its translations.
    std::string_view name;
    std::string_view icon;
};

constexpr std::array<PreviewApplication, 9> applications{{
    {.bundleIdentifier = "com.apple.Music", .name = "Music", .icon = ":/preview/music.svg"},
    {.bundleIdentifier = "com.apple.mail", .name = "Mail", .icon = ":/preview/mail.svg"},
    {.bundleIdentifier = "com.apple.Notes", .name = "Notes", .icon = ":/preview/notes.svg"},
    {.bundleIdentifier = "com.apple.iCal", .name = "Calendar", .icon = ":/preview/calendar.svg"},
    {.bundleIdentifier = "com.apple.Maps", .name = "Maps", .icon = ":/preview/maps.svg"},
    {.bundleIdentifier = "com.apple.AppStore", .name = "Software", .icon = ":/preview/store.svg"},
    {.bundleIdentifier = "com.apple.Terminal", .name = "Terminal", .icon = ":/preview/terminal.svg"},
    {.bundleIdentifier = "com.apple.calculator", .name = "Calculator", .icon = ":/preview/calculator.svg"},
    {.bundleIdentifier = "com.apple.systempreferences", .name = "Settings", .icon = ":/preview/settings.svg"},
}};

const PreviewApplication* at(const std::filesystem::path& location) {
    const auto found = std::ranges::find(applications, location.string(), &PreviewApplication::icon);
    return found == applications.end() ? nullptr : &*found;
}

} // namespace

std::vector<std::filesystem::path> PreviewCatalogue::locations() {
    std::vector<std::filesystem::path> all;
    all.reserve(applications.size());
    for (const PreviewApplication& application : applications) {
        all.emplace_back(application.icon);
    }
    return all;
}

std::optional<std::filesystem::path> PreviewCatalogue::location(std::string_view bundleIdentifier) {
    const auto found = std::ranges::find(applications, bundleIdentifier, &PreviewApplication::bundleIdentifier);
    return found == applications.end() ? std::nullopt : std::optional(std::filesystem::path(found->icon));
}

std::optional<std::string> PreviewCatalogue::bundleIdentifier(const std::filesystem::path& location) {
    const PreviewApplication* application = at(location);
    return application == nullptr ? std::nullopt : std::optional<std::string>(application->bundleIdentifier);
}

std::string PreviewCatalogue::displayName(const std::filesystem::path& location) {
    const PreviewApplication* application = at(location);
    return application == nullptr ? location.filename().string()
                                  : platform::current().localization.text("Tessel", application->name);
}

std::vector<std::string> PreviewCatalogue::searchTerms(const std::filesystem::path& /*location*/) {
    return {};
}

platform::Image PreviewCatalogue::icon(const std::filesystem::path& location) {
    constexpr double side = 32;
    return platform::Image({.source = platform::ImageFile{location},
                            .size = {side, side},
                            .scale = 1,
                            .isTemplate = false,
                            .isBadged = false,
                            .accessibilityDescription = displayName(location)});
}

} // namespace tessel
