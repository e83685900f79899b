#pragma once

#include "Platform/X11/Connection.h"
#include "Platform/X11/RootFacts.h"
#include "Platform/X11/VisibleFrames.h"

#include <vector>

namespace platform::x11 {

/// The struts of all managed windows and the window manager's own boxes for each monitor, in a single round trip:
/// construct to ask, `read` to collect.
class WorkSpaceRequest {
public:
    /// `monitorWorkAreas` is the atom `_GTK_WORKAREAS_D<n>` of the current desktop.
    WorkSpaceRequest(Connection& connection, const std::vector<xcb_window_t>& clients, xcb_atom_t monitorWorkAreas);

    /// What the requests and the root's facts say together. A window that vanished meanwhile counts for nothing. To be
    /// called once.
    [[nodiscard]] WorkSpace read(Connection& connection, const RootFacts& root);

private:
    struct ClientRequest {
        xcb_get_property_cookie_t partialStrut;
        xcb_get_property_cookie_t strut;
        xcb_get_property_cookie_t desktop;
    };

    std::vector<ClientRequest> clientRequests;
    xcb_get_property_cookie_t monitorWorkAreas;
};

} // namespace platform::x11
