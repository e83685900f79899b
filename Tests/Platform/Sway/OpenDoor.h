#pragma once

#include "Platform/Sway/Door.h"
#include "Platform/Sway/HotKeys.h"
#include "Tests/Platform/I3Ipc/FakeSway.h"

#include <functional>
#include <string>
#include <vector>

/// A door to a simulated peer, with its loop.
struct OpenDoor {
    static constexpr platform::ProcessIdentifier ownProcess = 4711;

    OpenDoor();

    /// Runs the loop until it holds; false if it does not within some seconds.
    [[nodiscard]] bool runUntil(const std::function<bool()>& condition);

    /// Sends an event without contents that triggers a reading of the layout, and waits for that.
    [[nodiscard]] bool refresh();

    [[nodiscard]] platform::Instant soon() const { return loop.now() + std::chrono::milliseconds(250); }

    FakeSway sway;
    platform::linux::MainLoop loop;
    platform::compositor::WindowTable table;
    platform::sway::Session session{loop, sway.path()};
    platform::sway::Door door{session, table, loop, ownProcess};
};
