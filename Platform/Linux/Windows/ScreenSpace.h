#pragma once

#include "CorvidKitCore/Geometry.h"

/// From a desktop's own space, y down with its origin anywhere, to those of the seam. `primary` is the primary screen's
/// frame in the desktop's space.
namespace platform::linux {

[[nodiscard]] inline corvid::CGRect inScreenSpace(const corvid::CGRect& rectangle, const corvid::CGRect& primary) {
    return {{rectangle.minX() - primary.minX(), primary.maxY() - rectangle.maxY()}, rectangle.size};
}

[[nodiscard]] inline corvid::CGPoint inScreenSpace(corvid::CGPoint point, const corvid::CGRect& primary) {
    return {point.x - primary.minX(), primary.maxY() - point.y};
}

[[nodiscard]] inline corvid::CGRect inAccessibilitySpace(const corvid::CGRect& rectangle,
                                                         const corvid::CGRect& primary) {
    return {{rectangle.minX() - primary.minX(), rectangle.minY() - primary.minY()}, rectangle.size};
}

/// The way back, from the accessibility space.
[[nodiscard]] inline corvid::CGPoint fromAccessibilitySpace(corvid::CGPoint point, const corvid::CGRect& primary) {
    return {point.x + primary.minX(), point.y + primary.minY()};
}

} // namespace platform::linux
