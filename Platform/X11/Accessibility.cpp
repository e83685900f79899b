#include "Platform/X11/Accessibility.h"

#include "Platform/Linux/Windows/ScreenSpace.h"

#include <algorithm>
#include <utility>

namespace platform::x11 {

Accessibility::Accessibility(Connection& connection, Turn& turn, Placement& placement,
                             const ManagedWindows& managedWindows,
                             std::function<std::optional<AccessObstacle>()> findObstacle)
    : connection(connection)
    , turn(turn)
    , placement(placement)
    , managedWindows(managedWindows)
    , findObstacle(std::move(findObstacle)) {
}

std::expected<xcb_window_t, AXError> Accessibility::focusedWindow(ProcessIdentifier process) {
    const RootFacts* root = turn.root();
    if (root == nullptr || root->activeWindow == XCB_WINDOW_NONE) {
        return std::unexpected(AXError::noValue);
    }
    const auto active = facts(root->activeWindow);
    if (!active) {
        return std::unexpected(active.error());
    }
    if ((*active)->process != process || (*active)->kind == WindowKind::ignored) {
        return std::unexpected(AXError::noValue);
    }
    return root->activeWindow;
}

std::expected<std::vector<xcb_window_t>, AXError> Accessibility::windows(ProcessIdentifier process) {
    const RootFacts* root = turn.root();
    if (root == nullptr) {
        return std::unexpected(AXError::cannotComplete);
    }
    // No request is needed for windows that are known to belong to another process.
    std::vector<xcb_window_t> clients = root->clients;
    std::erase_if(clients, [&](xcb_window_t client) {
        const ManagedWindow* known = managedWindows.find(client);
        return known != nullptr && known->process != process;
    });
    turn.readWindows(clients);
    if (connection.isExhausted()) {
        return std::unexpected(AXError::cannotComplete);
    }
    std::erase_if(clients, [&](xcb_window_t client) {
        const WindowFacts* clientFacts = turn.window(client);
        return clientFacts == nullptr || clientFacts->process != process;
    });
    return clients;
}

std::expected<ProcessIdentifier, AXError> Accessibility::owner(const xcb_window_t& window) {
    const auto present = facts(window);
    if (!present) {
        return std::unexpected(present.error());
    }
    return (*present)->process;
}

std::expected<WindowKind, AXError> Accessibility::kind(const xcb_window_t& window) {
    const RootFacts* root = turn.root();
    const auto present = facts(window);
    if (!present || root == nullptr) {
        return std::unexpected(present ? AXError::cannotComplete : present.error());
    }
    const bool isManaged = std::ranges::find(root->clients, window) != root->clients.end();
    return isManaged ? (*present)->kind : WindowKind::ignored;
}

std::expected<corvid::CGRect, AXError> Accessibility::frame(const xcb_window_t& window) {
    placement.settle(window);
    const RootFacts* root = turn.root();
    const auto present = facts(window);
    const WindowFacts* framed = present ? turn.windowWithFrame(window) : nullptr;
    // A window that has not come to rest in time has no frame to report.
    if (framed == nullptr || root == nullptr || connection.isExhausted()) {
        return std::unexpected(present ? AXError::cannotComplete : present.error());
    }
    return linux::inAccessibilitySpace(visibleRectangle(framed->geometry), root->monitors.front());
}

AXError Accessibility::refusalToPlace(const xcb_window_t& window) {
    const auto present = facts(window);
    if (!present) {
        return present.error();
    }
    return (*present)->isFullscreen || turn.isLeftAlone(window) ? AXError::cannotComplete : AXError::success;
}

AXError Accessibility::place(const xcb_window_t& window, const PlacementRequest& part) {
    const RootFacts* root = turn.root();
    if (root == nullptr) {
        return AXError::cannotComplete;
    }
    PlacementRequest inRoot = part;
    if (part.position) {
        inRoot.position = linux::fromAccessibilitySpace(*part.position, root->monitors.front());
    }
    placement.request(window, inRoot);
    return AXError::success;
}

std::expected<const WindowFacts*, AXError> Accessibility::facts(xcb_window_t window) {
    if (const WindowFacts* present = turn.window(window)) {
        return present;
    }
    return std::unexpected(connection.isOutOfTime() ? AXError::cannotComplete : AXError::invalidUIElement);
}

} // namespace platform::x11
