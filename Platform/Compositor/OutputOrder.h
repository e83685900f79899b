#pragma once

#include "Platform/Compositor/Window.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace platform::compositor {

/// Puts the output at the origin of the layout first, because it does not change with the focus: for a compositor that
/// has no primary output.
inline void putOriginFirst(std::vector<Output>& outputs) {
    std::ranges::sort(outputs, {}, [](const Output& output) {
        return std::pair(std::abs(output.frame.origin.x) + std::abs(output.frame.origin.y), output.frame.origin.x);
    });
}

} // namespace platform::compositor
