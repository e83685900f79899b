#pragma once

#include "CorvidKitCore/Geometry.h"

#include <cmath>
#include <cstdlib>

/// Stops the fuzzer if the condition does not hold.
inline void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

/// Stops the fuzzer if the frame is one that no desktop can have.
inline void requireWithin(const corvid::CGRect& frame) {
    constexpr double farthest = 1e6;
    require(std::abs(frame.origin.x) <= farthest && std::abs(frame.origin.y) <= farthest);
    require(frame.size.width >= 0 && frame.size.width <= farthest);
    require(frame.size.height >= 0 && frame.size.height <= farthest);
}
