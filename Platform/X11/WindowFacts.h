#pragma once

#include "Platform/Linux/Windows/WindowKind.h"
#include "Platform/Seam/Desktop/Accessibility.h"
#include "Platform/X11/Connection.h"
#include "Platform/X11/FrameGeometry.h"
#include "Platform/X11/SizeHints.h"
#include "Platform/X11/WindowOwner.h"

#include <optional>
#include <vector>

namespace platform::x11 {

using linux::WindowKind;

/// The server's data and the properties of a window at one moment.
struct WindowFacts {
    FrameGeometry geometry;
    /// The border that the server draws around the client, on each side.
    std::int32_t borderWidth = 0;
    SizeHints sizeHints;
    /// Whether `_GTK_FRAME_EXTENTS` is set at all: the client draws its own decoration.
    bool drawsOwnDecoration = false;
    bool isMaximizedHorizontally = false;
    bool isMaximizedVertically = false;
    bool isFullscreen = false;
    /// Whether a tiling window manager has it in its layout; see `Turn::windowWithFrame`.
    bool isTiled = false;
    /// The decoration that it will have outside the layout, if that is known and `geometry` has not taken it up.
    std::optional<Extents> decorationOutside = {};
    /// Whether it is known to take the size that its hints allow, rounded down, when it floats.
    bool roundsByHints = false;
    /// Whether the decoration comes from a tiling window manager, or from the window around the client.
    bool isLaidOut = false;
    /// Whether it has no entry in task bars (`_NET_WM_STATE_SKIP_TASKBAR`).
    bool skipsTaskBars = false;
    WindowKind kind = WindowKind::standard;
    ProcessIdentifier process = 0;

    [[nodiscard]] bool isMaximized() const { return isMaximizedHorizontally || isMaximizedVertically; }
};

/// The kind of a window by its `_NET_WM_WINDOW_TYPE` (the first type known to us counts; EWMH, Application Window
/// Properties) or, without that, by whether it is transient for another.
[[nodiscard]] WindowKind windowKind(const AtomTable& atoms, const std::vector<std::uint32_t>& types, bool isTransient);

/// Everything about one window in a single round trip: construct to request, `read` to collect.
class WindowFactsRequest {
public:
    WindowFactsRequest(Connection& connection, xcb_window_t window);

    /// Empty if the window is gone, is no top-level window of a client (override-redirect), or the server did not reply
    /// within the turn's time. Call it once.
    [[nodiscard]] std::optional<WindowFacts> read(Connection& connection);

private:
    xcb_get_geometry_cookie_t geometry;
    xcb_translate_coordinates_cookie_t origin;
    xcb_get_property_cookie_t decoration;
    xcb_get_property_cookie_t shadow;
    xcb_get_property_cookie_t sizeHints;
    xcb_get_property_cookie_t states;
    xcb_get_property_cookie_t types;
    xcb_get_property_cookie_t transientFor;
    WindowOwnerRequest owner;
};

} // namespace platform::x11
