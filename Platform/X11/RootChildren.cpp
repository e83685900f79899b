#include "Platform/X11/RootChildren.h"

#include "Platform/X11/Event.h"

namespace platform::x11 {

namespace {

/// Whether a child of this window was shown, hidden, destroyed, or got another parent.
bool concernsChildOf(const xcb_generic_event_t& event, xcb_window_t root) {
    if (const auto* mapped = eventAs<xcb_map_notify_event_t>(event, XCB_MAP_NOTIFY)) {
        return mapped->event == root;
    }
    if (const auto* unmapped = eventAs<xcb_unmap_notify_event_t>(event, XCB_UNMAP_NOTIFY)) {
        return unmapped->event == root;
    }
    if (const auto* reparented = eventAs<xcb_reparent_notify_event_t>(event, XCB_REPARENT_NOTIFY)) {
        return reparented->event == root;
    }
    const auto* destroyed = eventAs<xcb_destroy_notify_event_t>(event, XCB_DESTROY_NOTIFY);
    return destroyed != nullptr && destroyed->event == root;
}

} // namespace

void RootChildren::follow(bool isWanted) {
    if (isWanted != isFollowed) {
        isFollowed = isWanted;
        question.reset();
        selection.selectBeside(connection.root(),
                               isWanted ? XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY : XCB_EVENT_MASK_NO_EVENT);
    }
}

bool RootChildren::isChange(const xcb_generic_event_t& event) {
    if (!isFollowed) {
        return false;
    }
    if (concernsChildOf(event, connection.root())) {
        question = fence.send();
        return true;
    }
    const bool isAnswered = question && fence.answer(event) == question;
    if (isAnswered) {
        question.reset();
    }
    return isAnswered;
}

} // namespace platform::x11
