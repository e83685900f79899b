#pragma once

#include "CorvidKit/Toolkit/Surroundings.h"
#include "Platform/Toolkit.h"

#include <memory>

namespace tessel {

/// Loads the plugin and starts the toolkit in it; null, and a line in the log, where that cannot be done.
[[nodiscard]] std::unique_ptr<platform::Toolkit> startToolkit(const corvid::toolkit::Surroundings& surroundings);

} // namespace tessel
