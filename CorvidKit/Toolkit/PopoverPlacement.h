#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Seam/Desktop/Screens.h"
#include "Platform/Seam/Toolkit/Popover.h"

#include <optional>
#include <span>

namespace corvid::toolkit {

/// The frame of a popover of that size, in points in the screen space: centred below its anchor, or above it if that is
/// in the lower half of its screen, and wholly within the screen's visible frame, to which its height is limited.
/// Without an anchor, it goes to the end of the edge where the first screen has its panel. Empty without a screen.
[[nodiscard]] std::optional<CGRect> popoverFrame(const platform::Popover::Anchor& anchor, CGSize size,
                                                 std::span<const platform::Screen> screens);

} // namespace corvid::toolkit
