#pragma once

#include "Platform/X11/RootFacts.h"
#include "Platform/X11/TilingManager.h"
#include "Platform/X11/WindowFacts.h"
#include "Platform/X11/WindowManager.h"
#include "Platform/X11/WorkSpaceRequest.h"

#include <map>
#include <optional>
#include <vector>

namespace platform::x11 {

/// The server's state as read in the present turn of the event loop: no request is sent twice in a turn, and nothing is
/// cached beyond it.
///
/// One round trip serves a whole press: the first request goes out together with a guess of the second one, for the
/// active window and the struts of the managed windows as the root last named them. The reply to the first request
/// shows whether the guess was right; if not, the correct second request follows.
class Turn {
public:
    explicit Turn(Connection& connection)
        : connection(connection) {}

    /// Forgets what was read.
    void begin();

    /// The present tiling window manager; null without one. Must outlive this, or be reset.
    void setTilingManager(TilingManager* present) {
        tilingInCharge = present;
        chooseTilingManager();
    }

    /// The one to ask in this turn: null also if it can be done without, and is not reachable.
    [[nodiscard]] TilingManager* tilingManager() const { return tiling; }

    /// How to work with the present window manager: who tells which fact.
    void setWindowManager(const WindowManager& manager) {
        capabilities = manager.capabilities;
        isManaged = manager.isPresent;
    }

    /// Drops the cached state of windows, because one of them was written to.
    void forgetWindows();

    /// The root's facts; null if the server did not reply in time.
    [[nodiscard]] const RootFacts* root();

    /// A window's facts; null if it is gone or the server did not reply in time.
    [[nodiscard]] const WindowFacts* window(xcb_window_t window);

    /// The same with the visible geometry of the window, also if no property has the decoration; null also if the
    /// server did not tell it. For a tiling window manager, only that window manager knows the decoration; null also if
    /// it does not reply. Every action takes a tiled window out of the layout; if its size has to change then, it has
    /// the geometry that it will have outside, with its present corner.
    [[nodiscard]] const WindowFacts* windowWithFrame(xcb_window_t window);

    /// Uses these as the window's facts until they are dropped: they are its predicted state.
    void takeWindow(xcb_window_t window, const WindowFacts& facts) { windows.insert_or_assign(window, facts); }

    /// Requests nothing else of this window in this turn: the window manager keeps it where it is.
    void leaveAlone(xcb_window_t window) { left = window; }

    [[nodiscard]] bool isLeftAlone(xcb_window_t window) const { return left == window; }

    /// Reads the facts of several windows in a single round trip, so that `window` need not request each.
    void readWindows(const std::vector<xcb_window_t>& wanted);

    /// Monitors and the panels on them; null if the server did not reply in time.
    [[nodiscard]] const WorkSpace* workSpace();

    /// Reads the root again because its active window, client list or desktop changed, so that the next press's guess
    /// is right. Returns the managed windows, oldest first; null if the server did not reply in time.
    [[nodiscard]] const std::vector<xcb_window_t>* renewGuess();

private:
    struct Guess {
        xcb_window_t activeWindow = XCB_WINDOW_NONE;
        std::vector<xcb_window_t> clients;
        std::uint32_t currentDesktop = 0;
    };

    /// Adds what a window manager without those properties does not tell; false if the server did not reply in time.
    [[nodiscard]] bool complete(RootFacts& facts);
    void chooseTilingManager();
    [[nodiscard]] const WindowFacts* windowInLayout(const WindowFacts& facts, xcb_window_t window);
    void takeWorkSpace(WorkSpace read);
    /// Null without a tiling window manager, or without its reply.
    [[nodiscard]] const Layout* layout();
    void rememberGuess(const RootFacts& facts);
    [[nodiscard]] bool guessedWorkSpaceIsRight() const;
    [[nodiscard]] xcb_atom_t monitorWorkAreasName(std::uint32_t desktop);

    Connection& connection;
    std::optional<RootFacts> rootFacts;
    std::optional<WorkSpace> space;
    std::map<xcb_window_t, std::optional<WindowFacts>> windows;
    TilingManager* tilingInCharge = nullptr;
    TilingManager* tiling = nullptr;
    Capabilities capabilities;
    /// Whether there is a window manager.
    bool isManaged = false;
    /// Requested once, with or without a reply.
    std::optional<std::optional<Layout>> readLayout;
    xcb_window_t left = XCB_WINDOW_NONE;
    Guess guess;
    std::map<std::uint32_t, xcb_atom_t> monitorWorkAreasNames;
};

} // namespace platform::x11
