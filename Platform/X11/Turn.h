#pragma once

#include "Platform/X11/RootFacts.h"
#include "Platform/X11/TilingManager.h"
#include "Platform/X11/WindowFacts.h"
#include "Platform/X11/WorkSpaceRequest.h"

#include <map>
#include <optional>
#include <vector>

namespace platform::x11 {

/// What has been read from the server in the present turn of the event loop, so that nothing is asked for twice in a
/// turn and nothing is remembered beyond it.
///
/// One round trip serves a whole press: with the first question goes a guess of the second one, which is for the active
/// window and the struts of the managed windows as the root named them last. The answer to the first question tells
/// whether the guess was right; if not, the second question is asked properly.
class Turn {
public:
    explicit Turn(Connection& connection)
        : connection(connection) {}

    /// Forgets what was read.
    void begin();

    /// Who lays the windows out now; null where nobody does. Has to outlive this, or be taken back.
    void setTilingManager(TilingManager* inCharge) { tiling = inCharge; }

    [[nodiscard]] TilingManager* tilingManager() const { return tiling; }

    /// Forgets what was read about windows, because one of them was written to.
    void forgetWindows();

    /// The root's facts; null where the server did not answer in time.
    [[nodiscard]] const RootFacts* root();

    /// A window's facts; null where it is gone or the server did not answer in time.
    [[nodiscard]] const WindowFacts* window(xcb_window_t window);

    /// The same with a geometry that says where the window is in a person's eyes. Where windows are laid out, their
    /// decoration is known only to who does that; null also where that one does not tell. A window in a layout has the
    /// geometry that it will have outside, with its corner where it is: no action leaves it inside.
    [[nodiscard]] const WindowFacts* windowWithFrame(xcb_window_t window);

    /// Takes these for the window's facts until they are forgotten: they are what it is about to become.
    void takeWindow(xcb_window_t window, const WindowFacts& facts) { windows.insert_or_assign(window, facts); }

    /// Reads the facts of several windows in a single round trip, so that `window` need not ask for each.
    void readWindows(const std::vector<xcb_window_t>& wanted);

    /// Monitors and what takes space from them; null where the server did not answer in time.
    [[nodiscard]] const WorkSpace* workSpace();

    /// Reads the root again because its active window, client list or desktop changed, so that the next press's guess
    /// is right. Gives the managed windows, oldest first; null where the server did not answer in time.
    [[nodiscard]] const std::vector<xcb_window_t>* renewGuess();

private:
    struct Guess {
        xcb_window_t activeWindow = XCB_WINDOW_NONE;
        std::vector<xcb_window_t> clients;
        std::uint32_t currentDesktop = 0;
    };

    void takeWorkSpace(WorkSpace read);
    /// Null where nobody lays windows out, or does not answer.
    [[nodiscard]] const Layout* layout();
    void rememberGuess(const RootFacts& facts);
    [[nodiscard]] bool guessedWorkSpaceIsRight() const;
    [[nodiscard]] xcb_atom_t monitorWorkAreasName(std::uint32_t desktop);

    Connection& connection;
    std::optional<RootFacts> rootFacts;
    std::optional<WorkSpace> space;
    std::map<xcb_window_t, std::optional<WindowFacts>> windows;
    TilingManager* tiling = nullptr;
    /// Asked for once, whether or not there is an answer.
    std::optional<std::optional<Layout>> readLayout;
    Guess guess;
    std::map<std::uint32_t, xcb_atom_t> monitorWorkAreasNames;
};

} // namespace platform::x11
