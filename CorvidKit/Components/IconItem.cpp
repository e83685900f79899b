#include "CorvidKit/Components/IconItem.h"

#include <QIcon>
#include <QPainter>
#include <QPixmap>

namespace corvid {

namespace {

QIcon iconFrom(const QString& source) {
    const bool isFile = source.startsWith(u'/') || source.startsWith(u':');
    const QIcon icon = isFile ? QIcon(source) : QIcon::fromTheme(source);
    return icon.isNull() ? QIcon::fromTheme(QStringLiteral("application-x-executable")) : icon;
}

} // namespace

IconItem::IconItem(QQuickItem* parent)
    : QQuickPaintedItem(parent) {
    connect(this, &IconItem::changed, this, [this] { update(); });
}

bool IconItem::isMissing() const {
    // A file that is not there, or holds no picture, shows only when it is to be drawn.
    constexpr QSize anySize(16, 16);
    return source.isEmpty() || iconFrom(source).pixmap(anySize).isNull();
}

void IconItem::paint(QPainter* painter) {
    if (source.isEmpty()) {
        return;
    }
    const QIcon icon = iconFrom(source);
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
