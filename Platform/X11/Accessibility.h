#pragma once

#include "Platform/Linux/Windows/WindowAccessibility.h"
#include "Platform/X11/ManagedWindows.h"
#include "Platform/X11/Placement.h"
#include "Platform/X11/Turn.h"

#include <functional>
#include <optional>

namespace platform::x11 {

/// Windows and applications as the X server and the window manager know them. An application is a process that owns
/// windows. Trust means that a window manager is in charge and can place windows on request.
class Accessibility final : public linux::WindowAccessibility<xcb_window_t> {
public:
    /// `managedWindows` may know the owner of a window without asking. `findObstacle` answers `obstacle`.
    Accessibility(Connection& connection, Turn& turn, Placement& placement, const ManagedWindows& managedWindows,
                  std::function<std::optional<AccessObstacle>()> findObstacle);

    [[nodiscard]] std::optional<AccessObstacle> obstacle() const override { return findObstacle(); }

    /// X11 has no permission to ask for: a window manager is there or it is not.
    bool isProcessTrustedWithPrompt() override { return isProcessTrusted(); }

private:
    [[nodiscard]] std::expected<xcb_window_t, AXError> focusedWindow(ProcessIdentifier process) override;
    [[nodiscard]] std::expected<std::vector<xcb_window_t>, AXError> windows(ProcessIdentifier process) override;
    [[nodiscard]] std::expected<ProcessIdentifier, AXError> owner(const xcb_window_t& window) override;
    [[nodiscard]] std::expected<WindowKind, AXError> kind(const xcb_window_t& window) override;
    [[nodiscard]] std::expected<corvid::CGRect, AXError> frame(const xcb_window_t& window) override;
    [[nodiscard]] AXError refusalToPlace(const xcb_window_t& window) override;
    AXError place(const xcb_window_t& window, const PlacementRequest& part) override;

    [[nodiscard]] std::expected<const WindowFacts*, AXError> facts(xcb_window_t window);

    Connection& connection;
    Turn& turn;
    Placement& placement;
    const ManagedWindows& managedWindows;
    std::function<std::optional<AccessObstacle>()> findObstacle;
};

} // namespace platform::x11
