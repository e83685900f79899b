#include "TesselCore/WindowGoal.h"
#include "Tests/TesselCore/Printing.h"
#include "Tests/TesselCore/RectGenerators.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

namespace {

using corvid::CGPoint;
using corvid::CGRect;
using corvid::CGSize;
using tessel::Display;
using tessel::PlacementTrail;
using tessel::WindowGoal;
using tessel::WindowPlacement;
using namespace tessel::generators;
using Placements = std::vector<WindowPlacement>;

// The places that are parts of the visible frame, independent of the window's position.
const Placements cells(WindowPlacement::allCases.begin(), WindowPlacement::allCases.begin() + 11);

rc::Gen<WindowPlacement> anyPlacement() {
    return rc::gen::elementOf(Placements(WindowPlacement::allCases.begin(), WindowPlacement::allCases.end()));
}

std::optional<WindowGoal> goalAlone(WindowPlacement placement, const CGRect& window, const CGRect& visible) {
    return WindowGoal::of(placement, window, std::vector{Display{.frame = visible, .visible = visible}});
}

CGRect target(WindowPlacement placement, const CGRect& visible) {
    return goalAlone(placement, visible, visible).value().target;
}

/// Whether the targets cover the visible frame, without a gap or an overlap: each point of the grid of all edges and
/// their midpoints belongs to exactly one.
void coverTogether(const Placements& placements, const CGRect& visible) {
    std::vector<CGRect> parts;
    std::vector<double> xs{visible.minX(), visible.maxX()};
    std::vector<double> ys{visible.minY(), visible.maxY()};
    for (const WindowPlacement placement : placements) {
        const CGRect part = target(placement, visible);
        RC_ASSERT(inside(part, visible, 0));
        parts.push_back(part);
        xs.insert(xs.end(), {part.minX(), part.maxX()});
        ys.insert(ys.end(), {part.minY(), part.maxY()});
    }
    std::ranges::sort(xs);
    std::ranges::sort(ys);
    for (std::size_t column = 0; column + 1 < xs.size(); ++column) {
        for (std::size_t line = 0; line + 1 < ys.size(); ++line) {
            if (xs[column] == xs[column + 1] || ys[line] == ys[line + 1]) {
                continue;
            }
            const CGPoint between{(xs[column] + xs[column + 1]) / 2, (ys[line] + ys[line + 1]) / 2};
            RC_ASSERT(std::ranges::count_if(parts, [&](const CGRect& part) {
                          return part.minX() < between.x && between.x < part.maxX() && part.minY() < between.y &&
                                 between.y < part.maxY();
                      }) == 1);
        }
    }
}

RC_GTEST_PROP(WindowGoalProperties, PartsMeetWithoutAGapOrAnOverlapWhateverTheSize, ()) {
    const CGRect visible = *anyVisibleFrame();
    using enum WindowPlacement::Case;
    for (const Placements& whole :
         {Placements{topHalf, bottomHalf}, Placements{topLeft, topRight, bottomLeft, bottomRight},
          Placements{topLeft, topRight, bottomHalf}, Placements{topHalf, bottomLeft, bottomRight},
          Placements{firstThird, centerThird, lastThird}, Placements{firstTwoThirds, lastThird},
          Placements{firstThird, lastTwoThirds}}) {
        coverTogether(whole, visible);
    }
}

RC_GTEST_PROP(WindowGoalProperties, PartsOfWholePointsAreWholeAndAlmostEqual, ()) {
    const CGRect visible = *wholeVisibleFrame();
    using enum WindowPlacement::Case;
    for (const WindowPlacement placement : cells) {
        const CGRect part = target(placement, visible);
        for (const double number : {part.minX(), part.minY(), part.width(), part.height()}) {
            RC_ASSERT(number == std::round(number));
        }
    }
    RC_ASSERT(target(firstThird, visible).width() == target(lastThird, visible).width());
    RC_ASSERT(std::fabs(target(centerThird, visible).width() - target(firstThird, visible).width()) <= 1);
    const double difference = target(bottomHalf, visible).height() - target(topHalf, visible).height();
    RC_ASSERT(difference == 0 || difference == 1);
}

RC_GTEST_PROP(WindowGoalProperties, AWindowThatRefusesStaysInsideWhereItFits, ()) {
    const CGRect visible = *wholeVisibleFrame();
    const WindowPlacement placement = *rc::gen::elementOf(cells);
    const CGSize result = (*rect(multiples(0, 1, 1), multiples(1, 9000, 1))).size;
    const auto corrected = goalAlone(placement, *anyWindow(), visible).value().correction(result);
    if (!corrected) {
        return;
    }
    if (result.width <= visible.width() && result.height <= visible.height()) {
        RC_ASSERT(inside({*corrected, result}, visible, 0));
    }
    RC_ASSERT(corrected->y >= visible.minY());
}

/// Two displays side by side.
std::vector<Display> pair(const CGRect& left, const CGSize& right) {
    return {{.frame = left, .visible = left},
            {.frame = {{left.maxX(), left.minY()}, right}, .visible = {{left.maxX(), left.minY()}, right}}};
}

RC_GTEST_PROP(WindowGoalProperties, TheOtherDisplayHoldsAllOfTheWindow, ()) {
    const std::vector<Display> displays = pair(*wholeVisibleFrame(), (*wholeVisibleFrame()).size);
    const CGRect window = *anyWindow();
    const auto next = WindowGoal::of(WindowPlacement::nextDisplay, window, displays);
    RC_ASSERT(next.has_value());
    RC_ASSERT(inside(next->target, next->visible, 0));
    RC_ASSERT(next == WindowGoal::of(WindowPlacement::previousDisplay, window, displays));
}

RC_GTEST_PROP(WindowGoalProperties, ThereAndBackAgainIsWhereTheWindowWasOnDisplaysOfOneSize, ()) {
    const CGRect left = *wholeVisibleFrame();
    const std::vector<Display> displays = pair(left, left.size);
    const double width = *multiples(1, static_cast<int>(left.width()), 1);
    const double height = *multiples(1, static_cast<int>(left.height()), 1);
    const double x = *multiples(0, static_cast<int>(left.width() - width), 1);
    const double y = *multiples(0, static_cast<int>(left.height() - height), 1);
    const CGRect window{{left.minX() + x, left.minY() + y}, {width, height}};
    const CGRect there = WindowGoal::of(WindowPlacement::nextDisplay, window, displays).value().target;
    RC_ASSERT(there == (CGRect{{window.minX() + left.width(), window.minY()}, window.size}));
    RC_ASSERT(WindowGoal::of(WindowPlacement::nextDisplay, there, displays).value().target == window);
}

RC_GTEST_PROP(WindowGoalProperties, WindowsThatMeetStillMeetOnTheOtherDisplay, ()) {
    const CGRect left = *rect(multiples(-6000, 6000, 1), multiples(300, 6000, 1));
    const std::vector<Display> displays = pair(left, (*rect(multiples(0, 1, 1), multiples(300, 6000, 1))).size);
    const int width = static_cast<int>(left.width());
    // Three windows side by side, each wide enough for a nonzero width there.
    const int firstEnd = *rc::gen::inRange(50, width - 100);
    const int secondEnd = *rc::gen::inRange(firstEnd + 50, width - 49);
    double end = displays[1].visible.minX();
    for (const auto& [from, to] :
         {std::pair(0, firstEnd), std::pair(firstEnd, secondEnd), std::pair(secondEnd, width)}) {
        const CGRect window{{left.minX() + from, left.minY()}, {static_cast<double>(to - from), left.height()}};
        const CGRect there = WindowGoal::of(WindowPlacement::nextDisplay, window, displays).value().target;
        RC_ASSERT(there.minX() == end);
        end = there.maxX();
    }
    RC_ASSERT(end == displays[1].visible.maxX());
}

RC_GTEST_PROP(WindowGoalProperties, NoNumberWhateverBreaksAPlacement, ()) {
    const WindowPlacement placement = *anyPlacement();
    const CGRect window = *rect(anyNumber(), anyNumber());
    const auto frames = *rc::gen::resize(4, rc::gen::container<std::vector<CGRect>>(rect(anyNumber(), anyNumber())));
    std::vector<Display> displays;
    std::ranges::transform(frames, std::back_inserter(displays),
                           [](const CGRect& frame) { return Display{.frame = frame, .visible = frame}; });
    PlacementTrail trail;
    trail.add(*rect(anyNumber(), anyNumber()), window);
    const auto goal = WindowGoal::of(placement, window, displays, trail);
    const bool isCell = std::ranges::find(cells, placement) != cells.end();
    RC_ASSERT(!goal || !displays.empty());
    RC_ASSERT(!isCell || goal.has_value() == !displays.empty());
    if (goal) {
        (void)goal->correction((*rect(anyNumber(), anyNumber())).size);
    }
}

} // namespace
