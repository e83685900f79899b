#pragma once

#include "Platform/X11/Connection.h"
#include "Platform/X11/RootFacts.h"
#include "Platform/X11/VisibleFrames.h"

#include <cstdint>
#include <span>
#include <vector>

namespace platform::x11 {

/// The struts of all managed windows and the window manager's own boxes for each monitor: construct to ask, `read` to
/// collect or `drop` to let it be. A single round trip, but for lists of more windows than desktops have.
class WorkSpaceRequest {
public:
    /// `monitorWorkAreas` is the atom `_GTK_WORKAREAS_D<n>` of the current desktop. `clients` has to outlive this.
    WorkSpaceRequest(Connection& connection, std::span<const xcb_window_t> clients, xcb_atom_t monitorWorkAreas);

    /// What the requests and the root's facts say together. A window that vanished meanwhile counts for nothing, nor do
    /// those for which the turn's time does not suffice. To be called once.
    [[nodiscard]] WorkSpace read(Connection& connection, const RootFacts& root);

    /// Throws the answers away. To be called once, instead.
    void drop(Connection& connection);

private:
    struct ClientRequest {
        xcb_get_property_cookie_t partialStrut;
        xcb_get_property_cookie_t strut;
        xcb_get_property_cookie_t desktop;
    };

    /// Asks about the next of the clients, as many as may be asked about at once.
    void askOn(Connection& connection);
    void readAsked(Connection& connection, std::uint32_t currentDesktop, WorkSpace& space);

    std::span<const xcb_window_t> unasked;
    std::vector<ClientRequest> clientRequests;
    xcb_get_property_cookie_t monitorWorkAreas;
};

} // namespace platform::x11
