#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/X11/Connection.h"

#include <xcb/randr.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace platform::x11 {

/// The root window's properties at one moment.
struct RootFacts {
    /// `_NET_ACTIVE_WINDOW` (EWMH, Root Window Properties); `XCB_WINDOW_NONE` while no window is active.
    xcb_window_t activeWindow = XCB_WINDOW_NONE;
    /// `_NET_CLIENT_LIST`: the managed windows, oldest first.
    std::vector<xcb_window_t> clients;
    /// `_NET_CURRENT_DESKTOP`.
    std::uint32_t currentDesktop = 0;
    /// `_NET_WORKAREA`: four values (x, y, width, height) for each desktop.
    std::vector<std::uint32_t> workAreas;
    /// The size of the root window, to which struts refer.
    corvid::CGSize size;
    /// The monitors (RandR 1.5), the primary one first, in root coordinates. Without RandR: the root window. Never
    /// empty.
    std::vector<corvid::CGRect> monitors;
};

/// The root's facts in a single round trip: construct to request, `read` to collect.
class RootFactsRequest {
public:
    explicit RootFactsRequest(Connection& connection);

    /// Empty if the server did not reply within the turn's time. Call it once.
    [[nodiscard]] std::optional<RootFacts> read(Connection& connection);

private:
    xcb_get_property_cookie_t activeWindow;
    xcb_get_property_cookie_t clients;
    xcb_get_property_cookie_t currentDesktop;
    xcb_get_property_cookie_t workAreas;
    xcb_get_geometry_cookie_t geometry;
    std::optional<xcb_randr_get_monitors_cookie_t> monitors;
};

} // namespace platform::x11
