#include "Platform/X11/EventSelection.h"

namespace platform::x11 {

void EventSelection::select(xcb_window_t window, std::uint32_t mask) {
    keep(lasting, window, mask);
    send(window, lastingMask(window));
}

void EventSelection::selectBeside(xcb_window_t window, std::uint32_t mask) {
    keep(beside, window, mask);
    send(window, lastingMask(window));
}

void EventSelection::selectForNow(xcb_window_t window, std::uint32_t mask) {
    send(window, mask | lastingMask(window));
}

void EventSelection::forget(xcb_window_t window) {
    lasting.erase(window);
    beside.erase(window);
}

void EventSelection::keep(Masks& masks, xcb_window_t window, std::uint32_t mask) {
    if (mask == XCB_EVENT_MASK_NO_EVENT) {
        masks.erase(window);
    } else {
        masks.insert_or_assign(window, mask);
    }
}

std::uint32_t EventSelection::lastingMask(xcb_window_t window) const {
    std::uint32_t mask = XCB_EVENT_MASK_NO_EVENT;
    for (const Masks* masks : {&lasting, &beside}) {
        const auto found = masks->find(window);
        mask |= found == masks->end() ? 0 : found->second;
    }
    return mask;
}

void EventSelection::send(xcb_window_t window, std::uint32_t mask) {
    xcb_change_window_attributes(connection.raw(), window, XCB_CW_EVENT_MASK, &mask);
}

} // namespace platform::x11
