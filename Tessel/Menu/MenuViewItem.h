#pragma once

#include "Platform/Seam/Toolkit/View.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <memory>

namespace tessel {

/// The item that shows a view of this program; null for a view of another kind. The view outlives the item.
[[nodiscard]] std::unique_ptr<QQuickItem> makeItem(const platform::View& view, QQmlEngine& engine);

} // namespace tessel
