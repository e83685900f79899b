#include "Platform/Compositor/Placement.h"

#include <algorithm>
#include <cmath>

namespace platform::compositor {

namespace {

/// The requested frame, in whole points; parts without a request keep their value.
corvid::CGRect wholeFrame(const PlacementRequest& request, const corvid::CGRect& present) {
    const corvid::CGPoint origin = request.position.value_or(present.origin);
    const corvid::CGSize size = request.size.value_or(present.size);
    return {{std::round(origin.x), std::round(origin.y)},
            {std::max(1.0, std::round(size.width)), std::max(1.0, std::round(size.height))}};
}

} // namespace

void Placement::request(const WindowIdentifier& window, const PlacementRequest& part) {
    const auto found = std::ranges::find(waiting, window, &Job::first);
    if (found == waiting.end()) {
        waiting.emplace_back(window, part);
    } else {
        found->second.add(part);
    }
}

AXError Placement::settle(const WindowIdentifier& window) {
    const auto found = std::ranges::find(waiting, window, &Job::first);
    if (found != waiting.end()) {
        const Job job = std::move(*found);
        waiting.erase(found);
        unsettled.erase(window);
        const bool isTooLate = turn.deadline().hasPassed();
        const AXError outcome = carryOut(job, turn.deadline().end());
        if (outcome != AXError::success || isTooLate) {
            unsettled.insert_or_assign(window, outcome == AXError::success ? AXError::cannotComplete : outcome);
        }
    }
    const auto failed = unsettled.find(window);
    return failed == unsettled.end() ? AXError::success : failed->second;
}

void Placement::finishTurn() {
    for (const Job& job : std::exchange(waiting, {})) {
        static_cast<void>(carryOut(job, Instant{}));
    }
    unsettled.clear();
}

AXError Placement::carryOut(const Job& job, Instant deadline) {
    const auto& [window, request] = job;
    const WindowTable* table = turn.table();
    if (table == nullptr) {
        return AXError::apiDisabled;
    }
    const Window* present = table->find(window);
    if (present == nullptr) {
        return AXError::invalidUIElement;
    }
    if (present->isFullscreen) {
        return AXError::cannotComplete;
    }
    const corvid::CGRect frame = wholeFrame(request, present->frame);
    const bool isThere = frame == present->frame && !present->isTiled;
    return isThere ? AXError::success : access.place(window, frame, deadline);
}

} // namespace platform::compositor
