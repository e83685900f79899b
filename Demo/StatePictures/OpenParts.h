#pragma once

#include "Demo/StatePictures/States.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <memory>

namespace tessel {

/// Opens that part of a view once it lies in a window that has its size. Nothing happens in a view without the part.
void openLater(QQuickItem& view, OpenPart part);

/// The window in which applications are chosen, at its usual size.
[[nodiscard]] std::unique_ptr<QQuickItem> makeChooser(QQmlEngine& engine, OpenPart part);

} // namespace tessel
