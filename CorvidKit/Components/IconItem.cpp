#include "CorvidKit/Components/IconItem.h"

#include <QIcon>
#include <QPainter>

namespace corvid {

IconItem::IconItem(QQuickItem* parent)
    : QQuickPaintedItem(parent) {
    connect(this, &IconItem::changed, this, [this] { update(); });
}

void IconItem::paint(QPainter* painter) {
    if (source.isEmpty()) {
        return;
    }
    const bool isFile = source.startsWith(u'/') || source.startsWith(u':');
    QIcon icon = isFile ? QIcon(source) : QIcon::fromTheme(source);
    if (icon.isNull()) {
        icon = QIcon::fromTheme(QStringLiteral("application-x-executable"));
    }
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    icon.paint(painter, boundingRect().toAlignedRect());
}

} // namespace corvid
