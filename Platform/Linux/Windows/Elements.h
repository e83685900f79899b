#pragma once

#include "Platform/Seam/Desktop/Accessibility.h"

#include <memory>
#include <utility>

namespace platform::linux {

/// An application: the process that owns windows.
struct ApplicationElement final : AXElementStorage {
    explicit ApplicationElement(ProcessIdentifier process)
        : process(process) {}

    [[nodiscard]] bool isEqual(const AXElementStorage& other) const override {
        const auto* application = dynamic_cast<const ApplicationElement*>(&other);
        return application != nullptr && application->process == process;
    }

    ProcessIdentifier process;
};

/// A top-level window of an application, by the name that the desktop gives it.
template <typename Name>
struct WindowElement final : AXElementStorage {
    explicit WindowElement(Name window)
        : window(std::move(window)) {}

    [[nodiscard]] bool isEqual(const AXElementStorage& other) const override {
        const auto* element = dynamic_cast<const WindowElement*>(&other);
        return element != nullptr && element->window == window;
    }

    Name window;
};

template <typename Name>
[[nodiscard]] AXUIElement windowElement(Name window) {
    return AXUIElement(std::make_shared<const WindowElement<Name>>(std::move(window)));
}

} // namespace platform::linux
