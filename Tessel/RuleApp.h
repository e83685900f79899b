#pragma once

#include "Platform/Seam/Desktop/Image.h"
#include "Tessel/Prefs.h"
#include "TesselCore/WindowAction.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tessel {

/// One row of the list of app rules; its identity is the bundle identifier.
struct RuleApp {
    std::string bundleID;
    /// The application's name, in the user's language.
    std::string name;
    /// 20 by 20 points; empty if the application is not installed.
    std::optional<platform::Image> icon;
    WindowAction action;

    [[nodiscard]] const std::string& id() const { return bundleID; }

    friend bool operator==(const RuleApp&, const RuleApp&) = default;
};

/// Small icons by bundle identifier.
using RuleAppIcons = std::map<std::string, platform::Image, std::less<>>;

/// The same picture at 20 by 20 points, with two pixels a point.
[[nodiscard]] platform::Image smallIcon(const platform::Image& icon);

/// The rows for these rules, by name. Each icon is read once and kept in `icons`. Main thread only.
[[nodiscard]] std::vector<RuleApp> ruleApps(const Prefs::Rules& rules, RuleAppIcons& icons);

} // namespace tessel
