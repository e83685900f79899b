#include "TesselCore/WindowLayout.h"

#include <cmath>
#include <utility>

namespace tessel::WindowLayout {
namespace {

using corvid::CGPoint;
using corvid::CGRect;
using corvid::CGSize;

constexpr double almost = 0.9;

// The order of arguments decides how the standard library's min and max treat a NaN; here the second argument wins if
// the comparison is false.
constexpr double lesser(double a, double b) {
    return a < b ? a : b;
}

constexpr double greater(double a, double b) {
    return a > b ? a : b;
}

/// The nearest whole number, halves away from zero.
double nearest(double value) {
    return std::round(value);
}

double overlap(const CGRect& screen, const CGRect& window) {
    const std::optional<CGRect> common = intersection(screen, window);
    return common ? common->width() * common->height() : 0;
}

constexpr double distance(double coordinate, double low, double high) {
    if (coordinate < low) {
        return low - coordinate;
    }
    if (coordinate > high) {
        return coordinate - high;
    }
    return 0;
}

constexpr double squaredDistance(const CGPoint& point, const CGRect& rect) {
    const double dx = distance(point.x, rect.minX(), rect.maxX());
    const double dy = distance(point.y, rect.minY(), rect.maxY());
    return dx * dx + dy * dy;
}

CGRect rightHalf(const CGRect& visible) {
    const double width = std::floor(visible.width() * 0.5);
    return {{visible.maxX() - width, visible.minY()}, {width, visible.height()}};
}

CGRect leftHalf(const CGRect& visible) {
    return {{visible.minX(), visible.minY()}, {std::floor(visible.width() * 0.5), visible.height()}};
}

CGRect fullHeight(const CGRect& window, const CGRect& visible) {
    const double width = lesser(visible.width(), window.width());
    const double x = lesser(visible.maxX() - width, greater(window.minX(), visible.minX()));
    return {{x, visible.minY()}, {width, visible.height()}};
}

} // namespace

CGRect flip(const CGRect& rect, double primaryScreenHeight) {
    return {{rect.minX(), primaryScreenHeight - rect.maxY()}, {rect.width(), rect.height()}};
}

std::optional<std::size_t> bestScreen(const CGRect& window, std::span<const CGRect> screens) {
    if (screens.empty()) {
        return std::nullopt;
    }
    std::optional<std::size_t> best;
    double largest = 0;
    for (std::size_t index = 0; index < screens.size(); ++index) {
        if (const double area = overlap(screens[index], window); area > largest) {
            best = index;
            largest = area;
        }
    }
    if (best) {
        return best;
    }

    const CGPoint center{window.midX(), window.midY()};
    std::size_t closest = 0;
    double least = squaredDistance(center, screens.front());
    for (std::size_t index = 1; index < screens.size(); ++index) {
        if (const double away = squaredDistance(center, screens[index]); away < least) {
            closest = index;
            least = away;
        }
    }
    return closest;
}

CGRect targetFrame(WindowAction action, const CGRect& window, const CGRect& visible) {
    switch (WindowAction::Case{action}) {
    case WindowAction::leftHalf:
        return leftHalf(visible);
    case WindowAction::rightHalf:
        return rightHalf(visible);
    case WindowAction::center:
        return centered({window.width(), window.height()}, visible);
    case WindowAction::maximize:
        return visible;
    case WindowAction::almostMaximize:
        return centered({nearest(visible.width() * almost), nearest(visible.height() * almost)}, visible);
    case WindowAction::maximizeHeight:
        return fullHeight(window, visible);
    }
    std::unreachable();
}

CGRect centered(const CGSize& size, const CGRect& rect) {
    const double width = lesser(rect.width(), size.width);
    const double height = lesser(rect.height(), size.height);
    return {{nearest(rect.midX() - width * 0.5), nearest(rect.midY() - height * 0.5)}, {width, height}};
}

CGRect fallbackFrame(WindowAction action, const CGSize& actualSize, const CGRect& visible) {
    const CGRect middle = centered(actualSize, visible);
    switch (WindowAction::Case{action}) {
    case WindowAction::leftHalf:
        return {{visible.minX(), middle.origin.y}, actualSize};
    case WindowAction::rightHalf:
        return {{visible.maxX() - actualSize.width, middle.origin.y}, actualSize};
    case WindowAction::center:
    case WindowAction::maximize:
    case WindowAction::almostMaximize:
    case WindowAction::maximizeHeight:
        return middle;
    }
    std::unreachable();
}

bool sizeMatches(const CGSize& a, const CGSize& b, double tolerance) {
    return std::abs(a.width - b.width) <= tolerance && std::abs(a.height - b.height) <= tolerance;
}

} // namespace tessel::WindowLayout
