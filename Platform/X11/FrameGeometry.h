#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Linux/Windows/PlacementRequest.h"
#include "Platform/X11/SizeHints.h"

#include <cstdint>

/// The arithmetic between a client window, its decoration and its shadow. All rectangles are in root coordinates: the
/// server's pixels, origin at the top-left corner of the root window, y down.
namespace platform::x11 {

/// Widths of a border, in pixels, in the order of the properties that carry them (left, right, top, bottom).
struct Extents {
    std::int32_t left = 0;
    std::int32_t right = 0;
    std::int32_t top = 0;
    std::int32_t bottom = 0;

    friend bool operator==(const Extents&, const Extents&) = default;
};

/// The extents enlarged by that much on each side.
[[nodiscard]] Extents widened(const Extents& extents, std::int32_t width);

/// A client window with its decoration and shadow.
struct FrameGeometry {
    /// The client's own rectangle.
    corvid::CGRect client;
    /// The window manager's decoration around the client: `_NET_FRAME_EXTENTS` (EWMH, Application Window Properties).
    Extents decoration;
    /// The shadow that the client draws around its window: `_GTK_FRAME_EXTENTS`.
    Extents shadow;

    friend bool operator==(const FrameGeometry&, const FrameGeometry&) = default;
};

/// The visible window: with decoration, without shadow.
[[nodiscard]] corvid::CGRect visibleRectangle(const FrameGeometry& geometry);

/// The rectangle with decoration and shadow.
[[nodiscard]] corvid::CGRect outerRectangle(const FrameGeometry& geometry);

/// The geometry of a client in the frame that its window manager reports, if no property has it: the decoration is the
/// difference between the client and the last drawn frame. A window that will be elsewhere when it is shown has its
/// client there.
[[nodiscard]] FrameGeometry geometryInside(const corvid::CGRect& frame, const corvid::CGRect& drawn,
                                           const FrameGeometry& present);

using linux::PlacementRequest;

/// Whether the difference between client and visible rectangle is the same.
[[nodiscard]] bool haveSameExtents(const FrameGeometry& a, const FrameGeometry& b);

/// Whether a visible rectangle equals the requested one, to the pixel.
[[nodiscard]] bool isFulfilled(const PlacementRequest& request, const corvid::CGRect& visible);

/// The data of a `_NET_MOVERESIZE_WINDOW` message (EWMH, Root Window Messages).
struct MoveResizeMessage {
    std::uint32_t flags = 0;
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;

    friend bool operator==(const MoveResizeMessage&, const MoveResizeMessage&) = default;
};

/// The request with position and size, of which those that it lacks are the present ones.
[[nodiscard]] PlacementRequest wholeRequest(const PlacementRequest& request, const corvid::CGRect& visible);

/// The message that gives a window's visible rectangle the requested value, for its present extents. Gravity is always
/// NorthWest, so that x and y name the outer corner with any gravity that the client has set. Values are rounded to
/// whole pixels and limited to the protocol's range; a size is at least one pixel.
[[nodiscard]] MoveResizeMessage moveResizeMessage(const FrameGeometry& present, const PlacementRequest& request);

/// The size that the client takes if the window manager ignores its hints.
[[nodiscard]] corvid::CGSize plainSize(const FrameGeometry& geometry, const PlacementRequest& whole);

/// The size that the client takes if the window manager respects its hints.
[[nodiscard]] corvid::CGSize roundedSize(const FrameGeometry& geometry, const SizeHints& hints,
                                         const PlacementRequest& whole);

/// The geometry of a window at its requested position, with a client of that size.
[[nodiscard]] FrameGeometry geometryAfter(const FrameGeometry& before, const PlacementRequest& whole,
                                          corvid::CGSize size);

/// The geometry of a window that is taken out of a layout without moving its corner: with that decoration, and with a
/// size that its hints allow. In a layout a window fills its part, regardless of its hints.
[[nodiscard]] FrameGeometry geometryOutsideLayout(const FrameGeometry& laidOut, const Extents& decoration,
                                                  const SizeHints& hints);

} // namespace platform::x11
