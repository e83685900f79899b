#pragma once

#include "Platform/Sway/Door.h"
#include "Platform/Sway/HotKeys.h"
#include "Tests/Platform/I3Ipc/FakeSway.h"

#include <functional>
#include <string>
#include <vector>

/// A door to a peer of the test, with the loop that it lives in.
struct OpenDoor {
    static constexpr platform::ProcessIdentifier ownProcess = 4711;

    OpenDoor();

    /// Turns the loop until it holds; no if it does not within some seconds.
    [[nodiscard]] bool runUntil(const std::function<bool()>& condition);

    /// An event that tells of nothing but makes the layout be read, and waits for that.
    [[nodiscard]] bool refresh();

    [[nodiscard]] platform::Instant soon() const { return loop.now() + std::chrono::milliseconds(250); }

    FakeSway sway;
    platform::linux::MainLoop loop;
    platform::compositor::WindowTable table;
    platform::sway::Session session{loop, sway.path()};
    platform::sway::Door door{session, table, loop, ownProcess};
};
