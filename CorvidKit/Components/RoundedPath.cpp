#include "CorvidKit/Components/RoundedPath.h"

#include <algorithm>

namespace corvid {

QPainterPath roundedPath(const QRectF& bounds, qreal radius, bool isContinuous) {
    QPainterPath path;
    const qreal shorter = std::min(bounds.width(), bounds.height());
    radius = std::clamp(radius, 0.0, shorter / 2);
    if (!isContinuous || radius == 0) {
        path.addRoundedRect(bounds, radius, radius);
        return path;
    }
    // The curve takes more of the side than a circle would, and its handles reach nearer to the corner, so that the
    // curvature grows from nothing. Where the sides are too short for that it becomes a circle.
    constexpr qreal reachOfContinuous = 1.28;
    constexpr qreal handleOfCircle = 0.5523;
    constexpr qreal handleOfContinuous = 0.68;
    const qreal reach = std::min(radius * reachOfContinuous, shorter / 2);
    const qreal share = (reach / radius - 1) / (reachOfContinuous - 1);
    const qreal handle = reach * (1 - (handleOfCircle + share * (handleOfContinuous - handleOfCircle)));
    const qreal left = bounds.left();
    const qreal top = bounds.top();
    const qreal right = bounds.right();
    const qreal bottom = bounds.bottom();
    path.moveTo(left + reach, top);
    path.lineTo(right - reach, top);
    path.cubicTo(right - handle, top, right, top + handle, right, top + reach);
    path.lineTo(right, bottom - reach);
    path.cubicTo(right, bottom - handle, right - handle, bottom, right - reach, bottom);
    path.lineTo(left + reach, bottom);
    path.cubicTo(left + handle, bottom, left, bottom - handle, left, bottom - reach);
    path.lineTo(left, top + reach);
    path.cubicTo(left, top + handle, left + handle, top, left + reach, top);
    path.closeSubpath();
    return path;
}

} // namespace corvid
