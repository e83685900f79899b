#pragma once

#include "Platform/X11/TilingManager.h"

#include <xcb/xcb.h>

#include <optional>
#include <string>
#include <string_view>

/// The scripts that awesome executes, in Lua (awesome's API documentation, `client` and `awful.layout`), and their
/// replies.
namespace platform::awesome {

/// Prints all windows and the work areas, in JSON.
[[nodiscard]] std::string layoutScript();

/// Parses the reply to the script above. Implausible entries are left out; empty for any other text.
///
/// X11 has the frames: awesome sets `_NET_FRAME_EXTENTS`. It does not announce the room that its own bars take.
[[nodiscard]] std::optional<x11::Layout> readLayout(std::string_view reply);

/// Releases the window if it is maximized, takes it out of the layout if it is in one, and gives it the visible
/// rectangle `frame`, in root coordinates: in one go, so that no step is seen. A window of a tag without a layout stays
/// in it.
[[nodiscard]] std::string placeScript(xcb_window_t window, const corvid::CGRect& frame);

/// Whether the reply to the script above says that the window is placed.
[[nodiscard]] bool isPlaced(std::string_view reply);

} // namespace platform::awesome
