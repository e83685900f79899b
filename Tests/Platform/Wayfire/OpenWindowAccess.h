#pragma once

#include "Platform/Wayfire/HotKeys.h"
#include "Platform/Wayfire/WindowAccess.h"
#include "Tests/Platform/Wayfire/FakeWayfire.h"

#include <poll.h>

#include <chrono>
#include <functional>

namespace platform::wayfire {

/// Window access to a simulated peer, with its loop.
struct OpenWindowAccess {
    static constexpr ProcessIdentifier ownProcess = 4711;

    /// Runs the loop until it holds; false if it does not within some seconds.
    [[nodiscard]] bool runUntil(const std::function<bool()>& condition) {
        constexpr std::chrono::seconds patience{10};
        const Instant end = loop.now() + patience;
        while (loop.serve() != HostedLoop::Outlook::ended && loop.now() < end) {
            if (condition()) {
                return true;
            }
            constexpr int milliseconds = 5;
            pollfd waiting{.fd = loop.descriptor(), .events = POLLIN, .revents = 0};
            ::poll(&waiting, 1, milliseconds);
        }
        return condition();
    }

    /// Sends an event that triggers a reading, and waits for that.
    [[nodiscard]] bool refresh() {
        const int before = wayfire.readings();
        wayfire.reportView("view-unmapped", nullptr);
        return runUntil([&] { return wayfire.readings() > before; });
    }

    [[nodiscard]] Instant soon() const { return loop.now() + std::chrono::milliseconds(250); }

    FakeWayfire wayfire;
    linux::MainLoop loop;
    compositor::WindowTable table;
    Session session{loop, wayfire.path()};
    WindowAccess access{session, table, loop, ownProcess, [] {
                            return AccessObstacle{.kind = AccessObstacle::Kind::silentCompositor, .desktop = "Wayfire"};
                        }};
};

} // namespace platform::wayfire
