#pragma once

#include "Platform/Localization.h"
#include "TesselCore/AppStatus.h"

#include <cstddef>
#include <string>

namespace tessel {

/// How the program stands, in the user's language: a word or two and, where it is at work, how many shortcuts it holds
/// and how many applications have a rule.
[[nodiscard]] std::string statusText(AppStatus status, std::size_t ruleCount,
                                     const platform::Localization& localization);

} // namespace tessel
