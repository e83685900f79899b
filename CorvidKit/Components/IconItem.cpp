#include "CorvidKit/Components/IconItem.h"

#include <QIcon>
#include <QPainter>
#include <QPixmap>

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
    // The painter paints into a plain bitmap and scales; what it is asked for in points would come in as few pixels.
    const qreal scale = painter->deviceTransform().m11();
    const QRectF bounds = boundingRect();
    const QPixmap picture = icon.pixmap(bounds.size().toSize(), scale);
    QRectF place(QPointF(), QSizeF(picture.size()).scaled(bounds.size(), Qt::KeepAspectRatio));
    place.moveCenter(bounds.center());
    painter->drawPixmap(place, picture, QRectF(picture.rect()));
}

} // namespace corvid
