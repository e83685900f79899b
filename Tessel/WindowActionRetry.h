#pragma once

#include "Platform/Accessibility.h"
#include "Platform/MainActor.h"
#include "Tessel/PlacementMemory.h"
#include "Tessel/WindowMover.h"
#include "TesselCore/WindowOrder.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace tessel {

/// Carries out actions and placements, and carries one out again where the desktop did not answer within the turn's
/// time.
///
/// Such an action leaves out the steps that depend on the answer: a window that rounds its size stays beside the edge
/// of the screen. A repeated action brings the window to where the first one was to bring it, and changes nothing where
/// that one was complete, so repeating it is safe. A window that was moved elsewhere meanwhile is left there. A later
/// action on the same window replaces the one that waits. Main thread only.
class WindowActionRetry {
public:
    /// What is carried out is told to `memory`, which must outlive this, and which knows the way back.
    explicit WindowActionRetry(PlacementMemory& memory)
        : memory(memory) {}

    /// Carries out the order now, and tells how far it got. If the desktop does not answer, the order is repeated three
    /// times at most, within some three seconds: a window that moves later than that surprises the user.
    WindowMover::Outcome perform(const WindowOrder& order, const platform::AXUIElement& window);

    /// Gives up everything that waits.
    void cancel() { waiting.clear(); }

private:
    struct Waiting {
        platform::AXUIElement window;
        std::unique_ptr<platform::ScheduledWork> work;
    };

    /// An order on its way.
    struct Task {
        WindowOrder order;
        platform::AXUIElement window;
        std::size_t retries = 0;
        /// The last attempt for which the window answered; until then, an empty one.
        WindowMover::Attempt made = {};
        bool isRemembered = false;
    };

    WindowMover::Outcome attempt(Task task);
    void forget(platform::AXUIElement window);
    void remember(Task& task, const WindowMover::Attempt& made);

    PlacementMemory& memory;
    std::vector<Waiting> waiting;
};

} // namespace tessel
