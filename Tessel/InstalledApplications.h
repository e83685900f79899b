#pragma once

#include "Platform/Seam/Desktop/Image.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// The applications that a rule can be made for, as a list to choose from.
namespace tessel {

/// One of them; its identity is the bundle identifier.
struct InstalledApplication {
    std::string bundleID;
    /// Its name, in the user's language.
    std::string name;
    std::filesystem::path location;
    /// 20 by 20 points.
    platform::Image icon;

    [[nodiscard]] const std::string& id() const { return bundleID; }

    friend bool operator==(const InstalledApplication&, const InstalledApplication&) = default;
};

/// All that are listed, by name. Every call reads them again. Main thread only.
[[nodiscard]] std::vector<InstalledApplication> installedApplications();

/// Those whose names contain every word of `text`, ignoring letter case and accents: first those with words that begin
/// with all of them, then the others; each group keeps its order. All of them if `text` has no word. Main thread only.
[[nodiscard]] std::vector<InstalledApplication> matching(const std::vector<InstalledApplication>& applications,
                                                         std::string_view text);

} // namespace tessel
