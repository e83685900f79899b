#include "TesselCore/WindowLayout.h"
#include "TesselCore/WindowMove.h"
#include "Tests/TesselCore/Printing.h"
#include "Tests/TesselCore/RectGenerators.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace {

using corvid::CGPoint;
using corvid::CGRect;
using corvid::CGSize;
using tessel::WindowAction;
using tessel::WindowMove;
namespace WindowLayout = tessel::WindowLayout;
using namespace tessel::generators;

rc::Gen<WindowAction> anyAction() {
    return rc::gen::elementOf(std::vector<WindowAction>(WindowAction::allCases.begin(), WindowAction::allCases.end()));
}

RC_GTEST_PROP(WindowLayoutProperties, TheTargetLiesInsideAVisibleFrameOfWholePoints, ()) {
    const CGRect visible = *wholeVisibleFrame();
    const CGRect target = WindowLayout::targetFrame(*anyAction(), *anyWindow(), visible);
    RC_ASSERT(inside(target, visible, 0));
}

// If the visible frame starts at a fraction of a point, rounding a centred origin may cost up to half a point.
RC_GTEST_PROP(WindowLayoutProperties, TheTargetLiesInsideAnyVisibleFrameButForRounding, ()) {
    const CGRect visible = *anyVisibleFrame();
    const WindowAction action = *anyAction();
    const bool rounds = action == WindowAction::center || action == WindowAction::almostMaximize;
    RC_ASSERT(inside(WindowLayout::targetFrame(action, *anyWindow(), visible), visible, rounds ? 0.5 : 0));
}

RC_GTEST_PROP(WindowLayoutProperties, AnActionAppliedToItsOwnResultChangesNothing, ()) {
    const WindowAction action = *anyAction();
    const CGRect visible = *anyVisibleFrame();
    const CGRect once = WindowLayout::targetFrame(action, *anyWindow(), visible);
    RC_ASSERT(WindowLayout::targetFrame(action, once, visible) == once);
    RC_ASSERT(WindowMove::steps(once, once) == std::vector<WindowMove>{WindowMove::setPosition(once.origin)});
    RC_ASSERT(WindowMove::correction(action, once.size, once, visible) == std::nullopt);
}

RC_GTEST_PROP(WindowLayoutProperties, FlipIsItsOwnInverse, ()) {
    const CGRect original = *anyWindow();
    const double height = *multiples(1, 6000, 8);
    RC_ASSERT(WindowLayout::flip(WindowLayout::flip(original, height), height) == original);
}

RC_GTEST_PROP(WindowLayoutProperties, StepsEndAtTheTargetWithTheSizeWrittenLast, ()) {
    const CGRect current = *anyWindow();
    const CGRect target = *anyWindow();
    const std::vector<WindowMove> steps = WindowMove::steps(current, target);
    CGRect frame = current;
    for (const WindowMove& move : steps) {
        if (const auto* resize = std::get_if<WindowMove::SetSize>(&move.step)) {
            frame.size = resize->size;
        } else {
            frame.origin = std::get<WindowMove::SetPosition>(move.step).position;
        }
    }
    RC_ASSERT(frame == target);
    RC_ASSERT(steps.size() == (current.size == target.size ? 1U : 3U));
}

RC_GTEST_PROP(WindowLayoutProperties, ACorrectionIsTheOriginOfTheFallbackFrame, ()) {
    const WindowAction action = *anyAction();
    const CGRect visible = *anyVisibleFrame();
    const CGRect target = *anyWindow();
    const CGSize result = (*anyWindow()).size;
    const std::optional<CGPoint> corrected = WindowMove::correction(action, result, target, visible);
    const bool near =
        std::fabs(result.width - target.size.width) <= 2.0 && std::fabs(result.height - target.size.height) <= 2.0;
    RC_ASSERT(corrected.has_value() == !near);
    if (corrected) {
        RC_ASSERT(*corrected == WindowLayout::fallbackFrame(action, result, visible).origin);
    }
}

/// A screen's claim to a window: a larger overlap beats a smaller one, any overlap beats none, without any the smaller
/// distance beats the larger, and of equal claims the one listed first wins. Implemented from the definition, for whole
/// numbers, as a sort of all claims.
struct Claim {
    std::int64_t missingOverlap;
    std::int64_t squaredDistance;
    std::size_t index;

