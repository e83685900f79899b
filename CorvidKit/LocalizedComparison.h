#pragma once

#include <algorithm>
#include <functional>
#include <iterator>
#include <string_view>
#include <vector>

namespace corvid {

/// Whether `first` goes before `second` in the user's language, letter case aside: by the C library's collation for the
/// process's locale (`LC_COLLATE` and `LC_CTYPE`, which the program sets at start), over case-folded text. Names that
/// compare equal go before neither. A text that is not in the locale's encoding compares byte by byte.
[[nodiscard]] bool goesBefore(std::string_view first, std::string_view second);

/// Sorts by name; items whose names compare equal keep their order. For the few that a list on the screen has.
template <typename Item, typename Name>
void sortByName(std::vector<Item>& items, Name name) {
    // An insertion sort, because the standard stable sort allocates its buffer through an interface that its own
    // library has deprecated.
    for (auto next = items.begin(); next != items.end(); ++next) {
        const auto place = std::ranges::upper_bound(items.begin(), next, std::invoke(name, *next), goesBefore, name);
        std::rotate(place, next, std::next(next));
    }
}

} // namespace corvid
