#include "Tests/Platform/Sway/OpenWindowAccess.h"

#include <poll.h>

#include <csignal>

OpenWindowAccess::OpenWindowAccess() = default;

bool OpenWindowAccess::runUntil(const std::function<bool()>& condition) {
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

bool OpenWindowAccess::refresh() {
    const int before = sway.treeReadings();
    sway.send(0x80000003, R"({"change":"focus","container":{}})");
    return runUntil([&] { return sway.treeReadings() > before; });
}
