#pragma once

#include "CorvidKitCore/Geometry.h"
#include "TesselCore/WindowAction.h"

#include <optional>
#include <variant>
#include <vector>

namespace tessel {

/// One write to a window, in points of the accessibility space.
struct WindowMove {
    /// The largest error, in points, that an application may make without a correction.
    static constexpr double sizeTolerance = 2.0;

    struct SetSize {
        corvid::CGSize size;

        friend bool operator==(const SetSize&, const SetSize&) = default;
    };

    /// The position is that of the window's top-left corner.
    struct SetPosition {
        corvid::CGPoint position;

        friend bool operator==(const SetPosition&, const SetPosition&) = default;
    };

    [[nodiscard]] static WindowMove setSize(const corvid::CGSize& size) { return {SetSize{size}}; }

    [[nodiscard]] static WindowMove setPosition(const corvid::CGPoint& position) { return {SetPosition{position}}; }

    /// The writes that move a window from one frame to another: its position alone if the size is exactly right,
    /// otherwise size, position and size again. At its old position a window may be unable to take the new size (it is
    /// held inside its screen), so the size is written again at the new position.
    [[nodiscard]] static std::vector<WindowMove> steps(const corvid::CGRect& current, const corvid::CGRect& target);

    /// The position of a window whose application has taken another size than the requested one: `result` is its size
    /// after the writes. Empty if both dimensions came within two points.
    [[nodiscard]] static std::optional<corvid::CGPoint> correction(WindowAction action, const corvid::CGSize& result,
                                                                   const corvid::CGRect& target,
                                                                   const corvid::CGRect& visible);

    std::variant<SetSize, SetPosition> step;

    friend bool operator==(const WindowMove&, const WindowMove&) = default;
};

} // namespace tessel
