#include "Platform/Compositor/CompositorEnd.h"

#include "Platform/Linux/Log/Log.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

namespace platform::compositor {

namespace {

constexpr std::chrono::milliseconds endingLeeway{500};

} // namespace

CompositorEnd::CompositorEnd(MainActor& mainActor, std::function<bool()> hasLeft, std::function<void()> gone)
    : mainActor(mainActor)
    , hasLeft(std::move(hasLeft))
    , gone(std::move(gone)) {
}

void CompositorEnd::await() {
    work = mainActor.schedule(mainActor.now() + patience, endingLeeway, [this] { gone(); });
}

void CompositorEnd::lookUntil(Instant limit) {
    // A compositor closes its connections first and removes its sockets then.
    work = mainActor.schedule(mainActor.now() + betweenLooks, endingLeeway, [this, limit] {
        if (mainActor.now() >= limit || hasLeft()) {
            gone();
        } else {
            lookUntil(limit);
        }
    });
}

std::function<bool()> absenceOf(std::string socket) {
    return [socket = std::move(socket)] {
        std::error_code ignored;
        return !std::filesystem::exists(socket, ignored);
    };
}

std::function<void()> endOfLoop(linux::MainLoop& mainLoop, std::string compositor) {
    return [&mainLoop, compositor = std::move(compositor)] {
        linux::logToStandardError(compositor + " is gone");
        mainLoop.end(EXIT_FAILURE);
    };
}

} // namespace platform::compositor
