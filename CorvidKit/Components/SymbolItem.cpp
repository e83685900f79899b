#include "CorvidKit/Components/SymbolItem.h"

#include <QFile>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QSvgRenderer>
#include <cmath>

namespace corvid {

namespace {

/// A length of about `wanted` that leaves as many whole pixels before as behind it in `room`; all in points.
qreal centredLength(qreal wanted, qreal room, qreal pixelsPerPoint) {
    const qreal pixels = std::round(room * pixelsPerPoint);
    return (pixels + 2 * std::round((wanted * pixelsPerPoint - pixels) / 2)) / pixelsPerPoint;
}

} // namespace

SymbolItem::SymbolItem(QQuickItem* parent)
    : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &SymbolItem::changed, this, [this] { update(); });
}

void SymbolItem::paint(QPainter* painter) {
    const QString file = QStringLiteral(":/symbols/%1.svg").arg(name);
    if (name.isEmpty() || !QFile::exists(file)) {
        return;
    }
    QSvgRenderer drawing(file);
    QRectF bounds = boundingRect();
    if (side > 0) {
        const QTransform& scale = painter->deviceTransform();
        const QPointF middle = bounds.center();
        bounds.setSize(
            {centredLength(side, bounds.width(), scale.m11()), centredLength(side, bounds.height(), scale.m22())});
        bounds.moveCenter(middle);
    }
    painter->setRenderHint(QPainter::Antialiasing);
    // The item's own picture is transparent, so what was drawn is all that the colour falls on.
    drawing.render(painter, bounds);
    painter->setCompositionMode(QPainter::CompositionMode_SourceIn);
    if (endColor.alpha() > 0) {
        QLinearGradient gradient(bounds.topLeft(), bounds.bottomLeft());
        gradient.setColorAt(0, color);
        gradient.setColorAt(1, endColor);
        painter->fillRect(bounds, gradient);
    } else {
        painter->fillRect(bounds, color);
    }
}

} // namespace corvid
