#pragma once

#include <QtQml/qqmlregistration.h>

#include <QQuickPaintedItem>
#include <QString>

namespace corvid {

/// An application's icon, in the item's size.
class IconItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// A file's absolute path or a resource's, or a name in the desktop's icon theme.
    Q_PROPERTY(QString source MEMBER source NOTIFY changed)
    Q_PROPERTY(bool isMissing READ isMissing NOTIFY changed)

public:
    explicit IconItem(QQuickItem* parent = nullptr);

    /// Whether there is nothing to draw: no source, or one that neither the disk nor the theme has.
    [[nodiscard]] bool isMissing() const;

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    QString source;
};

} // namespace corvid
