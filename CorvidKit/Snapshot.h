#pragma once

#include "Platform/Appearance.h"
#include "Platform/View.h"

#include <array>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// Pictures of views, for people who have not got the program yet. Main thread only.
namespace corvid::Snapshot {

/// Whether pictures are being drawn: views then ask nothing of the system and follow no pointer. Never reset.
extern bool isActive;

/// The language of the pictures: the first of the program's that the user wants, or "en".
[[nodiscard]] std::string language();

/// How the view is drawn.
struct Surroundings {
    platform::ColorScheme colorScheme = platform::ColorScheme::light;
    /// The grey behind it in the sRGB colour space; 1 is white.
    double backgroundWhite = 1;
};

/// One of the two colour schemes that pictures are drawn in.
struct Scheme {
    std::string_view name;
    Surroundings surroundings;
};

inline constexpr std::array<Scheme, 2> schemes{{
    {.name = "light", .surroundings = {.colorScheme = platform::ColorScheme::light, .backgroundWhite = 0.93}},
    {.name = "dark", .surroundings = {.colorScheme = platform::ColorScheme::dark, .backgroundWhite = 0.16}},
}};

/// Draws what `content` gives, once in light and once in dark, into `menu-LANGUAGE-VARIANT-SCHEME.png` (or without the
/// variant) in the directory. What cannot be drawn or written is left out, silently.
void renderMenu(const std::string& directory, const std::optional<std::string>& variant,
                const std::function<std::shared_ptr<const platform::View>()>& content);

/// Draws one view with two pixels a point into that file, over whatever is there.
void write(const platform::View& view, const Surroundings& surroundings, const std::filesystem::path& file);

} // namespace corvid::Snapshot
