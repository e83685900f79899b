#pragma once

#include "Platform/Sway/HotKeys.h"
#include "Platform/Sway/WindowAccess.h"
#include "Tests/Platform/I3Ipc/FakeSway.h"
#include "Tests/Platform/Linux/RunUntil.h"

#include <functional>
#include <string>
#include <vector>

/// Window access to a simulated peer, with its loop.
struct OpenWindowAccess {
    static constexpr platform::ProcessIdentifier ownProcess = 4711;

    OpenWindowAccess();

    [[nodiscard]] bool runUntil(const std::function<bool()>& condition) {
        return platform::linux::runUntil(loop, condition);
    }

    /// Sends an event without contents that triggers a reading of the layout, and waits for that.
    [[nodiscard]] bool refresh();

    [[nodiscard]] platform::Instant soon() const { return loop.now() + std::chrono::milliseconds(250); }

    FakeSway sway;
    platform::linux::MainLoop loop;
    platform::compositor::WindowTable table;
    platform::sway::Session session{loop, sway.path()};
    platform::sway::WindowAccess access{session, table, loop, ownProcess};
};
