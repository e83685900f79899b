#pragma once

#include "Platform/Compositor/WindowTable.h"
#include "Platform/Hyprland/Session.h"
#include "Platform/Hyprland/WindowAccess.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Tests/Platform/Hyprland/FakeHyprland.h"
#include "Tests/Platform/Linux/RunUntil.h"

#include <functional>

/// Window access to a played compositor, with its loop.
struct OpenHyprland {
    static constexpr platform::ProcessIdentifier ownProcess = 4711;

    [[nodiscard]] bool runUntil(const std::function<bool()>& condition) {
        return platform::linux::runUntil(loop, condition);
    }

    [[nodiscard]] platform::Instant soon() const { return loop.now() + std::chrono::milliseconds(250); }

    FakeHyprland peer;
    platform::linux::MainLoop loop;
    platform::compositor::WindowTable table;
    platform::hyprland::Session session{loop, [this] { return platform::hyprland::runningFolder(peer.facts()); }};
    platform::hyprland::WindowAccess access{session, table, loop, ownProcess};
};
