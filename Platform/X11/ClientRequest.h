#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/X11/Connection.h"
#include "Platform/X11/FrameGeometry.h"

#include <array>
#include <cstdint>

namespace platform::x11 {

/// Asks the window manager to put the client there, in root coordinates, with one ConfigureWindow, which the server
/// redirects to it (ICCCM 4.1.5). The window manager decides whether the corner is that of its frame or of the client.
/// Does not wait, and the result must be read. Main thread only.
void requestClientRectangle(Connection& connection, xcb_window_t window, const corvid::CGRect& rectangle);

/// Sends a message about a client to the root window, as a pager does (EWMH, Root Window Messages). Does not wait.
void sendToRoot(Connection& connection, xcb_window_t window, Atom type, const std::array<std::uint32_t, 5>& data);

/// Asks the window manager by `_NET_MOVERESIZE_WINDOW`. Does not wait, and the result must be read.
void requestByMessage(Connection& connection, xcb_window_t window, const MoveResizeMessage& message);

} // namespace platform::x11
