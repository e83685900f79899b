#include "Platform/X11/EventSelection.h"

namespace platform::x11 {

void EventSelection::select(xcb_window_t window, std::uint32_t mask) {
    if (mask == XCB_EVENT_MASK_NO_EVENT) {
        lasting.erase(window);
    } else {
        lasting.insert_or_assign(window, mask);
    }
    send(window, mask);
}

void EventSelection::selectForNow(xcb_window_t window, std::uint32_t mask) {
    const auto found = lasting.find(window);
    send(window, found == lasting.end() ? mask : mask | found->second);
}

void EventSelection::send(xcb_window_t window, std::uint32_t mask) {
    xcb_change_window_attributes(connection.raw(), window, XCB_CW_EVENT_MASK, &mask);
}

} // namespace platform::x11
