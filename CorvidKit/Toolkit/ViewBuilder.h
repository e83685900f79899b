#pragma once

#include "Platform/View.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <functional>
#include <memory>

namespace corvid::toolkit {

class PopoverWindow;

/// Makes the item that shows a view; null for a view that is not known. The view outlives the item. `popover` is the
/// window that will show the item, and owns the builder; null in a picture.
using ViewBuilder =
    std::function<std::unique_ptr<QQuickItem>(const platform::View& view, QQmlEngine& engine, PopoverWindow* popover)>;

} // namespace corvid::toolkit
