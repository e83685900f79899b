#pragma once

#include <algorithm>
#include <optional>

/// Points, sizes and rectangles in double-precision points.
///
/// Two coordinate spaces are in use, and every function that takes or gives a rectangle says which one it means:
/// - screen space: origin at the bottom-left corner of the primary screen, y growing upwards;
/// - accessibility space: origin at the top-left corner of the primary screen, y growing downwards.
/// A point is one unit of the desktop's logical space: a pixel on X11, the compositor's logical unit on Wayland.
namespace corvid {

struct CGPoint {
    double x = 0;
    double y = 0;

    friend bool operator==(const CGPoint&, const CGPoint&) = default;
};

struct CGSize {
    double width = 0;
    double height = 0;

    friend bool operator==(const CGSize&, const CGSize&) = default;
};

/// A rectangle as origin and size. The derived values are those of the standardized rectangle: a negative size counts
/// as its absolute value, extending to the left of or above the origin.
struct CGRect {
    CGPoint origin;
    CGSize size;

    [[nodiscard]] constexpr double width() const { return size.width < 0 ? -size.width : size.width; }

    [[nodiscard]] constexpr double height() const { return size.height < 0 ? -size.height : size.height; }

    [[nodiscard]] constexpr double minX() const { return size.width < 0 ? origin.x + size.width : origin.x; }

    [[nodiscard]] constexpr double minY() const { return size.height < 0 ? origin.y + size.height : origin.y; }

    [[nodiscard]] constexpr double maxX() const { return minX() + width(); }

    [[nodiscard]] constexpr double maxY() const { return minY() + height(); }

    [[nodiscard]] constexpr double midX() const { return minX() + width() * 0.5; }

    [[nodiscard]] constexpr double midY() const { return minY() + height() * 0.5; }

    friend bool operator==(const CGRect&, const CGRect&) = default;
};

/// The common part of two rectangles of the same space; empty if they have no point in common. Rectangles that only
/// touch share a rectangle of zero width or height. A rectangle with a NaN in it has nothing in common with any.
[[nodiscard]] constexpr std::optional<CGRect> intersection(const CGRect& a, const CGRect& b) {
    const bool acrossX = a.minX() <= a.maxX() && b.minX() <= b.maxX() && a.minX() <= b.maxX() && b.minX() <= a.maxX();
    const bool acrossY = a.minY() <= a.maxY() && b.minY() <= b.maxY() && a.minY() <= b.maxY() && b.minY() <= a.maxY();
    if (!acrossX || !acrossY) {
        return std::nullopt;
    }
    const double left = std::max(a.minX(), b.minX());
    const double top = std::max(a.minY(), b.minY());
    const double right = std::min(a.maxX(), b.maxX());
    const double bottom = std::min(a.maxY(), b.maxY());
    return CGRect{{left, top}, {right - left, bottom - top}};
}

} // namespace corvid
