#pragma once

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QObject>
#include <QVariantList>

namespace corvid {

/// The program that the components belong to, and its appearance.
class AppBrand : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// The program's name for people.
    Q_PROPERTY(QString name MEMBER name NOTIFY changed)
    /// The symbol on its icon.
    Q_PROPERTY(QString symbol MEMBER symbol NOTIFY changed)
    /// The icon's colours, from top to bottom.
    Q_PROPERTY(QVariantList gradient MEMBER gradient NOTIFY changed)
    /// The program's single colour.
    Q_PROPERTY(QColor accent MEMBER accent NOTIFY changed)
    /// The symbol's size in points, as a part of the icon's side.
    Q_PROPERTY(qreal symbolScale MEMBER symbolScale NOTIFY changed)

public:
    using QObject::QObject;

Q_SIGNALS:
    void changed();

private:
    QString name = QStringLiteral("App");
    QString symbol = QStringLiteral("app.dashed");
    QVariantList gradient{QColor(0x9a, 0x9a, 0xa0), QColor(0x6c, 0x6c, 0x72)};
    QColor accent{0x00, 0x7a, 0xff};
    qreal symbolScale = 0.5;
};

} // namespace corvid
