#include "Platform/X11/Connection.h"

#include <xcb/xcbext.h>

#include <linux/sockios.h>
#include <poll.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace platform::x11 {

namespace {

const xcb_screen_t* findScreen(xcb_connection_t* connection, int number) {
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int index = 0; index < number && screens.rem > 0; ++index) {
        xcb_screen_next(&screens);
    }
    return screens.rem > 0 ? screens.data : nullptr;
}

} // namespace

std::expected<Connection, std::string> Connection::open(const std::string& display, linux::TurnDeadline& deadline) {
    int screenNumber = 0;
    xcb_connection_t* raw = xcb_connect(display.empty() ? nullptr : display.c_str(), &screenNumber);
    Connection opened(raw, screenNumber, deadline);
    if (xcb_connection_has_error(raw) != 0) {
        return std::unexpected("no X server answers");
    }
    opened.screen = findScreen(raw, screenNumber);
    if (opened.screen == nullptr || !opened.internAtoms()) {
        return std::unexpected("the X server sends no valid reply");
    }
    return opened;
}

Connection::Connection(xcb_connection_t* raw, int screenNumber, linux::TurnDeadline& deadline)
    : connection(raw)
    , number(screenNumber)
    , turn(&deadline) {
}

bool Connection::internAtoms() {
    std::array<xcb_intern_atom_cookie_t, atomNames.size()> cookies{};
    for (std::size_t index = 0; index < atomNames.size(); ++index) {
        cookies[index] =
            xcb_intern_atom(raw(), 0, static_cast<std::uint16_t>(atomNames[index].size()), atomNames[index].data());
    }
    for (std::size_t index = 0; index < atomNames.size(); ++index) {
        const auto interned = reply<xcb_intern_atom_reply_t>(cookies[index]);
        if (!interned) {
            return false;
        }
        atoms.set(static_cast<Atom>(index), interned->atom);
    }
    return true;
}

bool Connection::isBacklogged() const {
    constexpr int most = 32 << 10;
    int unread = 0;
    return ioctl(descriptor(), SIOCOUTQ, &unread) == 0 && unread > most;
}

std::optional<bool> Connection::succeeded(const std::vector<xcb_void_cookie_t>& cookies) {
    // The reply to a later request shows that all earlier ones have been handled, so the checks below do not block.
    const auto barrier = reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(raw()));
    if (!barrier) {
        for (const xcb_void_cookie_t cookie : cookies) {
            xcb_discard_reply(raw(), cookie.sequence);
        }
        return std::nullopt;
    }
    bool all = true;
    for (const xcb_void_cookie_t cookie : cookies) {
        const Owned<xcb_generic_error_t> error(xcb_request_check(raw(), cookie));
        all = all && error == nullptr;
    }
    return all;
}

Owned<xcb_generic_event_t> Connection::nextEvent() {
    if (kept.empty()) {
        keepArrivedEvents();
    }
    if (kept.empty()) {
        return nullptr;
    }
    Owned<xcb_generic_event_t> event = std::move(kept.front());
    kept.pop_front();
    return event;
}

bool Connection::hasPendingEvents() {
    while (xcb_generic_event_t* event = xcb_poll_for_queued_event(raw())) {
        kept.emplace_back(event);
    }
    return !kept.empty();
}

void* Connection::waitForReply(unsigned sequence) {
    for (;;) {
        void* answer = nullptr;
        xcb_generic_error_t* error = nullptr;
        if (xcb_poll_for_reply(raw(), sequence, &answer, &error) != 0) {
            std::free(error);
            return answer;
        }
        // A kept event means that data was read, and the reply may have been part of it.
        if (keepArrivedEvents()) {
            continue;
        }
        if (xcb_poll_for_reply(raw(), sequence, &answer, &error) != 0) {
            std::free(error);
            return answer;
        }
        if (!waitUntilReadable(turn->end())) {
            xcb_discard_reply(raw(), sequence);
            return nullptr;
        }
    }
}

bool Connection::waitUntilReadable(Instant limit) {
    flush();
    if (isBroken()) {
        return false;
    }
    const Instant end = std::min(limit, turn->end());
    for (;;) {
        const Duration left = end - turn->now();
        if (left <= Duration::zero()) {
            return false;
        }
        const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(left).count();
        pollfd server{.fd = descriptor(), .events = POLLIN, .revents = 0};
        const int ready = poll(&server, 1, static_cast<int>(milliseconds));
        if (ready > 0) {
            return true;
        }
        if (ready < 0 && errno != EINTR) {
            return false;
        }
    }
}

bool Connection::keepArrivedEvents() {
    const std::size_t before = kept.size();
    while (xcb_generic_event_t* event = xcb_poll_for_event(raw())) {
        kept.emplace_back(event);
    }
    return kept.size() != before;
}

} // namespace platform::x11
