#include "Platform/X11/ConfiguredPositions.h"

#include <cmath>

namespace platform::x11 {

namespace {

// Wider than any border that a window manager counts or leaves out.
constexpr double widestBorder = 16;
// More kinds of windows than a desktop has.
constexpr std::size_t mostKinds = 64;

} // namespace

corvid::CGPoint ConfiguredPositions::request(corvid::CGPoint client, std::uint32_t gravity,
                                             const Extents& decoration) const {
    const auto known = distances.find({gravity, decoration.left, decoration.right, decoration.top, decoration.bottom});
    const corvid::CGPoint distance = known == distances.end() ? corvid::CGPoint{static_cast<double>(decoration.left),
                                                                                static_cast<double>(decoration.top)}
                                                              : known->second;
    return {client.x - distance.x, client.y - distance.y};
}

void ConfiguredPositions::observe(corvid::CGPoint requested, corvid::CGPoint landed, std::uint32_t gravity,
                                  const Extents& decoration) {
    const corvid::CGPoint distance{landed.x - requested.x, landed.y - requested.y};
    const bool isExplainedX = std::abs(distance.x) <= decoration.left + decoration.right + widestBorder;
    const bool isExplainedY = std::abs(distance.y) <= decoration.top + decoration.bottom + widestBorder;
    if (distances.size() >= mostKinds) {
        distances.clear();
    }
    const corvid::CGPoint former{static_cast<double>(decoration.left), static_cast<double>(decoration.top)};
    corvid::CGPoint& known =
        distances.try_emplace({gravity, decoration.left, decoration.right, decoration.top, decoration.bottom}, former)
            .first->second;
    known = {isExplainedX ? distance.x : known.x, isExplainedY ? distance.y : known.y};
}

} // namespace platform::x11
