#include "CorvidKit/Components/RoundedRectangle.h"

#include "CorvidKit/Components/RoundedPath.h"

#include <QLinearGradient>
#include <QPainter>

namespace corvid {

RoundedRectangle::RoundedRectangle(QQuickItem* parent)
    : PaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &RoundedRectangle::changed, this, [this] { update(); });
}

void RoundedRectangle::paint(QPainter* painter) {
    const QRectF bounds = boundingRect();
    painter->setRenderHint(QPainter::Antialiasing);
    QBrush brush(color);
    if (endColor.alpha() > 0) {
        QLinearGradient gradient(bounds.topLeft(), bounds.bottomLeft());
        gradient.setColorAt(0, color);
        gradient.setColorAt(1, endColor);
        brush = gradient;
    }
    painter->fillPath(roundedPath(bounds, radius, continuous), brush);
    if (borderWidth > 0 && borderColor.alpha() > 0) {
        const qreal half = borderWidth / 2;
        painter->setPen(QPen(borderColor, borderWidth));
        painter->setBrush(Qt::NoBrush);
        painter->drawPath(roundedPath(bounds.adjusted(half, half, -half, -half), radius - half, continuous));
    }
}

} // namespace corvid
