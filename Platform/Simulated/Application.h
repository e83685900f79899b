#pragma once

#include "Platform/Seam/Desktop/Accessibility.h"
#include "Platform/Seam/Desktop/RunningApplications.h"
#include "Platform/Simulated/AttributeFaults.h"
#include "Platform/Simulated/Window.h"

#include <optional>
#include <string>
#include <vector>

namespace platform::simulated {

class Applications;

/// The properties of an application at its start.
struct ApplicationOptions {
    ProcessIdentifier process = 0;
    std::optional<std::string> bundleIdentifier{};
    std::optional<std::string> localizedName{};
    ActivationPolicy activationPolicy = ActivationPolicy::regular;
};

/// An application on the simulated desktop; `Applications` creates it and keeps it, also after its end.
class Application final : public RunningApplication {
public:
    Application(Applications& desktop, ApplicationOptions options);

    [[nodiscard]] ProcessIdentifier processIdentifier() const override { return options.process; }
    [[nodiscard]] std::optional<std::string> bundleIdentifier() const override { return options.bundleIdentifier; }
    [[nodiscard]] std::optional<std::string> localizedName() const override { return options.localizedName; }
    [[nodiscard]] ActivationPolicy activationPolicy() const override { return options.activationPolicy; }
    [[nodiscard]] bool isTerminated() const override { return terminated; }

    /// Opens a window without a notification; it has the focus if the application had no focused window.
    Window& addWindow(WindowOptions windowOptions = {});

    /// The same, and observers are notified in a turn of their own.
    Window& openWindow(WindowOptions windowOptions = {});

    /// From now on its identifier is that one.
    void setBundleIdentifier(std::string identifier) { options.bundleIdentifier = std::move(identifier); }

    /// The windows that are open, oldest first.
    [[nodiscard]] std::vector<Window*> windows() const;

    [[nodiscard]] AXUIElement element() const;

    Window* focusedWindow = nullptr;
    /// The attribute of that name: missing, or a value, usually a boolean.
    std::optional<AXValue> enhancedUserInterface;
    AttributeFaults faults;

private:
    friend class Applications;

    Applications& desktop;
    ApplicationOptions options;
    bool terminated = false;
};

} // namespace platform::simulated
