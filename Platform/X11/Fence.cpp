#include "Platform/X11/Fence.h"

#include "Platform/X11/Event.h"

namespace platform::x11 {

Fence::Fence(Connection& connection)
    : connection(connection)
    , window(xcb_generate_id(connection.raw())) {
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    // Of the class of ordinary windows: some window managers set the border of each window that is configured, which
    // the server refuses for a window without output, together with the size.
    xcb_create_window(connection.raw(), XCB_COPY_FROM_PARENT, window, connection.root(), -1, -1, width, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
}

Fence::~Fence() {
    xcb_destroy_window(connection.raw(), window);
}

bool Fence::wait() {
    const std::uint16_t question = send();
    return connection.waitForEvent(connection.deadline().end(), [this, question](const xcb_generic_event_t& event) {
        return answer(event) == question;
    });
}

std::uint16_t Fence::send() {
    // A different width each time, so that the late reply to an abandoned wait is not taken for this one's.
    constexpr std::uint16_t widest = 1000;
    width = width < widest ? static_cast<std::uint16_t>(width + 1) : std::uint16_t{1};
    const std::uint32_t value = width;
    xcb_configure_window(connection.raw(), window, XCB_CONFIG_WINDOW_WIDTH, &value);
    return width;
}

std::optional<std::uint16_t> Fence::answer(const xcb_generic_event_t& event) const {
    const auto* configured = eventAs<xcb_configure_notify_event_t>(event, XCB_CONFIGURE_NOTIFY);
    return configured != nullptr && configured->window == window ? std::optional(configured->width) : std::nullopt;
}

} // namespace platform::x11
