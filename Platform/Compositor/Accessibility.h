#pragma once

#include "Platform/Compositor/Placement.h"
#include "Platform/Compositor/Turn.h"
#include "Platform/Linux/Windows/WindowAccessibility.h"

#include <functional>

namespace platform::compositor {

/// Windows and applications as the door reports them. While it is closed there is nothing to read or write, and no
/// trust.
class Accessibility final : public linux::WindowAccessibility<WindowIdentifier> {
public:
    /// `askForTrust` returns whether the desktop allows us to move windows.
    Accessibility(Door& door, Turn& turn, Placement& placement, std::function<bool()> askForTrust);

    [[nodiscard]] bool isProcessTrusted() override;
    bool isProcessTrustedWithPrompt() override;

    [[nodiscard]] AccessRequirement requirement() const override { return door.requirement(); }

private:
    [[nodiscard]] std::expected<WindowIdentifier, AXError> focusedWindow(ProcessIdentifier process) override;
    [[nodiscard]] std::expected<std::vector<WindowIdentifier>, AXError> windows(ProcessIdentifier process) override;
    [[nodiscard]] std::expected<ProcessIdentifier, AXError> owner(const WindowIdentifier& window) override;
    [[nodiscard]] std::expected<WindowKind, AXError> kind(const WindowIdentifier& window) override;
    [[nodiscard]] std::expected<corvid::CGRect, AXError> frame(const WindowIdentifier& window) override;
    [[nodiscard]] AXError refusalToPlace(const WindowIdentifier& window) override;
    AXError place(const WindowIdentifier& window, const PlacementRequest& part) override;

    [[nodiscard]] std::expected<const Window*, AXError> find(const WindowIdentifier& window);

    Door& door;
    Turn& turn;
    Placement& placement;
    std::function<bool()> askForTrust;
};

} // namespace platform::compositor
