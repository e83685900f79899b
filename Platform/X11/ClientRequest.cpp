#include "Platform/X11/ClientRequest.h"

#include "Platform/X11/FrameGeometry.h"

#include <array>
#include <bit>
#include <cstdint>

namespace platform::x11 {

void requestClientRectangle(Connection& connection, xcb_window_t window, const corvid::CGRect& rectangle) {
    const MoveResizeMessage rounded = moveResizeMessage({}, {.position = rectangle.origin, .size = rectangle.size});
    const std::array<std::uint32_t, 4> values{std::bit_cast<std::uint32_t>(rounded.x),
                                              std::bit_cast<std::uint32_t>(rounded.y), rounded.width, rounded.height};
    xcb_configure_window(connection.raw(), window,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                         values.data());
}

} // namespace platform::x11
