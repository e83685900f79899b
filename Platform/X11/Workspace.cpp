#include "Platform/X11/Workspace.h"

namespace platform::x11 {

std::optional<ProcessIdentifier> Workspace::frontmostApplication() {
    const RootFacts* root = turn.root();
    if (root == nullptr || root->activeWindow == XCB_WINDOW_NONE) {
        return std::nullopt;
    }
    const WindowFacts* active = turn.window(root->activeWindow);
    return active == nullptr ? std::nullopt : std::optional(active->process);
}

} // namespace platform::x11
