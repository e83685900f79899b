#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/X11/TilingManager.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The commands that `Manager` gives, and what herbstluftwm's attributes say in reply (herbstluftwm(1), "OBJECTS"). The
/// commands print lines of words; names, which may have spaces, come last.
namespace platform::herbstluftwm {

/// A window, in pixels of the root.
struct Client {
    /// With borders and title.
    corvid::CGRect decorated;
    corvid::CGRect content;
    bool isTiled = false;
    /// Whether its size follows its hints while it floats (`sizehints_floating`).
    bool roundsByHints = false;
    /// The tag that it is on.
    std::string tag;

    /// Whether both have the same widths around their content.
    [[nodiscard]] bool hasDecorationOf(const Client& other) const;

    /// The same window with these widths around its content.
    [[nodiscard]] Client withDecoration(const x11::Extents& extents) const;

    friend bool operator==(const Client&, const Client&) = default;
};

struct State {
    std::map<xcb_window_t, Client> clients;
    /// The free areas of the monitors, by the tags that they show.
    std::map<std::string, corvid::CGRect> areas;
    xcb_window_t focused = XCB_WINDOW_NONE;
    /// The decoration of floating windows by the theme: of the focused one, and of the others. Empty if the theme has
    /// not all of the attributes of 0.9.5.
    std::optional<x11::Extents> aroundFocused = {};
    std::optional<x11::Extents> aroundOthers = {};

    friend bool operator==(const State&, const State&) = default;
};

/// Prints all windows and monitors, the focused window, and the theme of floating windows.
[[nodiscard]] std::vector<std::string> stateCommand();

/// Parses the output of the command above or below. Unknown and implausible lines are left out.
[[nodiscard]] State readState(std::string_view output);

/// X11 has the frames of the windows.
[[nodiscard]] x11::Layout layoutOf(const State& state);

/// The decoration that the window has while it floats, unless it is urgent or has none; empty if it is unknown.
[[nodiscard]] const std::optional<x11::Extents>& extentsOutside(xcb_window_t window, const State& state);

/// The corner from which herbstluftwm counts the positions of floating windows on the client's tag: that of the free
/// area of the monitor that shows it. `state` has at least one area.
[[nodiscard]] corvid::CGPoint originOf(const Client& client, const State& state);

/// Gives the window the visible rectangle `frame`, in root coordinates, and takes it out of the layout if it is in it:
/// together, so that no step is seen. Prints the client as it is then. `present` has the decoration that is reckoned
/// with.
///
/// herbstluftwm also moves floating windows on a plain request, unless the user has switched that off with
/// `sizehints_floating`.
[[nodiscard]] std::vector<std::string> placeCommand(xcb_window_t window, const Client& present, corvid::CGPoint origin,
                                                    const corvid::CGRect& frame);

} // namespace platform::herbstluftwm
