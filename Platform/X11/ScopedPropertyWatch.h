#pragma once

#include "Platform/X11/EventSelection.h"

namespace platform::x11 {

/// Subscribes to a foreign window's property changes while it lives, in addition to the permanent subscriptions.
class ScopedPropertyWatch {
public:
    ScopedPropertyWatch(Connection& connection, EventSelection& selection, xcb_window_t window);
    ScopedPropertyWatch(const ScopedPropertyWatch&) = delete;
    ScopedPropertyWatch& operator=(const ScopedPropertyWatch&) = delete;
    ~ScopedPropertyWatch();

    /// Waits for the next change of that property, at most until `limit` and the end of the turn's time.
    [[nodiscard]] bool waitForChange(Atom property, Instant limit) const;

private:
    Connection& connection;
    EventSelection& selection;
    xcb_window_t window;
};

} // namespace platform::x11
