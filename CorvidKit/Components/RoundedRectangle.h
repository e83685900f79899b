#pragma once

#include "CorvidKit/Components/PaintedItem.h"

#include <QtQml/qqmlregistration.h>

#include <QColor>

namespace corvid {

/// A filled rounded rectangle with clean edges, also with a gradient and without a graphics processor.
class RoundedRectangle : public PaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal radius MEMBER radius NOTIFY changed)
    /// Whether the sides bend into the corners gradually instead of turning into a quarter of a circle.
    Q_PROPERTY(bool isContinuous MEMBER continuous NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER color NOTIFY changed)
    /// The colour at the bottom of a gradient that begins with `color`; transparent for none.
    Q_PROPERTY(QColor endColor MEMBER endColor NOTIFY changed)
    Q_PROPERTY(QColor borderColor MEMBER borderColor NOTIFY changed)
    /// In points, drawn within the bounds; 0 for no border.
    Q_PROPERTY(qreal borderWidth MEMBER borderWidth NOTIFY changed)

public:
    explicit RoundedRectangle(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    qreal radius = 0;
    bool continuous = true;
    QColor color = Qt::transparent;
    QColor endColor = Qt::transparent;
    QColor borderColor = Qt::transparent;
    qreal borderWidth = 0;
};

} // namespace corvid
