#include "CorvidKit/Toolkit/ScreenPixels.h"

#include <QGuiApplication>
#include <QScreen>

namespace corvid::toolkit {

namespace {

QRectF pixelsOf(const QScreen& screen) {
    return {QPointF(screen.geometry().topLeft()), QSizeF(screen.geometry().size()) * screen.devicePixelRatio()};
}

} // namespace

QPoint fromPixels(CGPoint pixels) {
    const QPointF point(pixels.x, pixels.y);
    const QScreen* found = QGuiApplication::primaryScreen();
    for (const QScreen* screen : QGuiApplication::screens()) {
        if (pixelsOf(*screen).contains(point)) {
            found = screen;
        }
    }
    if (found == nullptr) {
        return point.toPoint();
    }
    const QPointF origin = found->geometry().topLeft();
    return (origin + (point - origin) / found->devicePixelRatio()).toPoint();
}

} // namespace corvid::toolkit
