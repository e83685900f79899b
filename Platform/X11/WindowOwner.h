#pragma once

#include "Platform/Seam/Desktop/Accessibility.h"
#include "Platform/X11/Connection.h"

#include <xcb/res.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace platform::x11 {

/// The owner of a window: the process that the server knows for the client's connection (X-Resource extension), else
/// the client's own claim in `_NET_WM_PID`, else a negative number made of the client's resource base.
[[nodiscard]] ProcessIdentifier windowOwner(std::optional<std::uint32_t> localClientProcess,
                                            const std::vector<std::uint32_t>& claimed, xcb_window_t window,
                                            std::uint32_t resourceIdentifierMask);

/// The owner of one window in a single round trip: construct to request, `read` to collect.
class WindowOwnerRequest {
public:
    WindowOwnerRequest(Connection& connection, xcb_window_t window);

    /// If the window is gone or the server did not reply within the turn's time this is a negative number; other
    /// requests about the window show that. Call it once.
    [[nodiscard]] ProcessIdentifier read(Connection& connection) const;

private:
    xcb_window_t window;
    xcb_get_property_cookie_t claimedProcess;
    std::optional<xcb_res_query_client_ids_cookie_t> owner;
};

} // namespace platform::x11
