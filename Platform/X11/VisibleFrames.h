#pragma once

#include "CorvidKitCore/Geometry.h"

#include <cstdint>
#include <optional>
#include <vector>

/// The part of each monitor that panels and docks leave free. Pure arithmetic; all rectangles are in root coordinates
/// (pixels, origin at the top-left corner of the root window, y down).
namespace platform::x11 {

/// The edge strips that one panel reserves, measured from the edges of the root window, with the range along the edge
/// to which each applies (`_NET_WM_STRUT_PARTIAL`: EWMH, Application Window Properties). Ranges include both ends.
struct Strut {
    double left = 0;
    double right = 0;
    double top = 0;
    double bottom = 0;
    double leftStart = 0;
    double leftEnd = 0;
    double rightStart = 0;
    double rightEnd = 0;
    double topStart = 0;
    double topEnd = 0;
    double bottomStart = 0;
    double bottomEnd = 0;

    friend bool operator==(const Strut&, const Strut&) = default;
};

/// A strut from the values of `_NET_WM_STRUT_PARTIAL` (twelve) or of `_NET_WM_STRUT` (four; the whole edge); empty for
/// any other number.
[[nodiscard]] std::optional<Strut> strutFromValues(const std::vector<std::uint32_t>& values);

/// The desktop's properties that describe its free space.
struct WorkSpace {
    corvid::CGSize rootSize;
    std::vector<corvid::CGRect> monitors;
    std::vector<Strut> struts;
    /// `_NET_WORKAREA` of the current desktop: one box for all monitors, so it is used only on a single one.
    std::optional<corvid::CGRect> workArea;
    /// `_GTK_WORKAREAS_D<n>` of the current desktop: a box per monitor, in an order of its own.
    std::vector<corvid::CGRect> monitorWorkAreas;
};

/// The visible frame of each monitor, in their order: the window manager's own box for that monitor if it publishes
/// one, else the monitor without the struts that reach into it. A strut whose inner edge lies beyond a monitor belongs
/// to a panel further inside and does not affect that monitor. A visible frame is never empty: a value that would leave
/// nothing is ignored.
[[nodiscard]] std::vector<corvid::CGRect> visibleFrames(const WorkSpace& space);

} // namespace platform::x11
