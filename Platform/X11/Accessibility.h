#pragma once

#include "Platform/Accessibility.h"
#include "Platform/X11/ManagedWindows.h"
#include "Platform/X11/Placement.h"
#include "Platform/X11/Turn.h"

#include <functional>

namespace platform::x11 {

/// Windows and applications as the X server and the window manager know them. An application is a process that owns
/// windows. Trust means that a window manager is in charge and can place windows on request.
class Accessibility final : public platform::Accessibility {
public:
    /// `askForTrust` tells whether the desktop lets us work.
    /// `managedWindows` may know the owner of a window without asking.
    Accessibility(Connection& connection, Turn& turn, Placement& placement, const ManagedWindows& managedWindows,
                  std::function<bool()> askForTrust);

    [[nodiscard]] AXUIElement applicationElement(ProcessIdentifier process) override;
    [[nodiscard]] std::expected<AXValue, AXError> copyAttributeValue(const AXUIElement& element,
                                                                     std::string_view attribute) override;
    AXError setAttributeValue(const AXUIElement& element, std::string_view attribute, const AXValue& value) override;
    [[nodiscard]] std::expected<ProcessIdentifier, AXError> processIdentifier(const AXUIElement& element) override;
    [[nodiscard]] std::optional<AXValue> createValue(corvid::CGPoint point) override;
    [[nodiscard]] std::optional<AXValue> createValue(corvid::CGSize size) override;
    [[nodiscard]] bool isProcessTrusted() override;
    bool isProcessTrustedWithPrompt() override;

    [[nodiscard]] AccessRequirement requirement() const override { return AccessRequirement::windowManager; }

private:
    [[nodiscard]] std::expected<AXValue, AXError> applicationAttribute(ProcessIdentifier process,
                                                                       std::string_view attribute);
    [[nodiscard]] std::expected<AXValue, AXError> windowAttribute(xcb_window_t window, std::string_view attribute);
    [[nodiscard]] std::expected<AXValue, AXError> focusedWindow(ProcessIdentifier process);
    [[nodiscard]] std::expected<AXValue, AXError> windows(ProcessIdentifier process);
    [[nodiscard]] std::expected<AXValue, AXError> subrole(xcb_window_t window);
    [[nodiscard]] std::expected<const WindowFacts*, AXError> facts(xcb_window_t window);

    Connection& connection;
    Turn& turn;
    Placement& placement;
    const ManagedWindows& managedWindows;
    std::function<bool()> askForTrust;
};

} // namespace platform::x11
