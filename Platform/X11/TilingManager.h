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

/// What a tiling window manager says of the windows that it lays out. All rectangles are in root coordinates.
struct Layout {
    struct Window {
        /// The rectangle that a person takes for the window, or will once it is shown: borders and title bar in.
        corvid::CGRect frame;
        /// The same as it was last drawn; of a window that nobody sees, this may be of former times.
        corvid::CGRect drawn;
        /// Whether it is part of the layout, so that it has no place of its own.
        bool isTiled = false;
        /// Its borders and title bar once it is taken out of the layout: borders that are hidden there come back, and a
        /// tab becomes a title. Nothing where that is not known.
        std::optional<Extents> bordersOutside = {};

        friend bool operator==(const Window&, const Window&) = default;
    };

    /// Those that are on a workspace, shown or not.
    std::map<xcb_window_t, Window> windows;
    /// What each monitor has room for beside bars, docks and the gaps that are kept at the edges.
    std::vector<corvid::CGRect> workAreas;

    friend bool operator==(const Layout&, const Layout&) = default;
};

/// The way to a window manager that lays windows out, and takes one out of its layout only if it is asked in its own
/// language. All else of the desktop is X11's. Main thread only.
class TilingManager {
public:
    TilingManager() = default;
    TilingManager(const TilingManager&) = delete;
    TilingManager& operator=(const TilingManager&) = delete;
    virtual ~TilingManager() = default;

    /// Its name for people, and as it identifies itself to others (`WindowManager::name`).
    [[nodiscard]] virtual std::string_view name() const = 0;

    /// Whether it can be asked now. To be called while it is the one in charge.
    [[nodiscard]] virtual bool isReachable(Connection& connection) = 0;

    /// Nothing where it did not answer, sensibly and within the turn's time.
    [[nodiscard]] virtual std::optional<Layout> readLayout(Connection& connection) = 0;

    /// Takes the window out of the layout and asks for this frame; sizes that the window does not take are others'
    /// concern. Whether it answered within the turn's time: what became of the window is to be read.
    virtual bool place(Connection& connection, xcb_window_t window, const corvid::CGRect& frame) = 0;
};

} // namespace platform::x11
