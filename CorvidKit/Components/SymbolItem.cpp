#include "CorvidKit/Components/SymbolItem.h"

#include <QFile>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QSvgRenderer>

namespace corvid {

SymbolItem::SymbolItem(QQuickItem* parent)
    : PaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &SymbolItem::changed, this, [this] { update(); });
}

void SymbolItem::paint(QPainter* painter) {
    const QString file = QStringLiteral(":/symbols/%1.svg").arg(name);
    if (name.isEmpty() || !QFile::exists(file)) {
        return;
    }
    QSvgRenderer drawing(file);
    const QRectF bounds = boundingRect();
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
