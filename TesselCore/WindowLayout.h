#pragma once

#include "CorvidKitCore/Geometry.h"
#include "TesselCore/WindowAction.h"

#include <cstddef>
#include <optional>
#include <span>

/// Positions of windows: pure arithmetic on rectangles in points. Unless noted otherwise, everything is in the
/// accessibility space (origin at the top-left corner of the primary screen, y growing downwards). Nothing here fails,
/// for any numbers: with a NaN, comparisons are false and results may be NaN.
namespace tessel::WindowLayout {

/// Converts a rectangle of the screen space to the accessibility space, or the reverse. `primaryScreenHeight` is the
/// height of the first screen's full frame.
[[nodiscard]] corvid::CGRect flip(const corvid::CGRect& rect, double primaryScreenHeight);

/// The index of a window's screen: the one that it overlaps most, the first of equals. For a window off every screen
/// the one nearest to its centre, again the first of equals. Empty only without screens. Rectangles in any one space.
[[nodiscard]] std::optional<std::size_t> bestScreen(const corvid::CGRect& window,
                                                    std::span<const corvid::CGRect> screens);

/// The frame that an action requests: `window` is the window's frame, `visible` the visible frame of its screen.
[[nodiscard]] corvid::CGRect targetFrame(WindowAction action, const corvid::CGRect& window,
                                         const corvid::CGRect& visible);

/// A size, shrunk to the rectangle if it is larger, in the middle of it, with an origin of whole points.
[[nodiscard]] corvid::CGRect centered(const corvid::CGSize& size, const corvid::CGRect& rect);

/// The frame of a window that keeps a size of its own: a half stays at its edge, centred vertically, with that very
/// size; for any other action the window is centred, its size shrunk to the visible frame.
[[nodiscard]] corvid::CGRect fallbackFrame(WindowAction action, const corvid::CGSize& actualSize,
                                           const corvid::CGRect& visible);

/// Whether two sizes differ by no more than the tolerance in both dimensions. A NaN matches nothing.
[[nodiscard]] bool sizeMatches(const corvid::CGSize& a, const corvid::CGSize& b, double tolerance);

} // namespace tessel::WindowLayout
