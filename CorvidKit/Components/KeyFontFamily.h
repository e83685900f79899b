#pragma once

#include <QString>

namespace corvid {

/// The family of the font in Resources/fonts.
inline const QString keyFontFamily = QStringLiteral("Tessel UI");

} // namespace corvid
