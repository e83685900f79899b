#pragma once

#include "Platform/X11/Connection.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace platform::x11 {

/// How to work with the present window manager, as far as it matters. Each of these has a replacement that needs no
/// announcement, so a window manager without any of them can be used as well.
struct Capabilities {
    /// Whether what it has announced is known to be its own. Otherwise the root's properties may be a dead window
    /// manager's, and none of them counts.
    bool announcesItself = false;
    /// Whether the root names the active window (`_NET_ACTIVE_WINDOW`). Otherwise it is the one with the keyboard.
    bool namesActiveWindow = false;
    /// Whether the root lists the managed windows (`_NET_CLIENT_LIST`). Otherwise they are those with `WM_STATE`.
    bool listsWindows = false;
    /// Whether it moves windows on a pager's message (`_NET_MOVERESIZE_WINDOW`). Otherwise on a configure request.
    bool movesOnMessage = false;
    /// Whether windows tell their decoration (`_NET_FRAME_EXTENTS`). Otherwise it is the window around the client.
    bool announcesFrameExtents = false;
    /// Whether it supports shadows that clients draw themselves (`_GTK_FRAME_EXTENTS`).
    bool supportsClientShadows = false;

    friend bool operator==(const Capabilities&, const Capabilities&) = default;
};

/// The capabilities of a window manager that announces these atoms (EWMH, `_NET_SUPPORTED`).
[[nodiscard]] Capabilities announcedCapabilities(const AtomTable& atoms, const std::vector<std::uint32_t>& supported);

/// The present window manager.
struct WindowManager {
    /// Whether there is one that moves windows on request: it has announced that, it receives the requests of top-level
    /// windows (which only one client can), or it owns the selection of window managers (ICCCM 4.3).
    bool isPresent = false;
    /// The window that ends with it: its check window (EWMH, `_NET_SUPPORTING_WM_CHECK`), else the owner of the
    /// selection. `XCB_WINDOW_NONE` if no window proves it.
    xcb_window_t window = XCB_WINDOW_NONE;
    /// `_NET_WM_NAME` of its check window; empty if it is not set.
    std::string name;
    Capabilities capabilities;

    friend bool operator==(const WindowManager&, const WindowManager&) = default;
};

/// Asks who is in charge now. A property that a dead window manager left behind does not count: the window that it
/// names must exist and name itself. `found` is called with each window that may prove a window manager, before that
/// window is asked.
[[nodiscard]] WindowManager readWindowManager(Connection& connection,
                                              const std::function<void(xcb_window_t)>& found = {});

/// The selection that window managers of this screen own (ICCCM 2.8); `XCB_ATOM_NONE` if the server did not reply.
[[nodiscard]] xcb_atom_t windowManagerSelection(Connection& connection);

} // namespace platform::x11
