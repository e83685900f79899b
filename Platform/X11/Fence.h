#pragma once

#include "Platform/X11/Connection.h"

#include <cstdint>
#include <optional>

namespace platform::x11 {

/// Reports when the window manager has handled every earlier request.
///
/// The server redirects a configure request for a top-level window to the window manager (ICCCM 4.1.5), which handles
/// its requests in order; when the change comes back as a ConfigureNotify, all earlier requests have been handled too.
/// The window is our own and never mapped, so no window manager shows it. Without a window manager the server answers
/// itself. A plain round trip to the server cannot show this.
class Fence {
public:
    explicit Fence(Connection& connection);
    Fence(const Fence&) = delete;
    Fence& operator=(const Fence&) = delete;
    ~Fence();

    /// Waits until every earlier request is handled; false if that did not happen within the turn's time.
    [[nodiscard]] bool wait();

    /// Sends the request without waiting; `answer` of a later event returns the same number, in the order of the
    /// requests. A window manager that ends meanwhile never answers. Use one fence either for waiting or this way, not
    /// both.
    [[nodiscard]] std::uint16_t send();

    /// The number of the request that the event answers; empty if it is no answer.
    [[nodiscard]] std::optional<std::uint16_t> answer(const xcb_generic_event_t& event) const;

private:
    Connection& connection;
    xcb_window_t window;
    std::uint16_t width = 1;
};

} // namespace platform::x11
