#pragma once

#include "Platform/X11/Connection.h"

#include <cstdint>
#include <optional>

namespace platform::x11 {

/// Tells when the window manager has handled everything that was sent before.
///
/// A configure of a top-level window is redirected by the server to the window manager (ICCCM 4.1.5), which handles its
/// requests in order; when the change comes back as a ConfigureNotify, all earlier requests have been handled too. The
/// window is our own and never mapped, so no window manager shows it. Without a window manager the server answers
/// itself. A plain round trip to the server tells nothing of the kind.
class Fence {
public:
    explicit Fence(Connection& connection);
    Fence(const Fence&) = delete;
    Fence& operator=(const Fence&) = delete;
    ~Fence();

    /// Waits until all that was sent before is handled; false if that did not happen within the turn's time.
    [[nodiscard]] bool wait();

    /// Asks without waiting; `answer` of a later event gives the same number, in the order of asking. A window manager
    /// that ends meanwhile answers never. One fence is either waited for or asked this way, not both.
    [[nodiscard]] std::uint16_t send();

    /// Which question the event answers; nothing where it is no answer.
    [[nodiscard]] std::optional<std::uint16_t> answer(const xcb_generic_event_t& event) const;

private:
    Connection& connection;
    xcb_window_t window;
    std::uint16_t width = 1;
};

} // namespace platform::x11
