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

/// The result of an order for one window: its frame, and its position if it keeps a size of its own. Pure arithmetic on
/// rectangles in points in the accessibility space, which never fails, as in `WindowLayout`.
///
/// Halves, thirds and corners meet at whole points and cover the visible frame together, at any size: a cut that is not
/// at a whole point moves to the nearest, and the first of two halves is the smaller one. The actions' halves leave a
/// column free instead.
struct WindowGoal {
    /// The position of a window of another size in the visible frame: the share of the free space to its left and above
    /// it, from 0 to 1.
    struct Anchor {
        double across = 0.5;
        double down = 0.5;

        friend bool operator==(const Anchor&, const Anchor&) = default;
    };

    /// The frame that is requested of the window, and the visible frame of its display.
    corvid::CGRect target;
    corvid::CGRect visible;
    /// An action has a rule of its own.
    std::variant<WindowAction, Anchor> anchor;

    friend bool operator==(const WindowGoal&, const WindowGoal&) = default;

    /// The goal of an order for a window whose frame is `window`. Empty without a display, without another display to
    /// go to, or without a frame to go back to: `trail` is the window's own.
    [[nodiscard]] static std::optional<WindowGoal> of(const WindowOrder& order, const corvid::CGRect& window,
                                                      std::span<const Display> displays,
                                                      const PlacementTrail& trail = {});

    /// The position of a window whose application has taken another size than the requested one: `result` is its size
    /// after the writes. Empty if both dimensions came within two points.
    ///
    /// A half or a third keeps to its edges, a corner to its corner, and others are centred; a window that goes to
    /// another display or back keeps its share of the space around it. The top of a window that is too tall stays
    /// visible.
    [[nodiscard]] std::optional<corvid::CGPoint> correction(const corvid::CGSize& result) const;
};

} // namespace tessel
