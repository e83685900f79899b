#pragma once

#include "Platform/Linux/MainLoop.h"

#include <systemd/sd-event.h>

#include <chrono>
#include <cstdint>
#include <functional>

namespace platform::linux {

/// Turns the loop until a condition holds, ten seconds at most; says whether it came to hold.
inline bool runUntil(MainLoop& loop, const std::function<bool()>& holds) {
    const Instant deadline = loop.now() + std::chrono::seconds(10);
    bool hasEnded = false;
    while (!holds() && loop.now() < deadline && !hasEnded) {
        hasEnded = sd_event_run(loop.handle(), std::uint64_t{2000}) < 0;
    }
    return holds();
}

} // namespace platform::linux
