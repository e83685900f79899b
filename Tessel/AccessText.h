#pragma once

#include "Platform/AccessObstacle.h"

#include <string>

namespace tessel {

/// The reason in words: what is missing and, where the user can do something about it, what. Part of a sentence in
/// English, without a full stop, for the command line.
[[nodiscard]] std::string accessText(const platform::AccessObstacle& obstacle);

/// The comment that tells apart the translations of the permission card for each reason; null for the card's own text.
[[nodiscard]] const char* accessVariant(const platform::AccessObstacle& obstacle);

} // namespace tessel
