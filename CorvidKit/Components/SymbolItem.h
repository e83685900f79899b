#pragma once

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QQuickPaintedItem>
#include <QString>

namespace corvid {

/// A symbol of the program's own family, in the colour that the view gives it. A name that is not known draws nothing.
class SymbolItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name MEMBER name NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER color NOTIFY changed)
    /// The colour at the bottom of a gradient that begins with `color`; transparent for none.
    Q_PROPERTY(QColor endColor MEMBER endColor NOTIFY changed)
    /// The side of the drawing's square in points, to about a pixel: it lies in the middle of the item, with as many
    /// pixels on either side. 0 for all of the item.
    Q_PROPERTY(qreal side MEMBER side NOTIFY changed)

public:
    explicit SymbolItem(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    QString name;
    QColor color = Qt::black;
    QColor endColor = Qt::transparent;
    qreal side = 0;
};

} // namespace corvid
