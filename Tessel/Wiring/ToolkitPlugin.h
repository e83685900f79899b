#pragma once

#include "CorvidKit/Toolkit/Dependencies.h"
#include "Platform/Linux/Program/PluginFile.h"
#include "Platform/Seam/Toolkit/Toolkit.h"

#include <memory>

namespace tessel {

/// Loads the interface's plugin and starts the toolkit in it; null, and a line in the log, if that fails.
[[nodiscard]] std::unique_ptr<platform::Toolkit> startToolkit(platform::linux::PluginFile& plugin,
                                                              const corvid::toolkit::Dependencies& dependencies);

} // namespace tessel
