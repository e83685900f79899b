#include "Platform/X11/WindowManagerWatch.h"

#include "Platform/X11/Event.h"

#include <chrono>
#include <utility>

namespace platform::x11 {

namespace {

constexpr std::chrono::seconds untilRetry{1};
constexpr std::chrono::milliseconds retryLeeway{10};

} // namespace

WindowManagerWatch::WindowManagerWatch(Connection& connection, EventSelection& selection, MainActor& mainActor,
                                       std::function<void()> changed)
    : connection(connection)
    , selection(selection)
    , mainActor(mainActor)
    , changed(std::move(changed)) {
}

void WindowManagerWatch::handle(const xcb_generic_event_t& event) {
    isStale = isStale || concerns(event);
}

void WindowManagerWatch::lookAgain() {
    isStale = isStale || manager.window == XCB_WINDOW_NONE;
}

bool WindowManagerWatch::concerns(const xcb_generic_event_t& event) const {
    if (const auto* written = eventAs<xcb_property_notify_event_t>(event, XCB_PROPERTY_NOTIFY)) {
        const bool isFollowed = followed != XCB_WINDOW_NONE && written->window == followed;
        const auto is = [&](Atom atom) { return written->atom == connection.atom(atom); };
        return (written->window == connection.root() && (is(Atom::netSupportingWmCheck) || is(Atom::netSupported))) ||
               (isFollowed && (is(Atom::netSupportingWmCheck) || is(Atom::netWmName)));
    }
    if (const auto* message = eventAs<xcb_client_message_event_t>(event, XCB_CLIENT_MESSAGE)) {
        // A new owner of a selection of managers announces itself in this way (ICCCM 2.8). Any of those will do: they
        // are rare.
        return message->type == connection.atom(Atom::manager) && !manager.capabilities.announcesItself;
    }
    const auto* destroyed = eventAs<xcb_destroy_notify_event_t>(event, XCB_DESTROY_NOTIFY);
    return destroyed != nullptr && followed != XCB_WINDOW_NONE && destroyed->window == followed;
}

void WindowManagerWatch::renew() {
    if (!isStale) {
        return;
    }
    isStale = false;
    xcb_window_t announced = XCB_WINDOW_NONE;
    // Followed before it is asked, so that its end is either reported or seen in the answer.
    WindowManager present = readWindowManager(connection, [&](xcb_window_t window) {
        announced = window;
        follow(window);
    });
    if (connection.isExhausted()) {
        retry = mainActor.schedule(mainActor.now() + untilRetry, retryLeeway, [this] { isStale = true; });
        return;
    }
    if (announced == XCB_WINDOW_NONE) {
        follow(XCB_WINDOW_NONE);
    }
    if (std::exchange(manager, std::move(present)) != manager) {
        changed();
    }
}

void WindowManagerWatch::follow(xcb_window_t window) {
    if (followed != XCB_WINDOW_NONE && followed != window) {
        selection.selectBeside(followed, XCB_EVENT_MASK_NO_EVENT);
    }
    followed = window;
    // Selected each time: a window manager's window may have the number of a former one that is gone, and nothing
    // selected.
    if (followed != XCB_WINDOW_NONE) {
        selection.selectBeside(followed, XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
    }
}

} // namespace platform::x11
