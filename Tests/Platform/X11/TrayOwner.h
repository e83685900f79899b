#pragma once

#include "TestClient.h"

#include <cstdint>
#include <string>
#include <vector>

namespace platform::x11 {

/// A simulated tray: owns the selection, and docks the windows that request it into a box of its own.
class TrayOwner {
public:
    /// Becomes the tray and announces itself. A depth of 32 offers a visual with transparency.
    explicit TrayOwner(const std::string& display, std::uint8_t depth = 0, std::vector<std::uint32_t> colours = {});
    TrayOwner(const TrayOwner&) = delete;
    TrayOwner& operator=(const TrayOwner&) = delete;
    ~TrayOwner() { leave(); }

    /// The windows that have requested docking; it notices their end.
    [[nodiscard]] const std::vector<xcb_window_t>& asked();

    /// Docks a window into the box, which is at (300, 200) in root coordinates and of this colour.
    void embed(xcb_window_t window, std::uint16_t size);

    /// Reparents a window to the root window.
    void letGo(xcb_window_t window);

    /// Ends; windows in its box are destroyed, as when a panel fails to save them.
    void leave();

    /// Clicks, as the server reports it.
    void click(xcb_window_t window, std::uint8_t button, std::int16_t rootX, std::int16_t rootY);

    /// The pixels of a window, row by row; empty if it is not visible.
    [[nodiscard]] std::vector<std::uint32_t> pixels(xcb_window_t window, std::uint16_t size);

    [[nodiscard]] std::uint8_t depthOf(xcb_window_t window);
    [[nodiscard]] bool exists(xcb_window_t window);

    static constexpr std::uint32_t boxColour = 0x204060;

    TestClient testClient;

private:
    void announce();

    xcb_window_t owner = XCB_WINDOW_NONE;
    xcb_window_t box = XCB_WINDOW_NONE;
    std::vector<xcb_window_t> requests;
};

} // namespace platform::x11
