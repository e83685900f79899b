#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Popover.h"
#include "Platform/Screens.h"

#include <optional>
#include <span>

namespace corvid::toolkit {

/// Where a popover of that size goes, in points in the screen space: centred below what it hangs at, or above where
/// that is in the lower half of its screen, and wholly within the screen's visible frame, which is less high than asked
/// for where that is. Where it is not known what it hangs at, it goes to the end of the edge where the first screen has
/// its panel. Nothing where there is no screen.
[[nodiscard]] std::optional<CGRect> popoverFrame(const platform::Popover::Anchor& anchor, CGSize size,
                                                 std::span<const platform::Screen> screens);

} // namespace corvid::toolkit
