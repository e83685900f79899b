#pragma once

#include "Platform/Sway/Nodes.h"
#include "Platform/X11/TilingManager.h"

#include <optional>

namespace platform::i3 {

/// Parses a reply to GET_TREE (i3's "IPC interface", "Tree reply"). Implausible entries are left out; empty without a
/// layout.
///
/// Unlike in sway, the rectangle of a window includes its title bar, except for those of tabs and stacks, which are not
/// a single window's. A floating window is in a container of its own: that container gets the requested rectangle at
/// once, and the window gets it when it is shown. Windows in the scratchpad are on no workspace that an output could
/// show, and are left out.
[[nodiscard]] std::optional<x11::Layout> readLayout(const sway::Json& answer);

} // namespace platform::i3
