#pragma once

#include "Platform/Compositor/Window.h"
#include "Platform/I3Ipc/Nodes.h"

#include <optional>
#include <string>
#include <vector>

namespace platform::sway {

/// A window in the layout.
struct TreeWindow {
    compositor::WindowIdentifier identifier;
    /// Its kind, as far as it is certain: `auxiliary` if the window declares it, else `standard`.
    compositor::Window window;
    std::string title;
    /// The name of its workspace, if that is hidden; empty if it is visible, or has no usable name.
    std::string hiddenWorkspace;

    friend bool operator==(const TreeWindow&, const TreeWindow&) = default;
};

/// The layout: all outputs, workspaces and windows (sway-ipc(7), GET_TREE).
struct Tree {
    /// Oldest first.
    std::vector<TreeWindow> windows;
    std::optional<compositor::WindowIdentifier> focused;
    /// The one at the origin of the layout first, because it does not change with the focus. Its work area is that of
    /// its visible workspace, without bars, docks and outer gaps.
    std::vector<compositor::Output> outputs;

    friend bool operator==(const Tree&, const Tree&) = default;
};

/// Reads an answer to GET_TREE. What does not make sense is left out; nothing where there is no layout at all.
[[nodiscard]] std::optional<Tree> readTree(const i3ipc::Json& answer);

} // namespace platform::sway
