#include "Platform/X11/ScopedPropertyWatch.h"

#include "Platform/X11/Event.h"

namespace platform::x11 {

namespace {

void selectEvents(Connection& connection, xcb_window_t window, std::uint32_t mask) {
    xcb_change_window_attributes(connection.raw(), window, XCB_CW_EVENT_MASK, &mask);
}

} // namespace

ScopedPropertyWatch::ScopedPropertyWatch(Connection& connection, xcb_window_t window)
    : connection(connection)
    , window(window) {
    selectEvents(connection, window, XCB_EVENT_MASK_PROPERTY_CHANGE);
}

ScopedPropertyWatch::~ScopedPropertyWatch() {
    selectEvents(connection, window, XCB_EVENT_MASK_NO_EVENT);
}

bool ScopedPropertyWatch::waitForChange(Atom property, Instant limit) const {
    return connection.waitForEvent(limit, [&](const xcb_generic_event_t& event) {
        const auto* changed = eventAs<xcb_property_notify_event_t>(event, XCB_PROPERTY_NOTIFY);
        return changed != nullptr && changed->window == window && changed->atom == connection.atom(property);
    });
}

} // namespace platform::x11
