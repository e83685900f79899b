#pragma once

#include "Platform/X11/Connection.h"
#include "Platform/X11/VisibleFrames.h"

#include <vector>

/// The bars that some window managers draw themselves (IceWM's taskbar, Fluxbox's toolbar): windows without a property,
/// which only show in the work area, if there is one. That is one box for all monitors and does not give the bar's
/// position.
namespace platform::x11 {

/// Whether the work area reserves more at an edge of the root window than any strut requests there.
[[nodiscard]] bool hasUnexplainedMargin(const WorkSpace& space);

/// Struts for the windows among `windows` (root coordinates) that explain such a margin: those that fill it exactly,
/// from the edge of the work area to the edge of the root window. Each reaches as far along the edge as its window
/// does.
[[nodiscard]] std::vector<Strut> strutsOfBars(const WorkSpace& space, const std::vector<corvid::CGRect>& windows);

/// Struts for the windows among `windows` (root coordinates) that cover a whole edge of the root window as bars do: for
/// a window manager without a work area.
[[nodiscard]] std::vector<Strut> strutsOfEdgeBars(corvid::CGSize rootSize, const std::vector<corvid::CGRect>& windows);

/// The outer rectangles of the visible windows that no window manager manages (override-redirect), in root coordinates.
/// Two round trips; empty if the server did not reply within the turn's time.
[[nodiscard]] std::vector<corvid::CGRect> readUnmanagedWindows(Connection& connection);

/// Those of them that the program which made `relative` draws into. Two round trips; empty as above.
[[nodiscard]] std::vector<corvid::CGRect> readUnmanagedWindowsOf(Connection& connection, xcb_window_t relative);

} // namespace platform::x11
