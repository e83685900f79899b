#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/X11/TilingManager.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The commands that `Manager` gives, and what herbstluftwm's attributes say in reply (herbstluftwm(1), "OBJECTS"). The
/// commands print lines of words, and the words before a name, which may have spaces, come first.
namespace platform::herbstluftwm {

/// Prints the windows and the monitors.
[[nodiscard]] std::vector<std::string> layoutCommand();

/// Parses its output. Unknown lines are left out. X11 has the frames of the windows.
[[nodiscard]] x11::Layout readLayout(std::string_view output);

/// Takes the window out of the layout if it is in it, and prints its rectangles and the monitors.
[[nodiscard]] std::vector<std::string> releaseCommand(xcb_window_t window);

/// Gives the window a place. `frame` is the wanted visible rectangle in root coordinates, `released` the output of the
/// command before. Empty if that makes no sense.
///
/// herbstluftwm places the content of a window, relative to the free area of the monitor that shows its tag. A plain
/// request would be relative to the root, but windows for which `sizehints_floating` is off do not get any.
[[nodiscard]] std::optional<std::vector<std::string>> placeCommand(xcb_window_t window, std::string_view released,
                                                                   const corvid::CGRect& frame);

} // namespace platform::herbstluftwm
