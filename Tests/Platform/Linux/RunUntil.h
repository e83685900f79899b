#pragma once

#include "Platform/Linux/Loop/MainLoop.h"

#include <poll.h>

#include <chrono>
#include <functional>

namespace platform::linux {

/// Runs a loop until the condition holds; false if it does not within some seconds.
[[nodiscard]] inline bool runUntil(MainLoop& loop, const std::function<bool()>& condition) {
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

} // namespace platform::linux
