#include "CorvidKit/DeferredToolkit.h"

#include <utility>

namespace corvid {

void DeferredToolkit::use(Work work, std::function<void()> failed) {
    if (toolkit) {
        work(*toolkit);
        return;
    }
    waiting.push_back({.work = std::move(work), .failed = std::move(failed)});
    if (waiting.size() == 1) {
        handOver([this] { enter(); });
    }
}

void DeferredToolkit::enter() {
    toolkit = start();
    for (const Waiting& each : std::exchange(waiting, {})) {
        if (toolkit) {
            each.work(*toolkit);
        } else {
            each.failed();
        }
    }
    if (toolkit) {
        toolkit->run();
    }
}

} // namespace corvid
