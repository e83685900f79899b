#pragma once

#include "Platform/Seam/Toolkit/View.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <functional>
#include <memory>

namespace corvid::toolkit {

/// Makes the item that shows a view; null for a view that is not known. The view outlives the item.
using ViewBuilder = std::function<std::unique_ptr<QQuickItem>(const platform::View& view, QQmlEngine& engine)>;

} // namespace corvid::toolkit
