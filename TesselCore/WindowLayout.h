#pragma once

#include "CorvidKitCore/Geometry.h"
#include "TesselCore/WindowAction.h"

#include <cstddef>
#include <optional>
#include <span>

/// Where windows go: pure arithmetic on rectangles in points. Unless it says otherwise, everything is in the
/// accessibility space (origin at the top-left corner of the primary screen, y growing downwards). Nothing here fails,
/// whatever the numbers: with a NaN, comparisons are false and results may be NaN.
namespace tessel::WindowLayout {

/// A rectangle of the screen space in the accessibility space, or the other way round.
/// `primaryScreenHeight` is the height of the first screen's full frame.
[[nodiscard]] corvid::CGRect flip(const corvid::CGRect& rect, double primaryScreenHeight);

/// The index of the screen that a window is on: the one that it overlaps most, the first of equals. For a window off
/// every screen the one nearest to its centre, again the first of equals. Nothing only when there are no screens.
/// Rectangles in any one space.
[[nodiscard]] std::optional<std::size_t> bestScreen(const corvid::CGRect& window,
                                                    std::span<const corvid::CGRect> screens);

/// Where an action wants a window: `window` is its frame, `visible` the visible frame of its screen.
[[nodiscard]] corvid::CGRect targetFrame(WindowAction action, const corvid::CGRect& window,
                                         const corvid::CGRect& visible);

/// A size, shrunk to the rectangle where it is larger, in the middle of it, with an origin of whole points.
[[nodiscard]] corvid::CGRect centered(const corvid::CGSize& size, const corvid::CGRect& rect);

/// Where a window goes that keeps a size of its own: a half stays at its edge, centred vertically, with that very
/// size; anything else is centred, its size shrunk to the visible frame.
[[nodiscard]] corvid::CGRect fallbackFrame(WindowAction action, const corvid::CGSize& actualSize,
                                           const corvid::CGRect& visible);

/// Whether two sizes differ by no more than the tolerance in both dimensions. A NaN matches nothing.
[[nodiscard]] bool sizeMatches(const corvid::CGSize& a, const corvid::CGSize& b, double tolerance);

} // namespace tessel::WindowLayout
