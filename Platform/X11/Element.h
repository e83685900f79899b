#pragma once

#include "Platform/Linux/Windows/Elements.h"

#include <xcb/xcb.h>

namespace platform::x11 {

/// A top-level window of a client.
using WindowElement = linux::WindowElement<xcb_window_t>;

} // namespace platform::x11
