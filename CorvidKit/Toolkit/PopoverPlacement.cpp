#include "CorvidKit/Toolkit/PopoverPlacement.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace corvid::toolkit {

namespace {

/// The distance between the popover and its anchor, and the smallest one between it and the edges of the visible frame.
constexpr double gap = 6;

double outside(double value, double least, double most) {
    return std::max({least - value, value - most, 0.0});
}

/// The screen that has the point, or the nearest one.
const platform::Screen& screenOf(CGPoint point, std::span<const platform::Screen> screens) {
    const platform::Screen* nearest = nullptr;
    double distance = std::numeric_limits<double>::infinity();
    for (const platform::Screen& screen : screens) {
        const CGRect& frame = screen.frame;
        const double away =
            std::hypot(outside(point.x, frame.minX(), frame.maxX()), outside(point.y, frame.minY(), frame.maxY()));
        if (nearest == nullptr || away < distance) {
            nearest = &screen;
            distance = away;
        }
    }
    return *nearest;
}

/// The start of `length` as near to `wanted` as it fits between the two; at `least` where it does not.
double fitted(double wanted, double length, double least, double most) {
    return std::max(least, std::min(wanted, most - length));
}

/// The corner at the end of the panel; at the top where there is no panel.
CGRect panelCorner(const platform::Screen& screen) {
    const double atTop = screen.frame.maxY() - screen.visibleFrame.maxY();
    const double atBottom = screen.visibleFrame.minY() - screen.frame.minY();
    return {{screen.visibleFrame.maxX(), atBottom > atTop ? screen.frame.minY() : screen.frame.maxY()}, {0, 0}};
}

} // namespace

std::optional<CGRect> popoverFrame(const platform::Popover::Anchor& anchor, CGSize size,
                                   std::span<const platform::Screen> screens) {
    if (screens.empty()) {
        return std::nullopt;
    }
    const CGRect rect = anchor.rect.value_or(panelCorner(screens.front()));
    const platform::Screen& screen = screenOf({rect.midX(), rect.midY()}, screens);
    const CGRect& visible = screen.visibleFrame;
    const double room = visible.size.height - 2 * gap;
    const double height = room > 0 ? std::min(size.height, room) : size.height;
    const bool isBelow = rect.midY() >= screen.frame.midY();
    const double y = isBelow ? rect.minY() - gap - height : rect.maxY() + gap;
    // If there is no room at all, the upper edge is the one that stays visible.
    const double top = std::min(visible.maxY() - gap, std::max(y + height, visible.minY() + gap + height));
    return CGRect{
        {fitted(rect.midX() - size.width / 2, size.width, visible.minX() + gap, visible.maxX() - gap), top - height},
        {size.width, height}};
}

} // namespace corvid::toolkit
