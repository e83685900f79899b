#pragma once

#include "Platform/Accessibility.h"

#include <xcb/xcb.h>

namespace platform::x11 {

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

/// A top-level window of a client.
struct WindowElement final : AXElementStorage {
    explicit WindowElement(xcb_window_t window)
        : window(window) {}

    [[nodiscard]] bool isEqual(const AXElementStorage& other) const override {
        const auto* element = dynamic_cast<const WindowElement*>(&other);
        return element != nullptr && element->window == window;
    }

    xcb_window_t window;
};

} // namespace platform::x11