    friend auto operator<=>(const Claim&, const Claim&) = default;
};

/// Corners, not sizes, and even numbers only, so that centres are whole.
struct Box {
    std::int64_t left;
    std::int64_t top;
    std::int64_t right;
    std::int64_t bottom;

    [[nodiscard]] CGRect rect() const {
        return {{static_cast<double>(left), static_cast<double>(top)},
                {static_cast<double>(right - left), static_cast<double>(bottom - top)}};
    }
};

Claim claim(const Box& window, const Box& screen, std::size_t index) {
    std::int64_t cells = 0;
    const std::int64_t columns = std::min(window.right, screen.right) - std::max(window.left, screen.left);
    const std::int64_t rows = std::min(window.bottom, screen.bottom) - std::max(window.top, screen.top);
    if (columns > 0 && rows > 0) {
        cells = columns * rows;
    }
    if (cells > 0) {
        return {-cells, 0, index};
    }
    const std::int64_t centerX = (window.left + window.right) / 2;
    const std::int64_t centerY = (window.top + window.bottom) / 2;
    const std::int64_t dx = centerX - std::clamp(centerX, screen.left, screen.right);
    const std::int64_t dy = centerY - std::clamp(centerY, screen.top, screen.bottom);
    return {0, dx * dx + dy * dy, index};
}

/// A small grid makes ties common.
rc::Gen<Box> box(int reach) {
    const rc::Gen<int> corner = rc::gen::inRange(-reach, reach + 1);
    const rc::Gen<int> length = rc::gen::inRange(1, reach + 1);
    return rc::gen::map(rc::gen::tuple(corner, corner, length, length), [](const auto& values) {
        const auto [x, y, width, height] = values;
        return Box{2LL * x, 2LL * y, 2LL * (x + width), 2LL * (y + height)};
    });
}

void agreesWithTheDefinition(int reach) {
    const Box window = *box(reach);
    const auto screens = *rc::gen::resize(6, rc::gen::container<std::vector<Box>>(box(reach / 2)));
    std::vector<CGRect> rects;
    std::vector<Claim> claims;
    for (const Box& screen : screens) {
        claims.push_back(claim(window, screen, rects.size()));
        rects.push_back(screen.rect());
    }
    std::ranges::sort(claims);
    const std::optional<std::size_t> expected = claims.empty() ? std::nullopt : std::optional{claims.front().index};
    RC_ASSERT(WindowLayout::bestScreen(window.rect(), rects) == expected);
}

RC_GTEST_PROP(WindowLayoutProperties, BestScreenAgreesWithTheDefinitionOnASmallGrid, ()) {
    agreesWithTheDefinition(6);
}

RC_GTEST_PROP(WindowLayoutProperties, BestScreenAgreesWithTheDefinitionOnDesktops, ()) {
    agreesWithTheDefinition(4000);
}

RC_GTEST_PROP(WindowLayoutProperties, NoNumberWhateverBreaksAnything, ()) {
    const WindowAction action = *anyAction();
    const CGRect window = *rect(anyNumber(), anyNumber());
    const CGRect visible = *rect(anyNumber(), anyNumber());
    const auto screens = *rc::gen::resize(4, rc::gen::container<std::vector<CGRect>>(rect(anyNumber(), anyNumber())));

    const std::optional<std::size_t> best = WindowLayout::bestScreen(window, screens);
    RC_ASSERT(best.has_value() == !screens.empty());
    RC_ASSERT(!best || *best < screens.size());

    const CGRect target = WindowLayout::targetFrame(action, window, visible);
    const std::size_t steps = WindowMove::steps(window, target).size();
    RC_ASSERT(steps == 1U || steps == 3U);
    const bool matches = WindowLayout::sizeMatches(window.size, {target.width(), target.height()}, 2.0);
    RC_ASSERT(WindowMove::correction(action, window.size, target, visible).has_value() == !matches);
    if (std::isnan(window.size.width) || std::isnan(window.size.height)) {
        RC_ASSERT(!matches);
    }
    (void)WindowLayout::flip(window, *anyNumber());
    (void)WindowLayout::fallbackFrame(action, window.size, visible);
}

} // namespace
