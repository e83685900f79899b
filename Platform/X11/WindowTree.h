#pragma once

#include "Platform/X11/Connection.h"
#include "Platform/X11/FrameGeometry.h"

#include <optional>
#include <span>
#include <vector>

/// The tree of windows, for what a window manager does not tell: which windows it manages, which of them has the
/// keyboard, and what it has put around one. Main thread only; every wait ends with the turn's time.
namespace platform::x11 {

/// The managed windows: those that have `WM_STATE` and are not withdrawn (ICCCM 4.1.3.1). In the order of `former` as
/// far as they are in it, the others after those. One round trip for each level of the tree down to the clients; empty
/// if the server did not reply.
[[nodiscard]] std::optional<std::vector<xcb_window_t>> readWindowsWithState(Connection& connection,
                                                                            std::span<const xcb_window_t> former);

/// The shown children of the root that no window manager manages (override-redirect). Empty if the server did not
/// reply.
[[nodiscard]] std::vector<xcb_window_t> readShownUnmanagedWindows(Connection& connection);

/// Whether the window has `WM_STATE` and is not withdrawn; false if the server did not reply.
[[nodiscard]] bool hasState(Connection& connection, xcb_window_t window);

/// The one of `clients` that has the keyboard: the input focus is on it, within it, or on the frame around it. While
/// the focus follows the pointer, the one below the pointer. `XCB_WINDOW_NONE` without one.
[[nodiscard]] xcb_window_t readFocusedClient(Connection& connection, std::span<const xcb_window_t> clients);

/// The child of the root that the window manager has put the client into; `XCB_WINDOW_NONE` if the client is itself a
/// child of the root, is gone, or the server did not reply.
[[nodiscard]] xcb_window_t readFrame(Connection& connection, xcb_window_t client);

/// The difference between a client and the child of the root that contains it, with that window's border: the
/// decoration that is seen. Empty if the window is gone or the server did not reply.
[[nodiscard]] std::optional<Extents> readDecoration(Connection& connection, xcb_window_t client);

} // namespace platform::x11
