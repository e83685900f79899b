#pragma once

#include "CorvidKit/Components/PaintedItem.h"

#include <QtQml/qqmlregistration.h>

#include <QIcon>
#include <QString>

namespace corvid {

/// An application's icon, in the item's size.
class IconItem : public PaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// A file's absolute path or a resource's, or a name in the desktop's icon theme.
    Q_PROPERTY(QString source READ source WRITE setSource NOTIFY changed)
    /// Whether there is nothing to draw: no source, or one that is not there, and nothing in its place.
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY changed)

public:
    explicit IconItem(QQuickItem* parent = nullptr);

    [[nodiscard]] const QString& source() const { return name; }

    void setSource(const QString& newSource);

    [[nodiscard]] bool isEmpty() const { return icon.isNull(); }

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    QString name;
    QIcon icon;
};

} // namespace corvid
