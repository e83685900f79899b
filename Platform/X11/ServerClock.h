#pragma once

#include "Platform/X11/Connection.h"

namespace platform::x11 {

/// The time of the X server, by which it orders what several clients ask of the focus and of selections.
class ServerClock {
public:
    explicit ServerClock(Connection& connection)
        : connection(connection) {}

    ServerClock(const ServerClock&) = delete;
    ServerClock& operator=(const ServerClock&) = delete;
    ~ServerClock();

    /// The time now, for one round trip: a property changes, and the server says when (ICCCM 2.1). `XCB_CURRENT_TIME`
    /// where the server did not answer within the turn's time.
    [[nodiscard]] xcb_timestamp_t now();

private:
    Connection& connection;
    /// Never mapped; made when it is first needed.
    xcb_window_t window = XCB_WINDOW_NONE;
};

} // namespace platform::x11
