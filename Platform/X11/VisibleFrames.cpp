#include "Platform/X11/VisibleFrames.h"

#include <algorithm>

namespace platform::x11 {

namespace {

using corvid::CGRect;

CGRect fromEdges(double left, double top, double right, double bottom) {
    return {{left, top}, {right - left, bottom - top}};
}

bool contains(const CGRect& outer, const CGRect& inner) {
    return outer.minX() <= inner.minX() && outer.minY() <= inner.minY() && inner.maxX() <= outer.maxX() &&
           inner.maxY() <= outer.maxY();
}

bool isEmpty(const CGRect& rectangle) {
    return !(rectangle.size.width > 0 && rectangle.size.height > 0);
}

/// Whether a range along an edge, both ends included, has a pixel in common with [from, to).
bool reaches(double start, double end, double from, double to) {
    return start < to && end >= from;
}

/// Whether an inner edge cuts a span into two parts that both have a width.
bool cuts(double edge, double from, double to) {
    return from < edge && edge < to;
}

CGRect withoutStrut(const CGRect& free, const CGRect& monitor, const Strut& strut, corvid::CGSize root) {
    const double leftEdge = strut.left;
    const double rightEdge = root.width - strut.right;
    const double topEdge = strut.top;
    const double bottomEdge = root.height - strut.bottom;
    const bool alongY = strut.left > 0 && reaches(strut.leftStart, strut.leftEnd, monitor.minY(), monitor.maxY());
    const bool alongYRight =
        strut.right > 0 && reaches(strut.rightStart, strut.rightEnd, monitor.minY(), monitor.maxY());
    const bool alongX = strut.top > 0 && reaches(strut.topStart, strut.topEnd, monitor.minX(), monitor.maxX());
    const bool alongXBottom =
        strut.bottom > 0 && reaches(strut.bottomStart, strut.bottomEnd, monitor.minX(), monitor.maxX());

    double left = free.minX();
    double top = free.minY();
    double right = free.maxX();
    double bottom = free.maxY();
    if (alongY && cuts(leftEdge, monitor.minX(), monitor.maxX())) {
        left = std::max(left, leftEdge);
    }
    if (alongYRight && cuts(rightEdge, monitor.minX(), monitor.maxX())) {
        right = std::min(right, rightEdge);
    }
    if (alongX && cuts(topEdge, monitor.minY(), monitor.maxY())) {
        top = std::max(top, topEdge);
    }
    if (alongXBottom && cuts(bottomEdge, monitor.minY(), monitor.maxY())) {
        bottom = std::min(bottom, bottomEdge);
    }
    const CGRect rest = fromEdges(left, top, right, bottom);
    return isEmpty(rest) ? free : rest;
}

std::optional<CGRect> ownWorkArea(const CGRect& monitor, const std::vector<CGRect>& areas) {
    const auto inside = std::ranges::find_if(
        areas, [&monitor](const CGRect& area) { return !isEmpty(area) && contains(monitor, area); });
    return inside == areas.end() ? std::nullopt : std::optional(*inside);
}

} // namespace

std::optional<Strut> strutFromValues(const std::vector<std::uint32_t>& values) {
    constexpr std::size_t edges = 4;
    constexpr std::size_t edgesWithRanges = 12;
    if (values.size() < edges) {
        return std::nullopt;
    }
    Strut strut{.left = static_cast<double>(values[0]),
                .right = static_cast<double>(values[1]),
                .top = static_cast<double>(values[2]),
                .bottom = static_cast<double>(values[3])};
    if (values.size() < edgesWithRanges) {
        constexpr double whole = 65535;
        strut.leftEnd = strut.rightEnd = strut.topEnd = strut.bottomEnd = whole;
        return strut;
    }
    strut.leftStart = static_cast<double>(values[4]);
    strut.leftEnd = static_cast<double>(values[5]);
    strut.rightStart = static_cast<double>(values[6]);
    strut.rightEnd = static_cast<double>(values[7]);
    strut.topStart = static_cast<double>(values[8]);
    strut.topEnd = static_cast<double>(values[9]);
    strut.bottomStart = static_cast<double>(values[10]);
    strut.bottomEnd = static_cast<double>(values[11]);
    return strut;
}

std::vector<CGRect> visibleFrames(const WorkSpace& space) {
    std::vector<CGRect> frames;
    frames.reserve(space.monitors.size());
    for (const CGRect& monitor : space.monitors) {
        if (const auto own = ownWorkArea(monitor, space.monitorWorkAreas)) {
            frames.push_back(*own);
            continue;
        }
        CGRect free = monitor;
        for (const Strut& strut : space.struts) {
            free = withoutStrut(free, monitor, strut, space.rootSize);
        }
        if (space.monitors.size() == 1 && space.workArea) {
            const auto common = corvid::intersection(free, *space.workArea);
            free = common && !isEmpty(*common) ? *common : free;
        }
        frames.push_back(free);
    }
    return frames;
}

} // namespace platform::x11
