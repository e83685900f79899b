#pragma once

#include "Platform/Linux/MainLoop.h"

namespace platform::kwin {

/// Whether KWin is on the user's message bus (it owns `org.kde.KWin`), on Wayland or on X11. Asks the bus, and waits
/// for its answer until the deadline; without a bus, or an answer, it is not.
[[nodiscard]] bool isThere(linux::MainLoop& mainLoop, Instant deadline);

} // namespace platform::kwin
