#include "Platform/Linux/Processes/ProcessExit.h"

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <utility>

namespace platform::linux {

std::unique_ptr<ProcessExit> ProcessExit::watch(MainLoop& mainLoop, ProcessIdentifier process,
                                                std::function<void()> ended) {
    if (process <= 0) {
        return nullptr;
    }
    // The declaration in glibc 2.36 cannot be linked from C++.
    FileDescriptor opened(static_cast<int>(syscall(SYS_pidfd_open, process, 0)));
    return opened ? std::make_unique<ProcessExit>(mainLoop, std::move(opened), std::move(ended)) : nullptr;
}

ProcessExit::ProcessExit(MainLoop& mainLoop, FileDescriptor opened, std::function<void()> endedFunction)
    : process(std::move(opened))
    , ended(std::move(endedFunction))
    , descriptorWatch(mainLoop.watch(process.get(), [] { return false; }, [this] { reportEnd(); })) {
}

bool ProcessExit::hasHappened() const {
    pollfd state{.fd = process.get(), .events = POLLIN, .revents = 0};
    return poll(&state, 1, 0) > 0;
}

void ProcessExit::reportEnd() {
    // The descriptor stays readable, so that the watch has to go, and before the descriptor does.
    descriptorWatch.reset();
    // The handler may drop this.
    const std::function<void()> callback = std::move(ended);
    callback();
}

} // namespace platform::linux
