#pragma once

#include "CorvidKit/Toolkit/Dependencies.h"
#include "Platform/Seam/Toolkit/Toolkit.h"

namespace tessel {

/// The plugin's one function, "tesselStartToolkit": starts the toolkit, whose owner is the caller. Null if it cannot
/// connect to the desktop. At most one toolkit at a time, and the plugin stays loaded.
using StartToolkit = platform::Toolkit* (*)(const corvid::toolkit::Dependencies& dependencies);

inline constexpr const char* startToolkitName = "tesselStartToolkit";

} // namespace tessel
