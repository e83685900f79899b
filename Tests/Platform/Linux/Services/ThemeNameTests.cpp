#include "Platform/Linux/Services/ThemeName.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace platform::linux {
namespace {

TEST(ThemeName, TheDarkVariantHasDarkAsAWordOfItsName) {
    const std::vector<std::pair<std::string_view, std::optional<ColorScheme>>> cases{
        {"", std::nullopt},
        {"Adwaita", ColorScheme::light},
        {"Adwaita-dark", ColorScheme::dark},
        {"Adwaita:dark", ColorScheme::dark},
        {"Adwaita:light", ColorScheme::light},
        {"Arc-Dark", ColorScheme::dark},
        {"Arc-Darker", ColorScheme::light}, // Only its title bars are dark.
        {"Arc-Lighter", ColorScheme::light},
        {"Mint-Y-Dark-Aqua", ColorScheme::dark},
        {"Breeze Dark", ColorScheme::dark},
        {"some_dark_theme", ColorScheme::dark},
        {"DARK", ColorScheme::dark},
        {"-", ColorScheme::light},
        {"Darkness", ColorScheme::light},
    };
    for (const auto& [name, expected] : cases) {
        EXPECT_EQ(colorSchemeOfTheme(name), expected) << name;
    }
}

} // namespace
} // namespace platform::linux
