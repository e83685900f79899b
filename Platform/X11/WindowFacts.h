#pragma once

#include "Platform/Accessibility.h"
#include "Platform/X11/Connection.h"
#include "Platform/X11/FrameGeometry.h"

#include <xcb/res.h>

#include <optional>
#include <vector>

namespace platform::x11 {

/// What kind of window this is, as far as placing windows is concerned.
enum class WindowKind {
    standard,
    /// A dialog, utility or splash window: can be placed, but is not a document window.
    auxiliary,
    /// A desktop background, panel, menu, tooltip: nothing that a person would call a window.
    furniture,
};

/// What the server and the window's properties say about a window at one moment.
struct WindowFacts {
    FrameGeometry geometry;
    /// Whether `_GTK_FRAME_EXTENTS` is set at all: the client draws its own decoration.
    bool drawsOwnDecoration = false;
    bool isMaximizedHorizontally = false;
    bool isMaximizedVertically = false;
    bool isFullscreen = false;
    WindowKind kind = WindowKind::standard;
    ProcessIdentifier process = 0;

    [[nodiscard]] bool isMaximized() const { return isMaximizedHorizontally || isMaximizedVertically; }
};

/// The kind of a window by its `_NET_WM_WINDOW_TYPE` (the first type known to us counts; EWMH, Application Window
/// Properties) or, where it says nothing, by whether it is transient for another.
[[nodiscard]] WindowKind windowKind(const AtomTable& atoms, const std::vector<std::uint32_t>& types, bool isTransient);

/// The owner of a window: the process that the server knows behind the client's connection (X-Resource extension), else
/// what the client claims in `_NET_WM_PID`, else a negative number made of the client's resource base.
[[nodiscard]] ProcessIdentifier windowOwner(std::optional<std::uint32_t> localClientProcess,
                                            const std::vector<std::uint32_t>& claimed, xcb_window_t window,
                                            std::uint32_t resourceIdentifierMask);

/// Everything about one window in a single round trip: construct to ask, `read` to collect.
class WindowFactsRequest {
public:
    WindowFactsRequest(Connection& connection, xcb_window_t window);

    /// Nothing where the window is gone, is no top-level window of a client (override-redirect), or the server did not
    /// answer within the turn's time. To be called once.
    [[nodiscard]] std::optional<WindowFacts> read(Connection& connection);

private:
    xcb_window_t window;
    xcb_get_geometry_cookie_t geometry;
    xcb_translate_coordinates_cookie_t origin;
    xcb_get_property_cookie_t decoration;
    xcb_get_property_cookie_t shadow;
    xcb_get_property_cookie_t states;
    xcb_get_property_cookie_t types;
    xcb_get_property_cookie_t transientFor;
    xcb_get_property_cookie_t claimedProcess;
    xcb_res_query_client_ids_cookie_t owner;
};

} // namespace platform::x11
