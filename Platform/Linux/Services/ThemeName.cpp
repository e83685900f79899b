#include "Platform/Linux/Services/ThemeName.h"

#include <algorithm>

namespace platform::linux {

namespace {

constexpr std::string_view separators = "-:_ ";

/// The same text in ASCII, without regard to letter case.
bool isDark(std::string_view word) {
    constexpr std::string_view dark = "dark";
    return std::ranges::equal(word, dark, [](char left, char right) {
        return (left >= 'A' && left <= 'Z' ? static_cast<char>(left - 'A' + 'a') : left) == right;
    });
}

} // namespace

std::optional<ColorScheme> colorSchemeOfTheme(std::string_view name) {
    if (name.empty()) {
        return std::nullopt;
    }
    while (!name.empty()) {
        const std::size_t end = std::min(name.find_first_of(separators), name.size());
        if (isDark(name.substr(0, end))) {
            return ColorScheme::dark;
        }
        name.remove_prefix(std::min(end + 1, name.size()));
    }
    return ColorScheme::light;
}

} // namespace platform::linux
