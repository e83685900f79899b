#pragma once

#include "Platform/Seam/Toolkit/OpenPanel.h"

#include <QQmlEngine>
#include <functional>
#include <memory>

namespace corvid::toolkit {

/// The callbacks of an open panel.
struct OpenPanelHooks {
    /// It is about to be shown.
    std::function<void()> opening;
    /// It is gone, and its completion was called: whether anything was chosen.
    std::function<void(bool hasChosen)> closed;
};

/// Makes the program's open panel. The engine outlives it.
using OpenPanelFactory = std::function<std::unique_ptr<platform::OpenPanel>(QQmlEngine& engine, OpenPanelHooks hooks)>;

} // namespace corvid::toolkit
