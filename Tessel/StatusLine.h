#pragma once

#include "TesselCore/AppStatus.h"
#include "TesselCore/WindowAction.h"

#include <set>
#include <string>

namespace tessel {

/// The status in one line of English for logs and service managers: how things stand and, where shortcuts are taken,
/// those of which actions, by their raw values in declaration order.
[[nodiscard]] std::string statusLine(AppStatus status, const std::set<WindowAction>& failedShortcuts);

} // namespace tessel
