#pragma once

#include "Platform/X11/Connection.h"

namespace platform::x11 {

/// The X server's time, by which the server orders several clients' requests for the focus and for selections.
class ServerClock {
public:
    explicit ServerClock(Connection& connection)
        : connection(connection) {}

    ServerClock(const ServerClock&) = delete;
    ServerClock& operator=(const ServerClock&) = delete;
    ~ServerClock();

    /// The present time, for one round trip: a property changes, and the server's event has the time (ICCCM 2.1).
    /// `XCB_CURRENT_TIME` if the server did not reply within the turn's time.
    [[nodiscard]] xcb_timestamp_t now();

private:
    Connection& connection;
    /// Never mapped; created at its first use.
    xcb_window_t window = XCB_WINDOW_NONE;
};

} // namespace platform::x11
