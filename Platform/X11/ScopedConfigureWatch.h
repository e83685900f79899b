#pragma once

#include "Platform/X11/EventSelection.h"

namespace platform::x11 {

/// Subscribes to the reports of a foreign window's position and size while it lives, in addition to the permanent
/// subscriptions: those of the server, and those that the window manager sends to the client (ICCCM 4.1.5).
class ScopedConfigureWatch {
public:
    ScopedConfigureWatch(Connection& connection, EventSelection& selection, xcb_window_t window);
    ScopedConfigureWatch(const ScopedConfigureWatch&) = delete;
    ScopedConfigureWatch& operator=(const ScopedConfigureWatch&) = delete;
    ~ScopedConfigureWatch();

    /// Waits for the next report, at most until `limit` and the end of the turn's time.
    [[nodiscard]] bool waitForReport(Instant limit) const;

    /// Drops the reports that have come so far.
    void dropReports() const;

private:
    Connection& connection;
    EventSelection& selection;
    xcb_window_t window;
};

} // namespace platform::x11
