#include "Platform/X11/FrameGeometry.h"

#include <algorithm>
#include <cmath>

namespace platform::x11 {

namespace {

constexpr std::uint32_t gravityNorthWest = 1;
constexpr std::uint32_t hasX = 1U << 8U;
constexpr std::uint32_t hasY = 1U << 9U;
constexpr std::uint32_t hasWidth = 1U << 10U;
constexpr std::uint32_t hasHeight = 1U << 11U;
constexpr std::uint32_t sourceIsPagerFlag = 2U << 12U;

// Positions and sizes are 16-bit in the core protocol.
constexpr double largestCoordinate = 32767;

std::int32_t pixel(double value) {
    return static_cast<std::int32_t>(std::lround(std::clamp(value, -largestCoordinate, largestCoordinate)));
}

std::uint32_t pixelCount(double value) {
    return static_cast<std::uint32_t>(std::lround(std::clamp(value, 1.0, largestCoordinate)));
}

} // namespace

Extents widened(const Extents& extents, std::int32_t width) {
    return {.left = extents.left + width,
            .right = extents.right + width,
            .top = extents.top + width,
            .bottom = extents.bottom + width};
}

corvid::CGRect visibleRectangle(const FrameGeometry& geometry) {
    const auto& [client, decoration, shadow] = geometry;
    return {{client.origin.x - decoration.left + shadow.left, client.origin.y - decoration.top + shadow.top},
            {client.size.width + decoration.left + decoration.right - shadow.left - shadow.right,
             client.size.height + decoration.top + decoration.bottom - shadow.top - shadow.bottom}};
}

corvid::CGRect outerRectangle(const FrameGeometry& geometry) {
    return visibleRectangle({.client = geometry.client, .decoration = geometry.decoration, .shadow = {}});
}

FrameGeometry geometryInside(const corvid::CGRect& frame, const corvid::CGRect& drawn, const FrameGeometry& present) {
    const corvid::CGRect& client = present.client;
    const Extents decoration{.left = pixel(client.minX() - drawn.minX()),
                             .right = pixel(drawn.maxX() - client.maxX()),
                             .top = pixel(client.minY() - drawn.minY()),
                             .bottom = pixel(drawn.maxY() - client.maxY())};
    return {.client = {{frame.origin.x + decoration.left, frame.origin.y + decoration.top},
                       {frame.size.width - decoration.left - decoration.right,
                        frame.size.height - decoration.top - decoration.bottom}},
            .decoration = decoration,
            .shadow = present.shadow};
}

bool haveSameExtents(const FrameGeometry& a, const FrameGeometry& b) {
    return a.decoration == b.decoration && a.shadow == b.shadow;
}

bool isFulfilled(const PlacementRequest& request, const corvid::CGRect& visible) {
    const bool isInPlace = !request.position || (pixel(request.position->x) == pixel(visible.origin.x) &&
                                                 pixel(request.position->y) == pixel(visible.origin.y));
    const bool isOfSize = !request.size || (pixelCount(request.size->width) == pixelCount(visible.size.width) &&
                                            pixelCount(request.size->height) == pixelCount(visible.size.height));
    return isInPlace && isOfSize;
}

PlacementRequest wholeRequest(const PlacementRequest& request, const corvid::CGRect& visible) {
    return {request.position.value_or(visible.origin), request.size.value_or(visible.size)};
}

MoveResizeMessage moveResizeMessage(const FrameGeometry& present, const PlacementRequest& request) {
    const auto& [client, decoration, shadow] = present;
    MoveResizeMessage message{.flags = gravityNorthWest | sourceIsPagerFlag};
    if (request.position) {
        message.flags |= hasX | hasY;
        message.x = pixel(request.position->x - shadow.left);
        message.y = pixel(request.position->y - shadow.top);
    }
    if (request.size) {
        message.flags |= hasWidth | hasHeight;
        message.width =
            pixelCount(request.size->width - decoration.left - decoration.right + shadow.left + shadow.right);
        message.height =
            pixelCount(request.size->height - decoration.top - decoration.bottom + shadow.top + shadow.bottom);
    }
    return message;
}

corvid::CGSize plainSize(const FrameGeometry& geometry, const PlacementRequest& whole) {
    const MoveResizeMessage message = moveResizeMessage(geometry, whole);
    return {static_cast<double>(message.width), static_cast<double>(message.height)};
}

corvid::CGSize roundedSize(const FrameGeometry& geometry, const SizeHints& hints, const PlacementRequest& whole) {
    const MoveResizeMessage message = moveResizeMessage(geometry, whole);
    const ClientSize size = constrainedSize(hints, {message.width, message.height});
    return {static_cast<double>(size.width), static_cast<double>(size.height)};
}

FrameGeometry geometryAfter(const FrameGeometry& before, const PlacementRequest& whole, corvid::CGSize size) {
    const MoveResizeMessage message = moveResizeMessage(before, whole);
    FrameGeometry after = before;
    after.client = {{static_cast<double>(message.x + before.decoration.left),
                     static_cast<double>(message.y + before.decoration.top)},
                    size};
    return after;
}

FrameGeometry geometryOutsideLayout(const FrameGeometry& laidOut, const Extents& decoration, const SizeHints& hints) {
    const corvid::CGRect visible = visibleRectangle(laidOut);
    const PlacementRequest whole{visible.origin, visible.size};
    FrameGeometry outside = laidOut;
    outside.decoration = decoration;
    return geometryAfter(outside, whole, roundedSize(outside, hints, whole));
}

} // namespace platform::x11
