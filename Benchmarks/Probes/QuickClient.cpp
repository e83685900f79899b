// A window that draws as soon as the server requests it, faster than any toolkit: the hardest case for a program that
// wants to place a window before it is drawn. It prints the size of its first picture on standard output, and stays
// open.

#include "Benchmarks/Probes/Display.h"

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

namespace {

using benchmarks::Display;
using benchmarks::fail;

constexpr std::uint16_t width = 700;
constexpr std::uint16_t height = 500;

void setText(const Display& display, xcb_window_t window, xcb_atom_t property, const std::string& text) {
    xcb_change_property(display.raw(), XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
}

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) {
        fail("usage: QuickClient CLASS");
    }
    const Display display;
    const xcb_screen_t& screen = *xcb_setup_roots_iterator(xcb_get_setup(display.raw())).data;
    const xcb_window_t window = xcb_generate_id(display.raw());
    const std::uint32_t values[]{screen.white_pixel, XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY};
    xcb_create_window(display.raw(), XCB_COPY_FROM_PARENT, window, display.root(), 0, 0, width, height, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen.root_visual, XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
    const std::string name = arguments[1];
    setText(display, window, XCB_ATOM_WM_NAME, name);
    // Instance and class, each with its terminating zero.
    setText(display, window, XCB_ATOM_WM_CLASS, name + '\0' + name + '\0');
    const xcb_gcontext_t ink = xcb_generate_id(display.raw());
    xcb_create_gc(display.raw(), ink, window, XCB_GC_FOREGROUND, &screen.black_pixel);
    xcb_map_window(display.raw(), window);
    display.flush();

    xcb_rectangle_t picture{.x = 0, .y = 0, .width = width, .height = height};
    bool isAsked = false;
    bool hasDrawn = false;
    while (true) {
        const auto event = display.eventUntil(benchmarks::Clock::now() + std::chrono::hours(1));
        if (!event) {
            continue;
        }
        // Handles every pending event before it draws, as toolkits do.
        for (xcb_generic_event_t* next = event.get(); next != nullptr;
             next = xcb_poll_for_queued_event(display.raw())) {
            const benchmarks::Owned<xcb_generic_event_t> owned(next == event.get() ? nullptr : next);
            const auto kind = next->response_type & ~0x80;
            if (kind == XCB_CONFIGURE_NOTIFY) {
                const auto* configured = reinterpret_cast<const xcb_configure_notify_event_t*>(next);
                picture.width = configured->width;
                picture.height = configured->height;
            }
            isAsked = isAsked || kind == XCB_EXPOSE;
        }
        if (isAsked) {
            xcb_poly_fill_rectangle(display.raw(), window, ink, 1, &picture);
            display.flush();
            isAsked = false;
            if (!hasDrawn) {
                hasDrawn = true;
                std::printf("%u %u\n", picture.width, picture.height);
                std::fflush(stdout);
            }
        }
    }
}
