#include "CorvidKit/Components/IconItem.h"

#include <QFileInfo>
#include <QPainter>
#include <QPixmap>

namespace corvid {

namespace {

/// Null where there is nothing to draw. A file that is not there makes an icon as well, with nothing in it.
QIcon drawable(const QIcon& icon) {
    constexpr QSize any(32, 32);
    return icon.pixmap(any).isNull() ? QIcon() : icon;
}

/// Whether a file can be one, so that it is opened. Qt complains of a drawing that is missing, waits at a pipe for as
/// long as nobody writes into it, and reads a drawing whole.
bool isPicture(const QFileInfo& file) {
    constexpr qint64 largest = qint64{16} << 20U;
    return file.isFile() && file.size() <= largest;
}

QIcon iconOf(const QString& source) {
    if (source.isEmpty()) {
        return {};
    }
    const bool isFile = source.startsWith(u'/') || source.startsWith(u':');
    const QIcon icon =
        isFile && !isPicture(QFileInfo(source)) ? QIcon() : drawable(isFile ? QIcon(source) : QIcon::fromTheme(source));
    return icon.isNull() ? drawable(QIcon::fromTheme(QStringLiteral("application-x-executable"))) : icon;
}

} // namespace

IconItem::IconItem(QQuickItem* parent)
    : PaintedItem(parent) {
    connect(this, &IconItem::changed, this, [this] { update(); });
}

void IconItem::setSource(const QString& newSource) {
    if (newSource != name) {
        name = newSource;
        icon = iconOf(name);
        Q_EMIT changed();
    }
}

void IconItem::paint(QPainter* painter) {
    if (isEmpty()) {
        return;
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
