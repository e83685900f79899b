#pragma once

#include "Platform/X11/Connection.h"

#include <cstdint>
#include <vector>

namespace platform::x11 {

/// The sizes that a client accepts (ICCCM 4.1.2.3, `WM_NORMAL_HINTS`), in pixels of the client window.
struct SizeHints {
    std::uint32_t minimumWidth = 1;
    std::uint32_t minimumHeight = 1;
    std::uint32_t maximumWidth = 32767;
    std::uint32_t maximumHeight = 32767;
    std::uint32_t baseWidth = 0;
    std::uint32_t baseHeight = 0;
    std::uint32_t widthIncrement = 1;
    std::uint32_t heightIncrement = 1;
    /// The point of the window that its position refers to (ICCCM 4.1.5); NorthWest if it names none.
    std::uint32_t gravity = XCB_GRAVITY_NORTH_WEST;

    /// Whether the client grows in steps, as terminals do by rows and columns.
    [[nodiscard]] bool hasIncrements() const { return widthIncrement > 1 || heightIncrement > 1; }

    friend bool operator==(const SizeHints&, const SizeHints&) = default;
};

/// The hints from the property's values; a missing or implausible value counts as unset.
[[nodiscard]] SizeHints sizeHintsFromValues(const std::vector<std::uint32_t>& values);

/// Requests a window's hints; the values of the reply are for `sizeHintsFromValues`.
[[nodiscard]] xcb_get_property_cookie_t requestSizeHints(Connection& connection, xcb_window_t window);

struct ClientSize {
    std::uint32_t width = 0;
    std::uint32_t height = 0;

    friend bool operator==(const ClientSize&, const ClientSize&) = default;
};

/// The size that a window manager which respects the hints gives a client that requested `wanted`.
[[nodiscard]] ClientSize constrainedSize(const SizeHints& hints, ClientSize wanted);

} // namespace platform::x11
