#pragma once

#include "Platform/Image.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// The applications that a rule can be made for, as a list to choose from.
namespace tessel {

/// One of them; its identity is the bundle identifier.
struct InstalledApplication {
    std::string bundleID;
    /// What it is called, in the user's language.
    std::string name;
    std::filesystem::path location;
    /// 20 by 20 points.
    platform::Image icon;

    [[nodiscard]] const std::string& id() const { return bundleID; }

    friend bool operator==(const InstalledApplication&, const InstalledApplication&) = default;
};

/// All that are to be shown, by name. Every call looks afresh. Main thread only.
[[nodiscard]] std::vector<InstalledApplication> installedApplications();

/// Those whose names have every word of `text` in them, letter case and accents aside: first those that have words
/// beginning with them all, then the others; within both the order stays. All of them where `text` has no word. Main
/// thread only.
[[nodiscard]] std::vector<InstalledApplication> matching(const std::vector<InstalledApplication>& applications,
                                                         std::string_view text);

} // namespace tessel
