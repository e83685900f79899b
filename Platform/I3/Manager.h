#pragma once

#include "Platform/MainActor.h"
#include "Platform/Sway/Connection.h"
#include "Platform/Sway/Nodes.h"
#include "Platform/X11/TilingManager.h"

#include <optional>
#include <string>
#include <string_view>

namespace platform::i3 {

/// Sends requests to i3 over its socket. There is one connection, opened when it is needed and kept. After a broken
/// connection, as when i3 restarts, the next request opens another one, to the socket that i3 names on the display. No
/// events are subscribed: X11 reports all changes.
class Manager final : public x11::TilingManager {
public:
    /// `clock` must outlive this.
    explicit Manager(const MainActor& clock)
        : clock(clock) {}

    [[nodiscard]] std::string_view name() const override { return "i3"; }

    [[nodiscard]] bool isReachable(x11::Connection& display) override;
    [[nodiscard]] std::optional<x11::Layout> readLayout(x11::Connection& display) override;
    bool place(x11::Connection& display, xcb_window_t window, const corvid::CGRect& frame) override;

private:
    /// The reply; empty after a timeout or for a malformed reply. Both close the connection: a late reply must not be
    /// taken for another request's.
    [[nodiscard]] std::optional<sway::Json> ask(x11::Connection& display, sway::MessageType type,
                                                std::string_view payload);
    [[nodiscard]] bool open(x11::Connection& display);

    const MainActor& clock;
    std::optional<sway::Connection> connection;
};

} // namespace platform::i3
