#include "Platform/X11/ScopedPropertyWatch.h"

#include "Platform/X11/Event.h"

namespace platform::x11 {

ScopedPropertyWatch::ScopedPropertyWatch(Connection& connection, EventSelection& selection, xcb_window_t window)
    : connection(connection)
    , selection(selection)
    , window(window) {
    selection.selectForNow(window, XCB_EVENT_MASK_PROPERTY_CHANGE);
}

ScopedPropertyWatch::~ScopedPropertyWatch() {
    selection.selectForNow(window, XCB_EVENT_MASK_NO_EVENT);
}

bool ScopedPropertyWatch::waitForChange(Atom property, Instant limit) const {
    return connection.waitForEvent(limit, [&](const xcb_generic_event_t& event) {
        const auto* changed = eventAs<xcb_property_notify_event_t>(event, XCB_PROPERTY_NOTIFY);
        return changed != nullptr && changed->window == window && changed->atom == connection.atom(property);
    });
}

} // namespace platform::x11
