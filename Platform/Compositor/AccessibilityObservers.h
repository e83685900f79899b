#pragma once

#include "Platform/Compositor/WindowTable.h"
#include "Platform/Linux/Windows/WindowObservers.h"

namespace platform::compositor {

/// Notifies of new windows. A window is new when the table gets it.
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
