#pragma once

#include "../Linux/Applications/PlainApplications.h"
#include "ClientProcess.h"
#include "Hand.h"
#include "Platform/Linux/MainLoop.h"
#include "Platform/X11/Connection.h"
#include "Platform/X11/Desktop.h"
#include "XServer.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform::x11 {

/// A server, a window manager played by hand, and the desktop under test with its event loop. What the desktop tells of
/// applications is written down.
class FollowedDesktop {
public:
    /// `lacking` names extensions that the server is to go without.
    explicit FollowedDesktop(const std::vector<std::string>& lacking = {})
        : server(lacking) {}

    XServer server;
    Hand hand{server.display()};
    linux::MainLoop mainLoop;
    linux::PlainIdentification identification;
    linux::PlainCatalogue catalogue;
    /// "launch editor", "terminate editor"; "nobody" for one that is not identified.
    std::vector<std::string> told;
    std::vector<RunningApplicationReference> toldApplications;
    std::unique_ptr<Desktop> desktop;

    /// Opens the desktop and begins to follow applications.
    void start(std::unique_ptr<TilingManager> tiling = {});

    /// A window of that program with that class, managed from now on. Nothing is told before the loop turns.
    xcb_window_t openWindow(const ClientProcess& client, const std::string& className);

    /// The same, but not managed yet.
    xcb_window_t makeWindow(const ClientProcess& client, const std::string& className);

    /// Destroys a window and takes it from the list.
    void closeWindow(xcb_window_t window);

    /// The windows that are managed, oldest first; `list` makes it so.
    std::vector<xcb_window_t> managed;
    void list() { hand.list(managed); }

    /// Turns the event loop until the condition holds; false if it does not within some seconds.
    [[nodiscard]] bool runUntil(const std::function<bool()>& condition);

    /// Turns the event loop until all that has happened so far has had its effect. A program that nobody knows opens a
    /// window and is told last: what was to come before it has come.
    void settle();

    /// Turns the event loop until it has nothing to do; stops the test with an exception if it never comes to rest.
    void drain();

    /// The longest that one turn of the event loop has taken, its wait included, which is of 10 ms at most; without the
    /// time for which other processes had the processors.
    [[nodiscard]] std::chrono::steady_clock::duration longestTurn() const { return longest; }

    /// All waiting of a turn, and what has to be done with what came.
    static constexpr std::chrono::milliseconds longestAllowedTurn =
        linux::TurnDeadline::turnLimit + std::chrono::milliseconds(150);

    void forgetLongestTurn() { longest = {}; }

    [[nodiscard]] RunningApplications& applications() { return desktop->runningApplications(); }

private:
    std::chrono::steady_clock::duration longest{};
    int settlings = 0;
};

} // namespace platform::x11
