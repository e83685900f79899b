#pragma once

#include "Platform/Compositor/Placement.h"
#include "Platform/Compositor/Turn.h"
#include "Platform/Compositor/WindowTable.h"
#include "Platform/Linux/Windows/WindowAccessibility.h"

#include <optional>

namespace platform::compositor {

/// Windows and applications as the door reports them. While the door is closed, nothing can be read or written, and the
/// process is not trusted.
class Accessibility final : public linux::WindowAccessibility<WindowIdentifier> {
public:
    /// All outlive this.
    Accessibility(const WindowTable& table, Door& door, Turn& turn, Placement& placement);

    /// A door that is closed.
    [[nodiscard]] std::optional<AccessObstacle> obstacle() const override;
    bool isProcessTrustedWithPrompt() override;

private:
    [[nodiscard]] std::expected<WindowIdentifier, AXError> focusedWindow(ProcessIdentifier process) override;
    [[nodiscard]] std::expected<std::vector<WindowIdentifier>, AXError> windows(ProcessIdentifier process) override;
    [[nodiscard]] std::expected<ProcessIdentifier, AXError> owner(const WindowIdentifier& window) override;
    [[nodiscard]] std::expected<WindowKind, AXError> kind(const WindowIdentifier& window) override;
    [[nodiscard]] std::expected<corvid::CGRect, AXError> frame(const WindowIdentifier& window) override;
    [[nodiscard]] AXError refusalToPlace(const WindowIdentifier& window) override;
    AXError place(const WindowIdentifier& window, const PlacementRequest& part) override;

    [[nodiscard]] std::expected<const Window*, AXError> find(const WindowIdentifier& window);

    const WindowTable& known;
    Door& door;
    Turn& turn;
    Placement& placement;
};

} // namespace platform::compositor
