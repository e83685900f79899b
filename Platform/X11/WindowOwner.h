#pragma once

#include "Platform/Accessibility.h"
#include "Platform/X11/Connection.h"

#include <xcb/res.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace platform::x11 {

/// The owner of a window: the process that the server knows behind the client's connection (X-Resource extension), else
/// what the client claims in `_NET_WM_PID`, else a negative number made of the client's resource base.
[[nodiscard]] ProcessIdentifier windowOwner(std::optional<std::uint32_t> localClientProcess,
                                            const std::vector<std::uint32_t>& claimed, xcb_window_t window,
                                            std::uint32_t resourceIdentifierMask);

/// The owner of one window in a single round trip: construct to ask, `read` to collect.
class WindowOwnerRequest {
public:
    WindowOwnerRequest(Connection& connection, xcb_window_t window);

    /// Where the window is gone or the server did not answer within the turn's time this is a negative number; what
    /// else was asked of the window tells. To be called once.
    [[nodiscard]] ProcessIdentifier read(Connection& connection) const;

private:
    xcb_window_t window;
    xcb_get_property_cookie_t claimedProcess;
    std::optional<xcb_res_query_client_ids_cookie_t> owner;
};

} // namespace platform::x11
