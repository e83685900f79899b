#include "Tessel/InstalledApplications.h"

#include "CorvidKit/LocalizedComparison.h"
#include "CorvidKitCore/PreferenceStore.h"
#include "Platform/Seam/Desktop/ApplicationCatalogue.h"
#include "Platform/Seam/Desktop/Localization.h"
#include "Platform/Seam/Platform.h"
#include "Tessel/Prefs.h"
#include "Tessel/RuleApp.h"
#include "TesselCore/AppName.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

namespace tessel {

namespace {

/// Whether this byte continues a word; bytes beyond ASCII count as letters here.
bool isOfWord(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9') || static_cast<unsigned char>(byte) > '\x7F';
}

std::vector<std::string> words(std::string_view key) {
    std::vector<std::string> found;
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

std::vector<std::string> wordsOf(std::string_view text) {
    return words(platform::current().localization.searchKey(text));
}

bool beginsOneOf(const std::vector<std::string>& candidates, std::string_view word) {
    return std::ranges::any_of(candidates,
                               [word](const std::string& candidate) { return candidate.starts_with(word); });
}

/// Whether the words stand at the beginning of a name, one behind the other; of the last one its beginning is enough.
bool beginName(std::span<const std::string> sought, std::span<const std::string> name) {
    if (sought.empty() || sought.size() > name.size()) {
        return sought.empty();
    }
    const std::size_t whole = sought.size() - 1;
    return std::ranges::equal(sought.first(whole), name.first(whole)) && name[whole].starts_with(sought[whole]);
}

} // namespace

std::vector<InstalledApplication> installedApplications() {
    platform::ApplicationCatalogue& catalogue = platform::current().applicationCatalogue;
    const Prefs::Rules rules = platform::current().standardUserDefaults[Prefs::rules];
    std::vector<InstalledApplication> applications;
    for (std::filesystem::path& location : catalogue.locations()) {
        // An application that was removed meanwhile is left out.
        if (std::optional<std::string> bundleID = catalogue.bundleIdentifier(location)) {
            std::string name = AppName::display(catalogue.displayName(location), *bundleID);
            platform::Image icon = smallIcon(catalogue.icon(location));
            std::vector<std::string> terms = catalogue.searchTerms(location);
            terms.push_back(*bundleID);
            const auto rule = rules.find(*bundleID);
            applications.push_back({.bundleID = *std::move(bundleID),
                                    .name = std::move(name),
                                    .location = std::move(location),
                                    .icon = std::move(icon),
                                    .searchTerms = std::move(terms),
                                    .ruleAction = rule == rules.end() ? std::nullopt : std::optional(rule->second)});
        }
    }
    corvid::sortByName(applications, &InstalledApplication::name);
    return applications;
}

/// The better one first.
enum class ApplicationSearch::Match {
    nameBegins,
    wordsOfNameBegin,
    inName,
    inOtherTerms,
};

ApplicationSearch::ApplicationSearch(std::span<const InstalledApplication> applications) {
    const platform::Localization& localization = platform::current().localization;
    entries.reserve(applications.size());
    for (const InstalledApplication& application : applications) {
        Entry entry{.name = localization.searchKey(application.name), .nameWords = {}, .otherWords = {}};
        entry.nameWords = words(entry.name);
        for (const std::string& term : application.searchTerms) {
            std::ranges::move(wordsOf(term), std::back_inserter(entry.otherWords));
        }
        entries.push_back(std::move(entry));
    }
}

std::vector<std::size_t> ApplicationSearch::find(std::string_view text) const {
    const std::vector<std::string> sought = wordsOf(text);
    std::map<Match, std::vector<std::size_t>> found;
    for (std::size_t place = 0; place < entries.size(); ++place) {
        if (const std::optional<Match> how = match(entries[place], sought)) {
            found[*how].push_back(place);
        }
    }
    std::vector<std::size_t> places;
    for (const auto& [how, some] : found) {
        places.insert(places.end(), some.begin(), some.end());
    }
    return places;
}

std::optional<ApplicationSearch::Match> ApplicationSearch::match(const Entry& entry,
                                                                 std::span<const std::string> sought) {
    const auto isInName = [&](const std::string& word) { return entry.name.contains(word); };
    const auto beginsInName = [&](const std::string& word) { return beginsOneOf(entry.nameWords, word); };
    const auto isFound = [&](const std::string& word) { return isInName(word) || beginsOneOf(entry.otherWords, word); };
    if (beginName(sought, entry.nameWords)) {
        return Match::nameBegins;
    }
    if (std::ranges::all_of(sought, beginsInName)) {
        return Match::wordsOfNameBegin;
    }
    if (std::ranges::all_of(sought, isInName)) {
        return Match::inName;
    }
    return std::ranges::all_of(sought, isFound) ? std::optional(Match::inOtherTerms) : std::nullopt;
}

} // namespace tessel
