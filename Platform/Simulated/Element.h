#pragma once

#include "Platform/Seam/Desktop/Accessibility.h"

namespace platform::simulated {

/// The data of the simulated desktop's elements: a window by its number, or an application (number 0).
class Element final : public AXElementStorage {
public:
    static constexpr int applicationItself = 0;

    Element(ProcessIdentifier process, int window)
        : process(process)
        , window(window) {}

    [[nodiscard]] bool isEqual(const AXElementStorage& other) const override {
        const auto* element = dynamic_cast<const Element*>(&other);
        return element != nullptr && element->process == process && element->window == window;
    }

    const ProcessIdentifier process;
    const int window;
};

} // namespace platform::simulated
