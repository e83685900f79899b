#include "CorvidKit/Components/SoftShadow.h"

#include "CorvidKit/Components/RoundedPath.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace corvid {

SoftShadow::SoftShadow(QQuickItem* parent)
    : PaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &SoftShadow::changed, this, [this] { update(); });
}

void SoftShadow::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    // Outlines of growing size on top of each other: each adds what is missing to the darkness at its distance, which
    // falls off with the square.
    const int steps = std::max(2, static_cast<int>(std::ceil(blur * 2)));
    const QRectF bounds = boundingRect();
    qreal covered = 0;
    for (int step = 0; step < steps; ++step) {
        const qreal nearness = (step + 1) / static_cast<qreal>(steps);
        const qreal wanted = color.alphaF() * nearness * nearness;
        const qreal inset = blur * nearness;
        QColor layer = color;
        layer.setAlphaF(static_cast<float>((wanted - covered) / (1 - covered)));
        covered = wanted;
        painter->setBrush(layer);
        painter->drawPath(roundedPath(bounds.adjusted(inset, inset, -inset, -inset), radius + blur - inset, false));
    }
}

} // namespace corvid
