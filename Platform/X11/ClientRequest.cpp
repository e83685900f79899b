#include "Platform/X11/ClientRequest.h"

#include <algorithm>
#include <bit>

namespace platform::x11 {

void requestClientRectangle(Connection& connection, xcb_window_t window, const corvid::CGRect& rectangle) {
    const MoveResizeMessage rounded = moveResizeMessage({}, {.position = rectangle.origin, .size = rectangle.size});
    const std::array<std::uint32_t, 4> values{std::bit_cast<std::uint32_t>(rounded.x),
                                              std::bit_cast<std::uint32_t>(rounded.y), rounded.width, rounded.height};
    xcb_configure_window(connection.raw(), window,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                         values.data());
}

void sendToRoot(Connection& connection, xcb_window_t window, Atom type, const std::array<std::uint32_t, 5>& data) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = connection.atom(type);
    std::ranges::copy(data, message.data.data32);
    xcb_send_event(connection.raw(), 0, connection.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
}

void requestByMessage(Connection& connection, xcb_window_t window, const MoveResizeMessage& message) {
    sendToRoot(connection, window, Atom::netMoveResizeWindow,
               {message.flags, std::bit_cast<std::uint32_t>(message.x), std::bit_cast<std::uint32_t>(message.y),
                message.width, message.height});
}

} // namespace platform::x11
