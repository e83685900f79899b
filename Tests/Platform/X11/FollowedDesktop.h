#pragma once

#include "../Linux/Applications/PlainApplications.h"
#include "ClientProcess.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/X11/Connection.h"
#include "Platform/X11/Desktop.h"
#include "TestClient.h"
#include "XServer.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform::x11 {

/// A server, a simulated window manager, and the desktop under test with its event loop. It records the application
/// events.
class FollowedDesktop {
public:
    /// `lacking` names extensions that the server starts without.
    explicit FollowedDesktop(const std::vector<std::string>& lacking = {})
        : server(lacking) {}

    XServer server;
    TestClient testClient{server.display()};
    linux::MainLoop mainLoop;
    linux::PlainIdentification identification;
    linux::PlainCatalogue catalogue;
    /// "launch editor", "terminate editor"; "nobody" for an unidentified application.
    std::vector<std::string> reported;
    std::vector<RunningApplicationReference> reportedApplications;
    std::unique_ptr<Desktop> desktop;

    /// Opens the desktop and begins to follow applications.
    void start(std::unique_ptr<TilingManager> tiling = {});

    /// Opens a window of that program with that class, managed from now on. Events are delivered only when the loop
    /// runs.
    xcb_window_t openWindow(const ClientProcess& client, const std::string& className);

    /// The same, but not managed yet.
    xcb_window_t makeWindow(const ClientProcess& client, const std::string& className);

    /// Destroys a window and removes it from the list.
    void closeWindow(xcb_window_t window);

    /// The windows that are managed, oldest first; `list` makes it so.
    std::vector<xcb_window_t> managed;
    void list() { testClient.list(managed); }

    /// Runs the event loop until the condition holds; false if it does not within some seconds.
    [[nodiscard]] bool runUntil(const std::function<bool()>& condition);

    /// Runs the event loop until every earlier event has had its effect: a new program opens a window, whose launch is
    /// reported last.
    void settle();

    /// Runs the event loop until no work is left; stops the test with an exception if it never comes to rest.
    void drain();

    /// The longest turn of the event loop, including its wait of at most 10 ms, but without the time for which other
    /// processes had the processors.
    [[nodiscard]] std::chrono::steady_clock::duration longestTurn() const { return longest; }

    /// All waiting of a turn, and what has to be done with what came.
    static constexpr std::chrono::milliseconds longestAllowedTurn =
        linux::TurnDeadline::turnLimit + std::chrono::milliseconds(150);

    void forgetLongestTurn() { longest = {}; }

    [[nodiscard]] platform::RunningApplications& applications() { return desktop->parts().runningApplications; }

private:
    std::chrono::steady_clock::duration longest{};
    int settlings = 0;
};

} // namespace platform::x11
