#pragma once

#include "Platform/Linux/Windows/WindowObservers.h"
#include "Platform/X11/ManagedWindows.h"
#include "Platform/X11/Turn.h"

namespace platform::x11 {

/// Tells of new windows. A window has arrived when it is in the list of managed windows as we last read it, and is
/// ready when the window manager has finished with it.
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
