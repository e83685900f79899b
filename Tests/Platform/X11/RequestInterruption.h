#pragma once

#include <xcb/xcb.h>

#include <cstddef>
#include <functional>

namespace platform::x11 {

/// Runs a function on the server between two requests of this process, as another program could at that moment: when
/// the server has handled everything before the request of that number, counted from 1 and from now on. Requests over
/// the connection of `other`, through which it acts, do not count. While it lives; one at a time.
class RequestInterruption {
public:
    RequestInterruption(xcb_connection_t* other, std::size_t number, std::function<void()> happening);
    RequestInterruption(const RequestInterruption&) = delete;
    RequestInterruption& operator=(const RequestInterruption&) = delete;
    ~RequestInterruption();

    /// Whether that many requests were sent.
    [[nodiscard]] bool hasHappened() const { return isOver; }

    /// Called before every request over any connection.
    static void beforeRequest(xcb_connection_t* connection);

private:
    void count(xcb_connection_t* connection);

    xcb_connection_t* other;
    std::size_t left;
    std::function<void()> happening;
    bool isOver = false;
};

} // namespace platform::x11
