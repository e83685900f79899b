#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Seam/Desktop/MainActor.h"

#include <functional>
#include <optional>

namespace platform::compositor {

/// Reads a window's frame again and again, until it has been the same for `calm`: for a compositor that does not tell
/// when a window has come to rest. Blocks the thread meanwhile, at the latest until the deadline. Empty if the frame
/// has not settled by then, or once `read` gives none.
[[nodiscard]] std::optional<corvid::CGRect> settledFrame(const MainActor& clock, Duration calm, Instant deadline,
                                                         const std::function<std::optional<corvid::CGRect>()>& read);

} // namespace platform::compositor
