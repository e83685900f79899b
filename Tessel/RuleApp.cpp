#include "Tessel/RuleApp.h"

#include "CorvidKit/LocalizedComparison.h"
#include "Platform/Seam/Desktop/ApplicationCatalogue.h"
#include "Platform/Seam/Platform.h"
#include "TesselCore/AppName.h"

#include <filesystem>

namespace tessel {

namespace {

RuleApp ruleApp(const std::string& bundleID, WindowAction action, RuleAppIcons& icons) {
    platform::ApplicationCatalogue& catalogue = platform::current().applicationCatalogue;
    const std::optional<std::filesystem::path> location = catalogue.location(bundleID);
    std::optional<std::string> fileName;
    if (location) {
        fileName = catalogue.displayName(*location);
        if (!icons.contains(bundleID)) {
            icons.emplace(bundleID, smallIcon(catalogue.icon(*location)));
        }
    }
    const auto icon = icons.find(bundleID);
    return {.bundleID = bundleID,
            .name = AppName::display(fileName, bundleID),
            .icon = icon == icons.end() ? std::nullopt : std::optional(icon->second),
            .action = action};
}

} // namespace

platform::Image smallIcon(const platform::Image& icon) {
    platform::ImageDescription small = icon.description();
    small.size = {20, 20};
    small.scale = 2;
    return platform::Image(std::move(small));
}

std::vector<RuleApp> ruleApps(const Prefs::Rules& rules, RuleAppIcons& icons) {
    std::vector<RuleApp> rows;
    rows.reserve(rules.size());
    for (const auto& [bundleID, action] : rules) {
        rows.push_back(ruleApp(bundleID, action, icons));
    }
    corvid::sortByName(rows, &RuleApp::name);
    return rows;
}

} // namespace tessel
