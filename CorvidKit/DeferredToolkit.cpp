#include "CorvidKit/DeferredToolkit.h"

#include <utility>

namespace corvid {

void DeferredToolkit::use(Work work, std::function<void()> failed) {
    if (toolkit && waiting.empty()) {
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
    if (!toolkit) {
        for (const Waiting& each : std::exchange(waiting, {})) {
            each.failed();
        }
        return;
    }
    // In a turn of its own: starting may have taken all the time that one turn has for questions to the desktop.
    mainActor.post([this] {
        for (const Waiting& each : std::exchange(waiting, {})) {
            each.work(*toolkit);
        }
    });
    toolkit->run();
}

} // namespace corvid
