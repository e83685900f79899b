#pragma once

#include "Platform/Linux/Applications/ApplicationIdentification.h"
#include "Platform/X11/Connection.h"
#include "Platform/X11/WindowOwner.h"

#include <optional>
#include <string>
#include <string_view>

namespace platform::x11 {

/// The two halves of `WM_CLASS`.
struct WindowClass {
    std::string instance;
    std::string className;

    friend bool operator==(const WindowClass&, const WindowClass&) = default;
};

/// Parses `WM_CLASS`: two texts, each followed by a zero (ICCCM 4.1.2.5). A missing zero or additional ones are
/// tolerated; a missing half is empty.
[[nodiscard]] WindowClass parseWindowClass(std::string_view bytes);

/// The id of the desktop entry that a window names, from `_GTK_APPLICATION_ID`, or else from
/// `_KDE_NET_WM_DESKTOP_FILE`, which some programs set to a file with its folder and suffix. Empty without either.
[[nodiscard]] std::string namedApplicationId(std::string_view gtkApplicationId, std::string_view kdeDesktopFile);

/// Whether a change of that property may identify the application of the window.
[[nodiscard]] bool isApplicationClue(const AtomTable& atoms, xcb_atom_t property);

/// The properties that identify a window's application, in a single round trip: construct to request, `read` to
/// collect. It reads only the beginning of long properties.
class ApplicationCluesRequest {
public:
    ApplicationCluesRequest(Connection& connection, xcb_window_t window);

    /// Empty if the window is gone, is no top-level window of a client (override-redirect), or the server did not reply
    /// within the turn's time. Call it once.
    [[nodiscard]] std::optional<linux::ApplicationClues> read(Connection& connection) const;

private:
    xcb_get_window_attributes_cookie_t attributes;
    WindowOwnerRequest owner;
    xcb_get_property_cookie_t windowClass;
    xcb_get_property_cookie_t gtkApplicationId;
    xcb_get_property_cookie_t kdeDesktopFile;
};

} // namespace platform::x11
