#pragma once

#include "Platform/OpenPanel.h"
#include "Platform/View.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <memory>

namespace tessel {

/// The item that shows a view of this program; null for a view of another kind. The view outlives the item, and so does
/// the panel in which applications are chosen; a picture needs none.
[[nodiscard]] std::unique_ptr<QQuickItem> makeItem(const platform::View& view, QQmlEngine& engine,
                                                   platform::OpenPanel* panel = nullptr);

} // namespace tessel
