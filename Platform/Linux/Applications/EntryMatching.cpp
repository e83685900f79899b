#include "Platform/Linux/Applications/EntryMatching.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <tuple>

namespace platform::linux::EntryMatching {
namespace {

using Entry = DesktopEntryIndex::Entry;

/// How well an entry fits; the lower the better.
using Rank = std::size_t;
constexpr Rank unfit = std::numeric_limits<Rank>::max();

// The C library's would depend on the user's language.
char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isSame(std::string_view a, std::string_view b) {
    return !a.empty() && a == b;
}

bool isSameWithoutCase(std::string_view a, std::string_view b) {
    return !a.empty() && std::ranges::equal(a, b, {}, lower, lower);
}

std::string_view lastComponent(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

bool isPreferred(const Entry& a, const Entry& b) {
    const auto key = [](const Entry& entry) {
        return std::tuple(!entry.isShown, entry.hasArguments, entry.folder, entry.identifier.size(), entry.identifier);
    };
    return key(a) < key(b);
}

/// The best of the entries by the value of `rank` for each.
template <typename RankOf>
std::optional<std::string> best(const DesktopEntryIndex& index, const RankOf& rank) {
    std::optional<Entry> found;
    Rank least = unfit;
    for (std::size_t i = 0; i < index.size(); ++i) {
        const Entry entry = index[i];
        const Rank own = rank(entry);
        if (own < least || (own != unfit && own == least && isPreferred(entry, *found))) {
            found = entry;
            least = own;
        }
    }
    return found ? std::optional(std::string(found->identifier)) : std::nullopt;
}

/// The place of the first condition that holds.
template <std::size_t count>
Rank firstOf(const std::array<bool, count>& conditions) {
    const auto holds = std::ranges::find(conditions, true);
    return holds == conditions.end() ? unfit : static_cast<Rank>(holds - conditions.begin());
}

/// The entry whose id ends in a dot and that name, if it is the only one.
std::optional<std::string> onlyOneEndingIn(const DesktopEntryIndex& index, std::string_view name) {
    std::optional<std::string> found;
    if (name.empty() || name.contains('.')) {
        return found;
    }
    for (std::size_t i = 0; i < index.size(); ++i) {
        const std::string_view identifier = index[i].identifier;
        const std::size_t dot = identifier.rfind('.');
        if (dot == std::string_view::npos || !isSameWithoutCase(identifier.substr(dot + 1), name)) {
            continue;
        }
        if (found) {
            return std::nullopt;
        }
        found = identifier;
    }
    return found;
}

/// Some toolkits give the entry's file, with or without its folder.
std::string_view bareIdentifier(std::string_view applicationId) {
    constexpr std::string_view ending = ".desktop";
    std::string_view name = lastComponent(applicationId);
    if (name.ends_with(ending)) {
        name.remove_suffix(ending.size());
    }
    return name;
}

Rank windowRank(const Entry& entry, std::string_view windowClass, std::string_view instance) {
    return firstOf<8>({
        isSame(instance, entry.windowClass),
        isSame(windowClass, entry.windowClass),
        isSameWithoutCase(windowClass, entry.windowClass),
        isSame(windowClass, entry.identifier),
        isSameWithoutCase(windowClass, entry.identifier),
        isSameWithoutCase(instance, entry.windowClass),
        isSame(instance, entry.identifier),
        isSameWithoutCase(instance, entry.identifier),
    });
}

Rank programRank(const Entry& entry, const ProcessFacts::Program& program) {
    const std::string_view name = program.name();
    const std::string_view file = lastComponent(name);
    // These start the launcher of a sandbox, or show their windows in another program's.
    if (entry.needsTerminal || !entry.flatpak.empty()) {
        return unfit;
    }
    return firstOf<3>({
        name.contains('/') && (name == entry.program || name == entry.tryProgram),
        isSame(file, lastComponent(entry.program)),
        isSame(file, lastComponent(entry.tryProgram)),
    });
}

/// Whether a window that says so may be the entry's.
bool fitsWindow(const Entry& entry, const ApplicationClues& clues) {
    const std::string_view applicationId = bareIdentifier(clues.applicationId);
    const std::string_view lastOfIdentifier = entry.identifier.substr(entry.identifier.rfind('.') + 1);
    return isSameWithoutCase(applicationId, entry.identifier) || isSameWithoutCase(applicationId, entry.windowClass) ||
           windowRank(entry, clues.windowClass, clues.windowInstance) != unfit ||
           isSameWithoutCase(clues.windowClass, lastOfIdentifier) ||
           isSameWithoutCase(clues.windowClass, lastComponent(entry.program));
}

} // namespace

std::optional<std::string> byFlatpak(const DesktopEntryIndex& index, std::string_view application,
                                     const ApplicationClues& clues) {
    return best(index, [&](const Entry& entry) {
        const bool isOfApplication = entry.flatpak == application;
        return firstOf<3>({
            isOfApplication && fitsWindow(entry, clues),
            entry.identifier == application,
            isOfApplication,
        });
    });
}

std::optional<std::string> bySnap(const DesktopEntryIndex& index, const ProcessFacts::SnapApplication& snap,
                                  const ApplicationClues& clues) {
    const std::string identifier = snap.instance + "_" + snap.application;
    return best(index, [&](const Entry& entry) {
        const bool isOfSnap = entry.snapInstance == snap.instance;
        return firstOf<3>({entry.identifier == identifier, isOfSnap && fitsWindow(entry, clues), isOfSnap});
    });
}

std::optional<std::string> byScope(const DesktopEntryIndex& index, std::string_view application,
                                   const std::optional<ProcessFacts::Program>& program, const ApplicationClues& clues) {
    const std::optional<std::size_t> number = index.find(application);
    if (!number) {
        return std::nullopt;
    }
    const Entry entry = index[*number];
    const bool fits = (program && programRank(entry, *program) != unfit) || fitsWindow(entry, clues);
    return fits ? std::optional(std::string(application)) : std::nullopt;
}

std::optional<std::string> byApplicationId(const DesktopEntryIndex& index, std::string_view applicationId) {
    const std::string_view id = bareIdentifier(applicationId);
    const std::optional<std::string> found = best(index, [&](const Entry& entry) {
        return firstOf<4>({
            isSame(id, entry.identifier),
            isSameWithoutCase(id, entry.identifier),
            isSame(id, entry.windowClass),
            isSameWithoutCase(id, entry.windowClass),
        });
    });
    return found ? found : onlyOneEndingIn(index, id);
}

std::optional<std::string> byWindowClass(const DesktopEntryIndex& index, std::string_view windowClass,
                                         std::string_view windowInstance) {
    const std::optional<std::string> found =
        best(index, [&](const Entry& entry) { return windowRank(entry, windowClass, windowInstance); });
    return found ? found : onlyOneEndingIn(index, windowClass);
}

std::optional<std::string> byProgram(const DesktopEntryIndex& index, const ProcessFacts::Program& program) {
    return best(index, [&](const Entry& entry) { return programRank(entry, program); });
}

} // namespace platform::linux::EntryMatching
