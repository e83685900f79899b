#pragma once

#include "Platform/Localization.h"
#include "TesselCore/AppStatus.h"
#include "TesselCore/WindowAction.h"

#include <cstddef>
#include <set>
#include <string>

namespace tessel {

/// How the program stands, in the user's language: a word or two and, where it is at work, how many shortcuts it holds
/// and how many applications have a rule.
[[nodiscard]] std::string statusText(AppStatus status, std::size_t ruleCount,
                                     const platform::Localization& localization);

/// The status in one line of English for logs and service managers: how things stand and, where shortcuts are taken,
/// those of which actions, by their raw values in declaration order.
[[nodiscard]] std::string statusLine(AppStatus status, const std::set<WindowAction>& failedShortcuts);

} // namespace tessel
