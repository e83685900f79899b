#include "TesselCore/WindowGoal.h"

#include "TesselCore/WindowLayout.h"
#include "TesselCore/WindowMove.h"

#include <algorithm>
#include <cmath>
#include <compare>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

namespace tessel {
namespace {

using corvid::CGPoint;
using corvid::CGRect;
using corvid::CGSize;
using Anchor = WindowGoal::Anchor;

/// A stretch along one axis.
struct Stretch {
    double start;
    double length;
};

/// Adjacent parts of a stretch that is cut into `count` equal ones: from `first` up to, not including, `end`.
struct Parts {
    int first = 0;
    int end = 1;
    int count = 1;
};

constexpr Parts all{};

/// The parts of the visible frame that a placement takes.
struct Cell {
    Parts columns;
    Parts rows;
};

std::optional<Cell> cellOf(WindowPlacement placement) {
    constexpr Parts firstHalf{0, 1, 2};
    constexpr Parts secondHalf{1, 2, 2};
    switch (WindowPlacement::Case{placement}) {
    case WindowPlacement::topHalf:
        return Cell{all, firstHalf};
    case WindowPlacement::bottomHalf:
        return Cell{all, secondHalf};
    case WindowPlacement::topLeft:
        return Cell{firstHalf, firstHalf};
    case WindowPlacement::topRight:
        return Cell{secondHalf, firstHalf};
    case WindowPlacement::bottomLeft:
        return Cell{firstHalf, secondHalf};
    case WindowPlacement::bottomRight:
        return Cell{secondHalf, secondHalf};
    case WindowPlacement::firstThird:
        return Cell{{0, 1, 3}, all};
    case WindowPlacement::centerThird:
        return Cell{{1, 2, 3}, all};
    case WindowPlacement::lastThird:
        return Cell{{2, 3, 3}, all};
    case WindowPlacement::firstTwoThirds:
        return Cell{{0, 2, 3}, all};
    case WindowPlacement::lastTwoThirds:
        return Cell{{1, 3, 3}, all};
    case WindowPlacement::nextDisplay:
    case WindowPlacement::previousDisplay:
    case WindowPlacement::restore:
        return std::nullopt;
    }
    std::unreachable();
}

/// The distance from the start of a stretch to the cut after that many parts: at a whole number, halves down, so that
/// the first of two halves has the size of the left half.
double cut(double length, int parts, int count) {
    if (parts == 0 || parts == count) {
        return parts == 0 ? 0 : length;
    }
    return std::ceil(length * parts / count - 0.5);
}

Stretch take(const Parts& parts, const Stretch& whole) {
    const double start = cut(whole.length, parts.first, parts.count);
    return {whole.start + start, cut(whole.length, parts.end, parts.count) - start};
}

/// A window that does not fill its parts goes to the end of the frame that they reach; to the middle if they reach both
/// or none.
double anchorOf(const Parts& parts) {
    const bool reachesStart = parts.first == 0;
    const bool reachesEnd = parts.end == parts.count;
    if (reachesStart == reachesEnd) {
        return 0.5;
    }
    return reachesStart ? 0 : 1;
}

Stretch across(const CGRect& rect) {
    return {rect.minX(), rect.width()};
}

Stretch down(const CGRect& rect) {
    return {rect.minY(), rect.height()};
}

CGRect rectangle(const Stretch& across, const Stretch& down) {
    return {{across.start, down.start}, {across.length, down.length}};
}

WindowGoal goalIn(const Cell& cell, const CGRect& visible) {
    return {.target = rectangle(take(cell.columns, across(visible)), take(cell.rows, down(visible))),
            .visible = visible,
            .anchor = Anchor{.across = anchorOf(cell.columns), .down = anchorOf(cell.rows)}};
}

/// The stretch shrunk to the whole if it is longer, and moved inside it.
Stretch pulledInside(const Stretch& stretch, const Stretch& whole) {
    const double length = std::min(stretch.length, whole.length);
    const double latest = whole.start + whole.length - length;
    return {std::min(std::max(stretch.start, whole.start), latest), length};
}

/// The share of the free space that lies before a stretch inside the whole.
double shareBefore(const Stretch& stretch, const Stretch& whole) {
    const double left = whole.length - stretch.length;
    return left > 0 ? std::clamp((stretch.start - whole.start) / left, 0.0, 1.0) : 0.5;
}

/// The same part of another whole. Its ends, not its length, are rounded, so that a stretch that fills the whole, or
/// meets another, still does so there.
Stretch scaled(const Stretch& stretch, const Stretch& from, const Stretch& to) {
    const auto place = [&](double end) {
        return std::min(to.length, std::round((end - from.start) / from.length * to.length));
    };
    const double start = place(stretch.start);
    const double length = std::max(1.0, place(stretch.start + stretch.length) - start);
    return pulledInside({to.start + start, length}, to);
}

WindowGoal goalOn(const Display& to, const Display& from, const CGRect& window) {
    const auto along = [](const Stretch& stretch, const Stretch& whole, const Stretch& other) {
        const Stretch inside = pulledInside(stretch, whole);
        return std::pair(scaled(inside, whole, other), shareBefore(inside, whole));
    };
    const auto [x, anchorX] = along(across(window), across(from.visible), across(to.visible));
    const auto [y, anchorY] = along(down(window), down(from.visible), down(to.visible));
    return {.target = rectangle(x, y), .visible = to.visible, .anchor = Anchor{.across = anchorX, .down = anchorY}};
}

/// The displays in their order. Of those that show the same contents, the largest remains.
std::vector<Display> inOrder(std::span<const Display> displays) {
    const auto isBefore = [](const Display& a, const Display& b) {
        for (const auto& [first, second] :
             {std::pair(a.frame.minX(), b.frame.minX()), std::pair(a.frame.minY(), b.frame.minY()),
              std::pair(b.frame.width(), a.frame.width()), std::pair(b.frame.height(), a.frame.height())}) {
            // A defined order even for a NaN.
            if (const std::weak_ordering order = std::weak_order(first, second); order != 0) {
                return order < 0;
            }
        }
        return false;
    };
    const auto haveTheSameCorner = [](const Display& a, const Display& b) {
        return a.frame.minX() == b.frame.minX() && a.frame.minY() == b.frame.minY();
    };
    std::vector<Display> ordered(displays.begin(), displays.end());
    std::ranges::sort(ordered, isBefore);
    const auto repeated = std::ranges::unique(ordered, haveTheSameCorner);
    ordered.erase(repeated.begin(), repeated.end());
    return ordered;
}

std::optional<std::size_t> displayOf(const CGRect& window, std::span<const Display> displays) {
    std::vector<CGRect> frames;
    frames.reserve(displays.size());
    std::ranges::transform(displays, std::back_inserter(frames), &Display::frame);
    return WindowLayout::bestScreen(window, frames);
}

std::optional<WindowGoal> goalBeyond(const CGRect& window, std::span<const Display> displays, bool isNext) {
    const std::vector<Display> ordered = inOrder(displays);
    const std::optional<std::size_t> place = displayOf(window, ordered);
    if (!place || ordered.size() < 2) {
        return std::nullopt;
    }
    const std::size_t step = isNext ? 1 : ordered.size() - 1;
    return goalOn(ordered[(*place + step) % ordered.size()], ordered[*place], window);
}

/// Back to an earlier frame of the window. If no display is there any more, the frame moves to the nearest one.
std::optional<WindowGoal> goalBack(const CGRect& former, std::span<const Display> displays) {
    const std::optional<std::size_t> place = displayOf(former, displays);
    if (!place) {
        return std::nullopt;
    }
    const CGRect& visible = displays[*place].visible;
    const bool isInSight = std::ranges::any_of(displays, [&](const Display& display) {
        const std::optional<CGRect> common = intersection(display.frame, former);
        return common && common->width() > 0 && common->height() > 0;
    });
    const Stretch x = pulledInside(across(former), across(visible));
    const Stretch y = pulledInside(down(former), down(visible));
    return WindowGoal{.target = isInSight ? former : rectangle(x, y),
                      .visible = visible,
                      .anchor =
                          Anchor{.across = shareBefore(x, across(visible)), .down = shareBefore(y, down(visible))}};
}

/// The start of a stretch of that length, with that share of the free space before it.
double anchored(double length, const Stretch& whole, double share) {
    if (share == 0) {
        return whole.start;
    }
    if (share == 1) {
        return whole.start + whole.length - length;
    }
    return std::round(whole.start + std::max(0.0, whole.length - length) * share);
}

CGPoint anchored(const CGSize& size, const CGRect& visible, const Anchor& anchor) {
    const double top = anchored(size.height, down(visible), anchor.down);
    return {anchored(size.width, across(visible), anchor.across), std::max(visible.minY(), top)};
}

} // namespace

std::optional<WindowGoal> WindowGoal::of(const WindowOrder& order, const CGRect& window,
                                         std::span<const Display> displays, const PlacementTrail& trail) {
    const auto* placement = std::get_if<WindowPlacement>(&order);
    if (placement != nullptr &&
        (*placement == WindowPlacement::nextDisplay || *placement == WindowPlacement::previousDisplay)) {
        return goalBeyond(window, displays, *placement == WindowPlacement::nextDisplay);
    }
    if (placement != nullptr && *placement == WindowPlacement::restore) {
        const std::optional<CGRect> former = trail.former(window);
        return former ? goalBack(*former, displays) : std::nullopt;
    }
    const std::optional<std::size_t> place = displayOf(window, displays);
    if (!place) {
        return std::nullopt;
    }
    const CGRect& visible = displays[*place].visible;
    if (placement != nullptr) {
        return goalIn(cellOf(*placement).value(), visible);
    }
    const WindowAction action = std::get<WindowAction>(order);
    return WindowGoal{
        .target = WindowLayout::targetFrame(action, window, visible), .visible = visible, .anchor = action};
}

std::optional<CGPoint> WindowGoal::correction(const CGSize& result) const {
    if (const auto* action = std::get_if<WindowAction>(&anchor)) {
        return WindowMove::correction(*action, result, target, visible);
    }
    if (WindowLayout::sizeMatches(result, {target.width(), target.height()}, WindowMove::sizeTolerance)) {
        return std::nullopt;
    }
    return anchored(result, visible, std::get<Anchor>(anchor));
}

} // namespace tessel
