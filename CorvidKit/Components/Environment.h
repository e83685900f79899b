#pragma once

#include "CorvidKit/Components/AppBrand.h"

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QFont>
#include <QObject>
#include <QPointer>
#include <QQmlEngine>
#include <QRectF>
#include <QString>
#include <QVariantMap>

namespace corvid {

/// The environment of every view of one engine: the user's wishes for its look, and the program's brand. `Style`
/// derives colours and sizes from it.
class Environment : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool isDark READ isDark WRITE setDark NOTIFY changed)
    Q_PROPERTY(bool reducesMotion READ reducesMotion WRITE setReducesMotion NOTIFY changed)
    Q_PROPERTY(bool isSnapshot READ isSnapshot CONSTANT)
    Q_PROPERTY(bool isMirrored READ isMirrored CONSTANT)
    Q_PROPERTY(bool isUsingKeyboard READ isUsingKeyboard WRITE setUsingKeyboard NOTIFY changed)
    Q_PROPERTY(corvid::AppBrand* appBrand READ appBrand WRITE setAppBrand NOTIFY changed)

public:
    /// The environment of that engine; made at the first call, and owned by the engine.
    [[nodiscard]] static Environment& of(QQmlEngine& engine);

    /// How the engine finds it.
    [[nodiscard]] static Environment* create(QQmlEngine* engine, QJSEngine* scripts);

    [[nodiscard]] bool isDark() const { return dark; }

    void setDark(bool value);

    [[nodiscard]] bool reducesMotion() const { return lessMotion; }

    void setReducesMotion(bool value);

    /// Whether pictures are being drawn: nothing is asked of the system, and nothing follows the pointer.
    [[nodiscard]] bool isSnapshot() const;

    /// Whether the language is written from right to left.
    [[nodiscard]] bool isMirrored() const;

    /// Whether the keyboard was used last, so that what has the focus is to be marked.
    [[nodiscard]] bool isUsingKeyboard() const { return usingKeyboard; }

    void setUsingKeyboard(bool value);

    /// A plain one until a root view sets its own.
    [[nodiscard]] AppBrand* appBrand() const { return brand; }

    /// Null for the plain one.
    void setAppBrand(AppBrand* value);

    /// The user's font in that size in points; `weight` as in QFont.
    Q_INVOKABLE [[nodiscard]] QFont font(qreal size, int weight = QFont::Normal) const;

    /// The font that has the signs of shortcuts: ours, since few others have them all.
    Q_INVOKABLE [[nodiscard]] QFont keyFont(qreal size, int weight = QFont::Normal) const;

    /// How far capitals of that font rise above the baseline, in points.
    Q_INVOKABLE [[nodiscard]] qreal capHeight(const QFont& font) const;

    /// The outlines' bounds of a text in one line, in points from where it begins on the baseline; above it is
    /// negative.
    Q_INVOKABLE [[nodiscard]] QRectF inkOf(const QString& text, const QFont& font) const;

    /// The family that pictures are drawn in, so that they look the same on every machine; empty for the user's.
    static void setFontFamily(const QString& family);

Q_SIGNALS:
    void changed();

private:
    explicit Environment(QQmlEngine& engine);

    bool dark = false;
    bool lessMotion = false;
    bool usingKeyboard = false;
    AppBrand plainBrand;
    QPointer<AppBrand> brand = &plainBrand;
};

} // namespace corvid
