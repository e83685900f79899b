#pragma once

#include "Platform/Linux/Windows/WindowObservers.h"
#include "Platform/X11/ManagedWindows.h"
#include "Platform/X11/Turn.h"

namespace platform::x11 {

/// Notifies of new windows. A window is new when it appears in the list of managed windows, and ready when the window
/// manager has finished mapping it.
class AccessibilityObservers final : public linux::WindowObservers {
public:
    AccessibilityObservers(Connection& connection, Turn& turn, const ManagedWindows& windows,
                           linux::Deliveries& deliveries);

    /// A new window is ready.
    void windowBecameReady(xcb_window_t window, const ManagedWindow& facts);

private:
    [[nodiscard]] std::uint64_t lastArrival() const override { return windows.lastArrival(); }

    [[nodiscard]] bool exists(xcb_window_t window);

    Connection& connection;
    Turn& turn;
    const ManagedWindows& windows;
};

} // namespace platform::x11
