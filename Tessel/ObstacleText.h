#pragma once

#include "Platform/Seam/Desktop/HotKeyEvents.h"
#include "Platform/Seam/Desktop/Localization.h"

#include <string>
#include <string_view>

namespace tessel {

/// The reason why a taken shortcut cannot be borrowed, in the user's language: a sentence without its full stop.
[[nodiscard]] std::string obstacleText(platform::LoanObstacle obstacle, const platform::Localization& localization);

/// The same as a word for programs: the name of the value.
[[nodiscard]] std::string_view obstacleWord(platform::LoanObstacle obstacle);

} // namespace tessel
