#pragma once

#include "Platform/Seam/Desktop/Appearance.h"

#include <optional>
#include <string_view>

namespace platform::linux {

/// The variant that the name of a GTK theme implies. A dark variant has "dark" as a word of its name ("Adwaita-dark",
/// "Arc-Dark", "Mint-Y-Dark-Aqua", and "Adwaita:dark" in GTK_THEME). Nothing for an empty name.
[[nodiscard]] std::optional<ColorScheme> colorSchemeOfTheme(std::string_view name);

} // namespace platform::linux
