#pragma once

#include <algorithm>
#include <cmath>
#include <utility>

namespace platform::compositor {

/// Puts the output at the origin of the layout first, because it does not change with the focus: for a compositor that
/// has no primary output. The elements have a `frame`.
template <typename Outputs>
void putOriginFirst(Outputs& outputs) {
    std::ranges::sort(outputs, {}, [](const auto& output) {
        return std::pair(std::abs(output.frame.origin.x) + std::abs(output.frame.origin.y), output.frame.origin.x);
    });
}

} // namespace platform::compositor
