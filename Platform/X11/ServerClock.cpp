#include "Platform/X11/ServerClock.h"

#include "Platform/X11/Event.h"

namespace platform::x11 {

ServerClock::~ServerClock() {
    if (window != XCB_WINDOW_NONE) {
        xcb_destroy_window(connection.raw(), window);
    }
}

xcb_timestamp_t ServerClock::now() {
    if (window == XCB_WINDOW_NONE) {
        const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
        window = xcb_generate_id(connection.raw());
        xcb_create_window(connection.raw(), XCB_COPY_FROM_PARENT, window, connection.root(), -1, -1, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    }
    // The reply has the number of the request, so that a late one is not taken for the next one's.
    const auto number = static_cast<std::uint16_t>(xcb_change_property(connection.raw(), XCB_PROP_MODE_APPEND, window,
                                                                       XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0, nullptr)
                                                       .sequence);
    xcb_timestamp_t time = XCB_CURRENT_TIME;
    const bool hasCome = connection.waitForEvent(connection.deadline().end(), [&](const xcb_generic_event_t& event) {
        const auto* changed = eventAs<xcb_property_notify_event_t>(event, XCB_PROPERTY_NOTIFY);
        if (changed == nullptr || changed->window != window || changed->sequence != number) {
            return false;
        }
        time = changed->time;
        return true;
    });
    return hasCome ? time : XCB_CURRENT_TIME;
}

} // namespace platform::x11
