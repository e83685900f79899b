#include "Platform/Compositor/CompositorEnd.h"

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

} // namespace platform::compositor
