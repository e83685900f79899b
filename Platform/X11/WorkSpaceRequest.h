#pragma once

#include "Platform/X11/Connection.h"
#include "Platform/X11/RootFacts.h"
#include "Platform/X11/VisibleFrames.h"

#include <cstdint>
#include <span>
#include <vector>

namespace platform::x11 {

/// The struts of all managed windows and the window manager's own boxes for each monitor: construct to request, `read`
/// to collect or `drop` to discard. A single round trip, except for lists of more windows than desktops have.
class WorkSpaceRequest {
public:
    /// `monitorWorkAreas` is the atom `_GTK_WORKAREAS_D<n>` of the current desktop. `clients` must outlive this.
    WorkSpaceRequest(Connection& connection, std::span<const xcb_window_t> clients, xcb_atom_t monitorWorkAreas);

    /// The combination of the replies and the root's facts. A window that vanished meanwhile is ignored, and so are
    /// those for which the turn's time does not suffice. Call it once.
    [[nodiscard]] WorkSpace read(Connection& connection, const RootFacts& root);

    /// Discards the replies. Call it once, instead.
    void drop(Connection& connection);

private:
    struct ClientRequest {
        xcb_get_property_cookie_t partialStrut;
        xcb_get_property_cookie_t strut;
        xcb_get_property_cookie_t desktop;
    };

    /// Sends requests for the next clients, as many as are allowed at once.
    void askOn(Connection& connection);
    void readAsked(Connection& connection, std::uint32_t currentDesktop, WorkSpace& space);

    std::span<const xcb_window_t> unasked;
    std::vector<ClientRequest> clientRequests;
    xcb_get_property_cookie_t monitorWorkAreas;
};

} // namespace platform::x11
