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

/// Takes `WM_CLASS` apart: two texts, each with a zero behind it (ICCCM 4.1.2.5). A zero that is missing, or more than
/// two, is forgiven; a half that is missing is empty.
[[nodiscard]] WindowClass parseWindowClass(std::string_view bytes);

/// The id of a desktop entry that a window names, from `_GTK_APPLICATION_ID`, or else from `_KDE_NET_WM_DESKTOP_FILE`,
/// which some give as a file with its folder and suffix. Empty where neither says anything.
[[nodiscard]] std::string namedApplicationId(std::string_view gtkApplicationId, std::string_view kdeDesktopFile);

/// Whether a change of that property may tell more about the application behind the window.
[[nodiscard]] bool isApplicationClue(const AtomTable& atoms, xcb_atom_t property);

/// What a window tells of its application, in a single round trip: construct to ask, `read` to collect. However long
/// the properties are, little of them is read.
class ApplicationCluesRequest {
public:
    ApplicationCluesRequest(Connection& connection, xcb_window_t window);

    /// Nothing where the window is gone, is no top-level window of a client (override-redirect), or the server did not
    /// answer within the turn's time. To be called once.
    [[nodiscard]] std::optional<linux::ApplicationClues> read(Connection& connection) const;

private:
    xcb_get_window_attributes_cookie_t attributes;
    WindowOwnerRequest owner;
    xcb_get_property_cookie_t windowClass;
    xcb_get_property_cookie_t gtkApplicationId;
    xcb_get_property_cookie_t kdeDesktopFile;
};

} // namespace platform::x11
