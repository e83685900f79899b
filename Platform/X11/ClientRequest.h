#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/X11/Connection.h"

namespace platform::x11 {

/// Asks the window manager to put the client there, in root coordinates, with one ConfigureWindow, which the server
/// redirects to it (ICCCM 4.1.5). The window manager decides whether the corner is that of its frame or of the client.
/// Does not wait, and the result must be read. Main thread only.
void requestClientRectangle(Connection& connection, xcb_window_t window, const corvid::CGRect& rectangle);

} // namespace platform::x11
