#include "Platform/Compositor/Accessibility.h"

#include "Platform/Linux/Windows/ScreenSpace.h"

#include <utility>

namespace platform::compositor {

Accessibility::Accessibility(const WindowTable& table, Door& door, Turn& turn, Placement& placement)
    : known(table)
    , door(door)
    , turn(turn)
    , placement(placement) {
}

std::optional<AccessObstacle> Accessibility::obstacle() const {
    return known.isOpen() ? std::nullopt : std::optional(door.obstacle());
}

bool Accessibility::isProcessTrustedWithPrompt() {
    if (isProcessTrusted()) {
        return true;
    }
    door.prompt();
    return false;
}

std::expected<WindowIdentifier, AXError> Accessibility::focusedWindow(ProcessIdentifier process) {
    const WindowTable* table = turn.table();
    if (table == nullptr) {
        return std::unexpected(AXError::apiDisabled);
    }
    const std::optional<WindowIdentifier>& focused = table->focused();
    const Window* window = focused ? table->find(*focused) : nullptr;
    if (window == nullptr || window->clues.process != process || window->kind == WindowKind::furniture) {
        return std::unexpected(AXError::noValue);
    }
    return *focused;
}

std::expected<std::vector<WindowIdentifier>, AXError> Accessibility::windows(ProcessIdentifier process) {
    const WindowTable* table = turn.table();
    if (table == nullptr) {
        return std::unexpected(AXError::apiDisabled);
    }
    return table->windowsOf(process);
}

std::expected<ProcessIdentifier, AXError> Accessibility::owner(const WindowIdentifier& window) {
    const auto present = find(window);
    if (!present) {
        return std::unexpected(present.error());
    }
    return (*present)->clues.process;
}

std::expected<WindowKind, AXError> Accessibility::kind(const WindowIdentifier& window) {
    const auto present = find(window);
    if (!present) {
        return std::unexpected(present.error());
    }
    return (*present)->kind;
}

std::expected<corvid::CGRect, AXError> Accessibility::frame(const WindowIdentifier& window) {
    const AXError outcome = placement.settle(window);
    const auto present = find(window);
    if (!present) {
        return std::unexpected(present.error());
    }
    const std::vector<Output>& outputs = turn.table()->outputs();
    if (outcome != AXError::success || outputs.empty()) {
        return std::unexpected(outcome == AXError::success ? AXError::cannotComplete : outcome);
    }
    return linux::inAccessibilitySpace((*present)->frame, outputs.front().frame);
}

AXError Accessibility::refusalToPlace(const WindowIdentifier& window) {
    const auto present = find(window);
    if (!present) {
        return present.error();
    }
    return (*present)->isFullscreen || turn.table()->outputs().empty() ? AXError::cannotComplete : AXError::success;
}

AXError Accessibility::place(const WindowIdentifier& window, const PlacementRequest& part) {
    PlacementRequest inCompositor = part;
    if (part.position) {
        inCompositor.position = linux::fromAccessibilitySpace(*part.position, turn.table()->outputs().front().frame);
    }
    placement.request(window, inCompositor);
    return AXError::success;
}

std::expected<const Window*, AXError> Accessibility::find(const WindowIdentifier& window) {
    const WindowTable* table = turn.table();
    if (table == nullptr) {
        return std::unexpected(AXError::apiDisabled);
    }
    if (const Window* present = table->find(window)) {
        return present;
    }
    return std::unexpected(AXError::invalidUIElement);
}

} // namespace platform::compositor
