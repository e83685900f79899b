#include "Tests/Platform/Hyprland/OpenHyprland.h"

#include <poll.h>

bool runUntil(platform::linux::MainLoop& loop, const std::function<bool()>& condition) {
    constexpr std::chrono::seconds patience{10};
    const platform::Instant end = loop.now() + patience;
    while (loop.serve() != platform::HostedLoop::Outlook::ended) {
        if (condition()) {
            return true;
        }
        if (loop.now() > end) {
            return false;
        }
        constexpr int milliseconds = 5;
        pollfd waiting{.fd = loop.descriptor(), .events = POLLIN, .revents = 0};
        ::poll(&waiting, 1, milliseconds);
    }
    return false;
}
