#pragma once

#include <QPainterPath>
#include <QRectF>

namespace corvid {

/// The outline of a rounded rectangle; a radius that is too large for it is cut down to half its shorter side.
/// Continuous corners begin earlier along the sides and bend gradually.
[[nodiscard]] QPainterPath roundedPath(const QRectF& bounds, qreal radius, bool isContinuous);

} // namespace corvid
