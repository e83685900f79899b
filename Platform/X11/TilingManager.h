#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/X11/Connection.h"
#include "Platform/X11/FrameGeometry.h"
#include "Platform/X11/WindowManager.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::x11 {

/// A tiling window manager's data on the windows of its layout. All rectangles are in root coordinates.
struct Layout {
    struct Window {
        /// The visible rectangle of the window, now or once it is shown: with borders and title bar. Empty if X11 has
        /// it, in `_NET_FRAME_EXTENTS` or in the border that the server draws.
        std::optional<corvid::CGRect> frame = {};
        /// The same as it was last drawn; for a hidden window this may be outdated. Empty if `frame` is.
        std::optional<corvid::CGRect> drawn = {};
        /// Whether it is part of the layout, so that it has no position of its own.
        bool isTiled = false;
        /// Its borders and title bar once it is taken out of the layout: hidden borders come back, and a tab becomes a
        /// title bar. Empty if it is unknown.
        std::optional<Extents> bordersOutside = {};
        /// Whether it is known that the window manager rounds its size down by its hints when it floats.
        bool roundsByHints = false;

        friend bool operator==(const Window&, const Window&) = default;
    };

    /// Those that are on a workspace, shown or not.
    std::map<xcb_window_t, Window> windows;
    /// The area of each monitor without bars, docks and outer gaps. Empty if X11 has it.
    std::vector<corvid::CGRect> workAreas;

    friend bool operator==(const Layout&, const Layout&) = default;
};

/// The interface of a tiling window manager, which takes a window out of its layout only on a request in its own
/// protocol. Everything else of the desktop is X11's. Main thread only.
class TilingManager {
public:
    TilingManager() = default;
    TilingManager(const TilingManager&) = delete;
    TilingManager& operator=(const TilingManager&) = delete;
    virtual ~TilingManager() = default;

    /// Its name for people, and its name for other programs (`WindowManager::name`).
    [[nodiscard]] virtual std::string_view name() const = 0;

    /// Whether it may round the size of a floating window up, so that it is to be asked only for sizes that the window
    /// takes. Others take every size, or the next smaller one by the window's hints.
    [[nodiscard]] virtual bool roundsSizesUp() const { return false; }

    /// Whether no window can be placed without it. Otherwise the desktop is a plain X11 one while it is not reachable:
    /// windows that float are moved, and those of its layout stay.
    [[nodiscard]] virtual bool isIndispensable() const { return true; }

    /// Whether it accepts requests now. Call it only while it is the window manager.
    [[nodiscard]] virtual bool isReachable(Connection& connection) = 0;

    /// Empty if there was no plausible reply within the turn's time.
    [[nodiscard]] virtual std::optional<Layout> readLayout(Connection& connection) = 0;

    /// Takes the window out of the layout and requests this frame; the caller handles sizes that the window does not
    /// take. Returns whether it replied within the turn's time: the result must be read.
    virtual bool place(Connection& connection, xcb_window_t window, const corvid::CGRect& frame) = 0;
};

} // namespace platform::x11
