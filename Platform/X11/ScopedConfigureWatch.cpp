#include "Platform/X11/ScopedConfigureWatch.h"

#include "Platform/X11/Event.h"

namespace platform::x11 {

ScopedConfigureWatch::ScopedConfigureWatch(Connection& connection, EventSelection& selection, xcb_window_t window)
    : connection(connection)
    , selection(selection)
    , window(window) {
    selection.selectForNow(window, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
}

ScopedConfigureWatch::~ScopedConfigureWatch() {
    selection.selectForNow(window, XCB_EVENT_MASK_NO_EVENT);
}

bool ScopedConfigureWatch::waitForReport(Instant limit) const {
    return connection.waitForEvent(limit, [&](const xcb_generic_event_t& event) {
        const auto* configured = eventAs<xcb_configure_notify_event_t>(event, XCB_CONFIGURE_NOTIFY);
        return configured != nullptr && configured->window == window && configured->event == window;
    });
}

void ScopedConfigureWatch::dropReports() const {
    while (waitForReport(Instant())) {
    }
}

} // namespace platform::x11
