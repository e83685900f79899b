#pragma once

#include "Platform/Seam/Desktop/Image.h"
#include "TesselCore/WindowAction.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>
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
    /// Further words by which the search finds it, such as its identifier and its kind.
    std::vector<std::string> searchTerms;
    /// That of its rule, if it has one.
    std::optional<WindowAction> ruleAction;

    [[nodiscard]] const std::string& id() const { return bundleID; }

    friend bool operator==(const InstalledApplication&, const InstalledApplication&) = default;
};

/// All that are to be shown, by name, each with the rule that the user's settings have for it. Every call looks afresh.
/// Main thread only.
[[nodiscard]] std::vector<InstalledApplication> installedApplications();

/// Finds applications by what people call them, letter case and accents aside. Main thread only.
class ApplicationSearch {
public:
    explicit ApplicationSearch(std::span<const InstalledApplication> applications);

    /// The places, among the applications, of those that every word of `text` fits: first those whose names begin with
    /// the text, then those with all its words at the beginnings of words of the name, then those with them anywhere in
    /// the name, then those with some of them only at the beginnings of words of their other search terms. Among each
    /// the order stays. All of them where `text` has no word.
    [[nodiscard]] std::vector<std::size_t> find(std::string_view text) const;

private:
    enum class Match;

    struct Entry {
        std::string name;
        std::vector<std::string> nameWords;
        std::vector<std::string> otherWords;
    };

    [[nodiscard]] static std::optional<Match> match(const Entry& entry, std::span<const std::string> sought);

    std::vector<Entry> entries;
};

} // namespace tessel
