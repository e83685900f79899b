#pragma once

#include "CorvidKitCore/Geometry.h"
#include "TesselCore/PlacementTrail.h"
#include "TesselCore/WindowOrder.h"

#include <optional>
#include <span>
#include <variant>

namespace tessel {

/// A display in the accessibility space, in points.
struct Display {
    corvid::CGRect frame;
    /// Without panels and docks.
    corvid::CGRect visible;

    friend bool operator==(const Display&, const Display&) = default;
};

/// What an order comes to for one window: where it is to stand, and what becomes of it there if it keeps a size of its
/// own. Pure arithmetic on rectangles in points in the accessibility space, which never fails, as in `WindowLayout`.
///
/// Halves, thirds and corners meet at whole points and cover the visible frame together, whatever its size: where a cut
/// is not at a whole point, it is at the nearest, and the first of two halves is the smaller one. The actions' halves
/// leave a column free instead.
struct WindowGoal {
    /// Where a window of another size stands in the visible frame: how much of the space that is left over is to its
    /// left and above it, from 0 to 1.
    struct Anchor {
        double across = 0.5;
        double down = 0.5;

        friend bool operator==(const Anchor&, const Anchor&) = default;
    };

    /// The frame that the window is asked for, and the visible frame of the display that it is to stand on.
    corvid::CGRect target;
    corvid::CGRect visible;
    /// An action has a rule of its own.
    std::variant<WindowAction, Anchor> anchor;

    friend bool operator==(const WindowGoal&, const WindowGoal&) = default;

    /// Where an order wants a window whose frame is `window`. Nothing where there is no display, no other display to go
    /// to, or no frame to go back to: `trail` is the window's own.
    [[nodiscard]] static std::optional<WindowGoal> of(const WindowOrder& order, const corvid::CGRect& window,
                                                      std::span<const Display> displays,
                                                      const PlacementTrail& trail = {});

    /// Where a window has to go whose application made another size of the one asked for: `result` is the size that it
    /// has after the writes. Nothing when both dimensions came within two points.
    ///
    /// A half or a third keeps to its edges, a corner to its corner, and what stands between is centred; a window that
    /// goes to another display or back keeps its share of the space around it. A window too tall keeps its top in
    /// sight.
    [[nodiscard]] std::optional<corvid::CGPoint> correction(const corvid::CGSize& result) const;
};

} // namespace tessel
