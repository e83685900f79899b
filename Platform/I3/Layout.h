#pragma once

#include "Platform/I3Ipc/Nodes.h"
#include "Platform/X11/TilingManager.h"

#include <optional>

namespace platform::i3 {

/// Parses a reply to GET_TREE (i3's "IPC interface", "Tree reply"). Implausible entries are left out; empty without a
/// layout.
///
/// Unlike in sway, the rectangle of a window has its title bar in it, but for those of tabs and stacks, which are not a
/// single window's. A floating window is in a container of its own: what is asked for becomes that one's rectangle at
/// once, and the window's when it is shown. Windows that are put away ("scratchpad") are on no workspace that an output
/// could show, and are left out.
[[nodiscard]] std::optional<x11::Layout> readLayout(const i3ipc::Json& answer);

} // namespace platform::i3
