#pragma once

#include "Platform/I3Ipc/Connection.h"
#include "Platform/I3Ipc/Nodes.h"
#include "Platform/Seam/Desktop/MainActor.h"
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

    /// Those of terminals, by rules of its own.
    [[nodiscard]] bool roundsSizesUp() const override { return true; }

    [[nodiscard]] bool isReachable(x11::Connection& display) override;
    [[nodiscard]] std::optional<x11::Layout> readLayout(x11::Connection& display) override;
    bool place(x11::Connection& display, xcb_window_t window, const corvid::CGRect& frame) override;

private:
    /// The answer; nothing where there was none in time, or one that makes no sense. That ends the connection: an
    /// answer that comes later must not be taken for another question's.
    [[nodiscard]] std::optional<i3ipc::Json> ask(x11::Connection& display, i3ipc::MessageType type,
                                                 std::string_view payload);
    [[nodiscard]] bool open(x11::Connection& display);

    const MainActor& clock;
    std::optional<i3ipc::Connection> connection;
};

} // namespace platform::i3
