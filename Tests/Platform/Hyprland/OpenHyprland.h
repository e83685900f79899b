#pragma once

#include "Platform/Compositor/WindowTable.h"
#include "Platform/Hyprland/Session.h"
#include "Platform/Hyprland/WindowAccess.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Tests/Platform/Hyprland/FakeHyprland.h"

#include <functional>

/// Runs a loop until the condition holds; false if it does not within some seconds.
[[nodiscard]] bool runUntil(platform::linux::MainLoop& loop, const std::function<bool()>& condition);

/// Window access to a played compositor, with its loop.
struct OpenHyprland {
    static constexpr platform::ProcessIdentifier ownProcess = 4711;

    [[nodiscard]] bool runUntil(const std::function<bool()>& condition) { return ::runUntil(loop, condition); }

    [[nodiscard]] platform::Instant soon() const { return loop.now() + std::chrono::milliseconds(250); }

    FakeHyprland peer;
    platform::linux::MainLoop loop;
    platform::compositor::WindowTable table;
    platform::hyprland::Session session{loop, [this] { return platform::hyprland::runningFolder(peer.facts()); }};
    platform::hyprland::WindowAccess access{session, table, loop, ownProcess};
};
