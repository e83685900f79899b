#pragma once

#include "Platform/Compositor/WindowTable.h"
#include "Platform/Linux/Windows/WindowObservers.h"

namespace platform::compositor {

/// Tells of new windows. A window has arrived when the table has it.
class AccessibilityObservers final : public linux::WindowObservers {
public:
    AccessibilityObservers(const WindowTable& table, linux::Deliveries& deliveries)
        : WindowObservers(deliveries)
        , table(table) {}

    /// A window is ready.
    void windowBecameReady(const WindowIdentifier& identifier, const Window& window);

private:
    [[nodiscard]] std::uint64_t lastArrival() const override { return table.lastArrival(); }

    const WindowTable& table;
};

} // namespace platform::compositor
