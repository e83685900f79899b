#pragma once

#include "CorvidKit/Components/PaintedItem.h"

#include <QtQml/qqmlregistration.h>

#include <QColor>

namespace corvid {

/// The shadow of a rounded rectangle, painted, since effects need a graphics processor. The rectangle is this item
/// without its `blur` on every side; nothing is painted where the rectangle itself would hide it entirely.
class SoftShadow : public PaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// The rectangle's.
    Q_PROPERTY(qreal radius MEMBER radius NOTIFY changed)
    /// How far it reaches beyond the rectangle, in points.
    Q_PROPERTY(qreal blur MEMBER blur NOTIFY changed)
    /// Where it is darkest.
    Q_PROPERTY(QColor color MEMBER color NOTIFY changed)

public:
    explicit SoftShadow(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    qreal radius = 0;
    qreal blur = 0;
    QColor color = Qt::black;
};

} // namespace corvid
