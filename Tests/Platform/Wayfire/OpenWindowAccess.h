#pragma once

#include "Platform/Wayfire/HotKeys.h"
#include "Platform/Wayfire/WindowAccess.h"
#include "Tests/Platform/Linux/RunUntil.h"
#include "Tests/Platform/Wayfire/FakeWayfire.h"

#include <chrono>
#include <functional>

namespace platform::wayfire {

/// Window access to a simulated peer, with its loop.
struct OpenWindowAccess {
    static constexpr ProcessIdentifier ownProcess = 4711;

    [[nodiscard]] bool runUntil(const std::function<bool()>& condition) { return linux::runUntil(loop, condition); }

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
