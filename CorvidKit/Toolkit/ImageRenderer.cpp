#include "CorvidKit/Toolkit/ImageRenderer.h"

#include "CorvidKit/Components/Environment.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QImage>
#include <QLocale>
#include <QQuickRenderControl>
#include <QQuickRenderTarget>
#include <QQuickWindow>
#include <cmath>

namespace corvid::toolkit {

namespace {

/// Lets what is laid out in turns of the event loop, such as the rows of a list, take its place.
void settle(QQuickRenderControl& control) {
    constexpr int enough = 3;
    for (int turn = 0; turn < enough; ++turn) {
        QCoreApplication::sendPostedEvents();
        control.polishItems();
    }
}

} // namespace

std::optional<std::vector<std::byte>> ImageRenderer::png(const platform::PictureOfView& picture) {
    QLocale::setDefault(QLocale(QString::fromStdString(picture.locale)));
    QQmlEngine engine;
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    Environment::of(engine).setDark(picture.colorScheme == platform::ColorScheme::dark);
    QQuickRenderControl control;
    QQuickWindow window(&control);
    const auto white = static_cast<float>(picture.backgroundWhite);
    window.setColor(QColor::fromRgbF(white, white, white));
    const std::unique_ptr<QQuickItem> item = build(picture.view, engine, nullptr);
    if (!item) {
        return std::nullopt;
    }
    item->setParentItem(window.contentItem());
    item->setSize({item->implicitWidth(), item->implicitHeight()});
    settle(control);
    const QSizeF size(item->implicitWidth(), item->implicitHeight());
    if (size.width() < 1 || size.height() < 1) {
        return std::nullopt;
    }
    item->setSize(size);
    window.setGeometry(0, 0, static_cast<int>(std::ceil(size.width())), static_cast<int>(std::ceil(size.height())));
    window.contentItem()->setSize(size);
    settle(control);

    QImage image((size * picture.scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(picture.scale);
    image.fill(Qt::transparent);
    QQuickRenderTarget target = QQuickRenderTarget::fromPaintDevice(&image);
    target.setDevicePixelRatio(picture.scale);
    window.setRenderTarget(target);
    control.beginFrame();
    control.sync();
    control.render();
    control.endFrame();

    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG")) {
        return std::nullopt;
    }
    const auto* begin = reinterpret_cast<const std::byte*>(bytes.constData());
    return std::vector<std::byte>(begin, begin + bytes.size());
}

} // namespace corvid::toolkit
