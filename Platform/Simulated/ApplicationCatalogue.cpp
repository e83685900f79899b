#include "Platform/Simulated/ApplicationCatalogue.h"

#include <algorithm>
#include <utility>

namespace platform::simulated {

void ApplicationCatalogue::install(const std::filesystem::path& location, Installed application) {
    applications.insert_or_assign(location, std::move(application));
}

void ApplicationCatalogue::uninstall(const std::filesystem::path& location) {
    applications.erase(location);
}

std::vector<std::filesystem::path> ApplicationCatalogue::locations() {
    trace.record("list applications");
    std::vector<std::filesystem::path> shown;
    for (const auto& [location, application] : applications) {
        if (application.isShown) {
            shown.push_back(location);
        }
    }
    return shown;
}

std::optional<std::filesystem::path> ApplicationCatalogue::location(std::string_view bundleIdentifier) {
    trace.record("locate " + std::string(bundleIdentifier));
    const auto found = std::ranges::find_if(applications, [bundleIdentifier](const auto& entry) {
        return entry.second.bundleIdentifier == bundleIdentifier;
    });
    return found == applications.end() ? std::nullopt : std::optional(found->first);
}

std::optional<std::string> ApplicationCatalogue::bundleIdentifier(const std::filesystem::path& location) {
    const auto found = applications.find(location);
    return found == applications.end() ? std::nullopt : std::optional(found->second.bundleIdentifier);
}

std::string ApplicationCatalogue::displayName(const std::filesystem::path& location) {
    const auto found = applications.find(location);
    return found == applications.end() ? location.filename().string() : found->second.displayName;
}

std::vector<std::string> ApplicationCatalogue::searchTerms(const std::filesystem::path& location) {
    const auto found = applications.find(location);
    return found == applications.end() ? std::vector<std::string>() : found->second.searchTerms;
}

Image ApplicationCatalogue::icon(const std::filesystem::path& location) {
    trace.record("icon of " + location.string());
    const auto found = applications.find(location);
    const std::string name = found == applications.end() ? "application-x-executable" : found->second.iconName;
    return Image({.source = ThemeIcon{name}, .size = {32, 32}, .accessibilityDescription = {}});
}

} // namespace platform::simulated
