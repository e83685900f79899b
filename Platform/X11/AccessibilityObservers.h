#pragma once

#include "Platform/AccessibilityObserver.h"
#include "Platform/X11/Deliveries.h"
#include "Platform/X11/ManagedWindows.h"
#include "Platform/X11/Turn.h"

#include <memory>
#include <vector>

namespace platform::x11 {

/// Tells of new windows. We hear of every process's windows anyway, so that any process can be observed at any time.
///
/// A window exists at the time of subscribing if it was in the list of managed windows as we last read it; every other
/// one is told, once, when the window manager has finished with it and it still exists.
class AccessibilityObservers final : public platform::AccessibilityObservers {
public:
    AccessibilityObservers(Connection& connection, Turn& turn, const ManagedWindows& windows, Deliveries& deliveries);

    [[nodiscard]] std::expected<std::unique_ptr<AXObserver>, AXError>
    createObserver(ProcessIdentifier process, AXObserverCallback callback) override;

    /// A new window is ready.
    void windowBecameReady(xcb_window_t window, const ManagedWindow& facts);

private:
    class Observer;

    /// The observers that are alive, oldest first; each takes itself out.
    using Registry = std::vector<Observer*>;

    [[nodiscard]] bool exists(xcb_window_t window);

    Connection& connection;
    Turn& turn;
    const ManagedWindows& windows;
    Deliveries& deliveries;
    std::shared_ptr<Registry> registry = std::make_shared<Registry>();
};

} // namespace platform::x11
