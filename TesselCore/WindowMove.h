#pragma once

#include "CorvidKitCore/Geometry.h"
#include "TesselCore/WindowAction.h"

#include <optional>
#include <variant>
#include <vector>

namespace tessel {

/// One write to a window, in points of the accessibility space.
struct WindowMove {
    /// How far, in points, an application may be off before its window is placed anew.
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

    /// The writes that bring a window from one frame to another: its position alone when the size is exactly right,
    /// otherwise size, position and size again. A window at its old place may be unable to take the new size (it is
    /// held inside its screen), so the size is written once more where it ends up.
    [[nodiscard]] static std::vector<WindowMove> steps(const corvid::CGRect& current, const corvid::CGRect& target);

    /// Where a window has to go whose application made another size of the one asked for: `result` is the size it has
    /// after the writes. Nothing when both dimensions came within two points.
    [[nodiscard]] static std::optional<corvid::CGPoint> correction(WindowAction action, const corvid::CGSize& result,
                                                                   const corvid::CGRect& target,
                                                                   const corvid::CGRect& visible);

    std::variant<SetSize, SetPosition> step;

    friend bool operator==(const WindowMove&, const WindowMove&) = default;
};

} // namespace tessel
