#pragma once

#include "Platform/Linux/Loop/MainLoop.h"

#include <memory>
#include <utility>

namespace platform::linux {

/// Posts work for later turns of the loop that is dropped with its owner: a member of the object that the work uses.
/// Main thread only.
class LaterWork {
public:
    /// The loop must outlive this.
    explicit LaterWork(MainLoop& mainLoop)
        : mainLoop(mainLoop) {}

    void post(MainActor::Work work) const {
        mainLoop.post([owner = std::weak_ptr(alive), work = std::move(work)]() mutable {
            if (!owner.expired()) {
                work();
            }
        });
    }

private:
    MainLoop& mainLoop;
    std::shared_ptr<const char> alive = std::make_shared<const char>();
};

} // namespace platform::linux
