#pragma once

#include "Platform/X11/Connection.h"

#include <functional>
#include <string>

namespace platform::x11 {

/// The window manager in charge, as it identifies itself (EWMH, Root Window Properties, `_NET_SUPPORTING_WM_CHECK`).
struct WindowManager {
    /// The window that proves it is alive; `XCB_WINDOW_NONE` while none is in charge.
    xcb_window_t checkWindow = XCB_WINDOW_NONE;
    /// `_NET_WM_NAME` of that window; empty where it gives none.
    std::string name;
    /// Whether it can do what placing windows takes: name the active window and the managed ones, and move and resize
    /// on request.
    bool supportsPlacement = false;
    /// Whether it knows of shadows that clients draw themselves (`_GTK_FRAME_EXTENTS`).
    bool supportsClientShadows = false;

    friend bool operator==(const WindowManager&, const WindowManager&) = default;
};

/// Asks who is in charge now. A property that a dead window manager left behind does not count: the window that it
/// names must exist and name itself. `announced` is called with the window that the property names, whether or not it
/// counts, before that window is asked.
[[nodiscard]] WindowManager readWindowManager(Connection& connection,
                                              const std::function<void(xcb_window_t)>& announced = {});

} // namespace platform::x11
