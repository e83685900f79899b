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
    /// The tag that it is on.
    std::string tag;

    /// Whether both have the same widths around their content.
    [[nodiscard]] bool hasDecorationOf(const Client& other) const;

    friend bool operator==(const Client&, const Client&) = default;
};

struct State {
    std::map<xcb_window_t, Client> clients;
    /// The free areas of the monitors, by the tags that they show.
    std::map<std::string, corvid::CGRect> areas;

    friend bool operator==(const State&, const State&) = default;
};

/// Prints all windows and monitors.
[[nodiscard]] std::vector<std::string> stateCommand();

/// Parses the output of the command above or below. Unknown and implausible lines are left out.
[[nodiscard]] State readState(std::string_view output);

/// X11 has the frames of the windows.
[[nodiscard]] x11::Layout layoutOf(const State& state);

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
