#include "Tessel/InstalledApplications.h"

#include "CorvidKit/LocalizedComparison.h"
#include "Platform/Seam/Desktop/ApplicationCatalogue.h"
#include "Platform/Seam/Desktop/Localization.h"
#include "Platform/Seam/Platform.h"
#include "Tessel/RuleApp.h"
#include "TesselCore/AppName.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tessel {

namespace {

/// Whether this byte continues a word; bytes beyond ASCII count as letters here.
bool isOfWord(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9') || static_cast<unsigned char>(byte) > '\x7F';
}

std::vector<std::string_view> words(std::string_view key) {
    std::vector<std::string_view> found;
    while (!key.empty()) {
        const auto begin = std::ranges::find_if(key, isOfWord);
        const auto end = std::find_if_not(begin, key.end(), isOfWord);
        if (begin != end) {
            found.emplace_back(begin, end);
        }
        key = {end, key.end()};
    }
    return found;
}

enum class Match {
    none,
    anywhere,
    beginnings,
};

Match match(std::string_view name, const std::vector<std::string_view>& sought) {
    const std::vector<std::string_view> named = words(name);
    const bool begins = std::ranges::all_of(sought, [&](std::string_view word) {
        return std::ranges::any_of(named, [word](std::string_view candidate) { return candidate.starts_with(word); });
    });
    if (begins) {
        return Match::beginnings;
    }
    const bool contains = std::ranges::all_of(sought, [name](std::string_view word) { return name.contains(word); });
    return contains ? Match::anywhere : Match::none;
}

} // namespace

std::vector<InstalledApplication> installedApplications() {
    platform::ApplicationCatalogue& catalogue = platform::current().applicationCatalogue;
    std::vector<InstalledApplication> applications;
    for (std::filesystem::path& location : catalogue.locations()) {
        // An application that was removed meanwhile is left out.
        if (std::optional<std::string> bundleID = catalogue.bundleIdentifier(location)) {
            std::string name = AppName::display(catalogue.displayName(location), *bundleID);
            platform::Image icon = smallIcon(catalogue.icon(location));
            applications.push_back({.bundleID = *std::move(bundleID),
                                    .name = std::move(name),
                                    .location = std::move(location),
                                    .icon = std::move(icon)});
        }
    }
    corvid::sortByName(applications, &InstalledApplication::name);
    return applications;
}

std::vector<InstalledApplication> matching(const std::vector<InstalledApplication>& applications,
                                           std::string_view text) {
    const platform::Localization& localization = platform::current().localization;
    const std::string key = localization.searchKey(text);
    const std::vector<std::string_view> sought = words(key);
    std::vector<InstalledApplication> found;
    std::vector<InstalledApplication> others;
    for (const InstalledApplication& application : applications) {
        switch (match(localization.searchKey(application.name), sought)) {
        case Match::beginnings:
            found.push_back(application);
            break;
        case Match::anywhere:
            others.push_back(application);
            break;
        case Match::none:
            break;
        }
    }
    std::ranges::move(others, std::back_inserter(found));
    return found;
}

} // namespace tessel
