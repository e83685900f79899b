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
    /// Its kind is what is known of it for certain: `auxiliary` where the window says so, else `standard`.
    compositor::Window window;
    std::string title;
    /// The name of its workspace, where that is not shown; empty where it is, or has no name to go by.
    std::string hiddenWorkspace;

    friend bool operator==(const TreeWindow&, const TreeWindow&) = default;
};

/// The layout: all outputs, workspaces and windows (sway-ipc(7), GET_TREE).
struct Tree {
    /// Oldest first.
    std::vector<TreeWindow> windows;
    std::optional<compositor::WindowIdentifier> focused;
    /// The one at the origin of the layout first: it stays the same whatever has the focus. Its work area is that of
    /// the workspace it shows, without bars, docks and the gaps that are kept at the edges.
    std::vector<compositor::Output> outputs;

    friend bool operator==(const Tree&, const Tree&) = default;
};

/// Reads an answer to GET_TREE. What does not make sense is left out; nothing where there is no layout at all.
[[nodiscard]] std::optional<Tree> readTree(const i3ipc::Json& answer);

} // namespace platform::sway
