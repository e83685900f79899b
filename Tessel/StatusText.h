#pragma once

#include "Platform/Seam/Desktop/Localization.h"
#include "TesselCore/AppStatus.h"
#include "TesselCore/WindowAction.h"

#include <cstddef>
#include <set>
#include <string>

namespace tessel {

/// The program's status, in the user's language: a word or two and, while it is active, the number of its shortcuts and
/// of the applications with a rule.
[[nodiscard]] std::string statusText(AppStatus status, std::size_t ruleCount,
                                     const platform::Localization& localization);

/// The status in one line of English for logs and service managers: the state and, if shortcuts are taken, their
/// actions, by raw values in declaration order.
[[nodiscard]] std::string statusLine(AppStatus status, const std::set<WindowAction>& failedShortcuts);

} // namespace tessel
