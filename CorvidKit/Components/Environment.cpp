#include "CorvidKit/Components/Environment.h"

#include "CorvidKit/Components/KeyFontFamily.h"
#include "CorvidKit/Snapshot.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainterPath>
#include <QScreen>

namespace corvid {

namespace {

QString& pictureFamily() {
    static QString family;
    return family;
}

/// Sizes of fonts are whole numbers of pixels or any number of typographic points; ours are any number of pixels.
QFont sized(QFont font, qreal size, int weight) {
    constexpr qreal typographicPointsPerInch = 72;
    constexpr qreal usualDotsPerInch = 96;
    const QScreen* screen = QGuiApplication::primaryScreen();
    const qreal dotsPerInch = screen == nullptr ? usualDotsPerInch : screen->logicalDotsPerInchY();
    font.setPointSizeF(size * typographicPointsPerInch / dotsPerInch);
    font.setWeight(static_cast<QFont::Weight>(weight));
    return font;
}

} // namespace

Environment::Environment(QQmlEngine& engine)
    : QObject(&engine) {
    QQmlEngine::setObjectOwnership(this, QQmlEngine::CppOwnership);
}

Environment& Environment::of(QQmlEngine& engine) {
    auto* present = engine.findChild<Environment*>(QString(), Qt::FindDirectChildrenOnly);
    return present == nullptr ? *new Environment(engine) : *present;
}

Environment* Environment::create(QQmlEngine* engine, QJSEngine* /*scripts*/) {
    return &of(*engine);
}

void Environment::setDark(bool value) {
    if (dark != value) {
        dark = value;
        Q_EMIT changed();
    }
}

void Environment::setReducesMotion(bool value) {
    if (lessMotion != value) {
        lessMotion = value;
        Q_EMIT changed();
    }
}

bool Environment::isSnapshot() const {
    return Snapshot::isActive;
}

bool Environment::isMirrored() const {
    return QGuiApplication::isRightToLeft();
}

void Environment::setUsingKeyboard(bool value) {
    if (usingKeyboard != value) {
        usingKeyboard = value;
        Q_EMIT changed();
    }
}

void Environment::setAppBrand(AppBrand* value) {
    AppBrand* wanted = value == nullptr ? &plainBrand : value;
    if (brand != wanted) {
        brand = wanted;
        Q_EMIT changed();
    }
}

QFont Environment::font(qreal size, int weight) const {
    QFont font = QGuiApplication::font();
    if (!pictureFamily().isEmpty()) {
        font.setFamily(pictureFamily());
        font.setHintingPreference(QFont::PreferNoHinting);
    }
    return sized(font, size, weight);
}

QFont Environment::keyFont(qreal size, int weight) const {
    QFont font = this->font(size, weight);
    font.setFamilies({keyFontFamily, font.family()});
    return font;
}

qreal Environment::capHeight(const QFont& font) const {
    return QFontMetricsF(font).capHeight();
}

QRectF Environment::inkOf(const QString& text, const QFont& font) const {
    // The metrics of fonts give whole pixels.
    QPainterPath outlines;
    outlines.addText(0, 0, font, text);
    return outlines.boundingRect();
}

void Environment::setFontFamily(const QString& family) {
    pictureFamily() = family;
}

} // namespace corvid
