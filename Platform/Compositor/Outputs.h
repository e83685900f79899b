#pragma once

#include "CorvidKitCore/Geometry.h"

#include <cmath>
#include <utility>

namespace platform::compositor {

/// Sorts outputs where the compositor has no primary one: the nearest to the origin of the layout comes first, because
/// that does not change with the focus.
[[nodiscard]] inline std::pair<double, double> distanceFromOrigin(const corvid::CGRect& output) {
    return {std::abs(output.origin.x) + std::abs(output.origin.y), output.origin.x};
}

} // namespace platform::compositor
