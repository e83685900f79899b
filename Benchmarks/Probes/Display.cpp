#include "Benchmarks/Probes/Display.h"

#include <poll.h>

namespace benchmarks {

Display::Display()
    : connection(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(raw()) != 0) {
        fail("no X server answers");
    }
    rootWindow = xcb_setup_roots_iterator(xcb_get_setup(raw())).data->root;
}

xcb_window_t Display::frameOf(xcb_window_t client) const {
    for (xcb_window_t window = client;;) {
        const Owned<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(raw(), xcb_query_tree(raw(), window), nullptr));
        if (!tree) {
            fail("the window is gone");
        }
        if (tree->parent == rootWindow) {
            return window;
        }
        window = tree->parent;
    }
}

Placement Display::placementOf(xcb_window_t window) const {
    const Owned<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(raw(), xcb_get_geometry(raw(), window), nullptr));
    if (!geometry) {
        fail("the window is gone");
    }
    return {.x = geometry->x, .y = geometry->y, .width = geometry->width, .height = geometry->height};
}

void Display::synchronize() const {
    const Owned<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(raw(), xcb_get_input_focus(raw()), nullptr));
    if (!answer) {
        fail("the X server is gone");
    }
}

Owned<xcb_generic_event_t> Display::eventUntil(Clock::time_point limit) const {
    for (;;) {
        if (xcb_generic_event_t* event = xcb_poll_for_event(raw())) {
            return Owned<xcb_generic_event_t>(event);
        }
        if (xcb_connection_has_error(raw()) != 0) {
            fail("the X server is gone");
        }
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(limit - Clock::now()).count();
        if (left <= 0) {
            return nullptr;
        }
        pollfd server{.fd = xcb_get_file_descriptor(raw()), .events = POLLIN, .revents = 0};
        poll(&server, 1, static_cast<int>(left));
    }
}

} // namespace benchmarks
