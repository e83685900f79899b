#pragma once

#include "CorvidKitCore/Geometry.h"

#include <QPoint>

namespace corvid::toolkit {

/// The place of a window in Qt's coordinates, from the desktop's own pixels (accessibility space). Qt scales each
/// screen about its own top-left corner.
[[nodiscard]] QPoint fromPixels(CGPoint pixels);

} // namespace corvid::toolkit
