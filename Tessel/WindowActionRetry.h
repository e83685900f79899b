#pragma once

#include "Platform/Seam/Desktop/Accessibility.h"
#include "Platform/Seam/Desktop/MainActor.h"
#include "Tessel/PlacementMemory.h"
#include "Tessel/WindowMover.h"
#include "TesselCore/WindowOrder.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace tessel {

/// Carries out actions and placements, and retries one if the desktop did not answer within the turn's time.
///
/// Such an action leaves out the steps that depend on the answer: a window that rounds its size stays beside the edge
/// of the screen. A retry moves the window to the goal of the first attempt, and changes nothing if that attempt was
/// complete, so it is safe. A window that was moved elsewhere meanwhile stays there. A later action on the same window
/// replaces the pending one. Main thread only.
class WindowActionRetry {
public:
    /// `memory` records every order that is carried out, must outlive this, and provides the trail of a window.
    explicit WindowActionRetry(PlacementMemory& memory)
        : memory(memory) {}

    /// Carries out the order now, and returns its result. If the desktop does not answer, retries the order at most
    /// three times, within about three seconds: a window that moves later than that surprises the user.
    WindowMover::Outcome perform(const WindowOrder& order, const platform::AXUIElement& window);

    /// Records an order that was carried out elsewhere, and retries it in the same way.
    void follow(const WindowOrder& order, const platform::AXUIElement& window, const WindowMover::Attempt& made);

    /// Cancels all pending orders.
    void cancel() { waiting.clear(); }

private:
    struct Waiting {
        platform::AXUIElement window;
        std::unique_ptr<platform::ScheduledWork> work;
    };

    /// A pending order.
    struct Task {
        WindowOrder order;
        platform::AXUIElement window;
        std::size_t retries = 0;
        /// The last attempt for which the window answered; empty before.
        WindowMover::Attempt made = {};
        bool isRemembered = false;
    };

    WindowMover::Outcome attempt(Task task);
    void conclude(Task task, const WindowMover::Attempt& made);
    void forget(platform::AXUIElement window);
    void remember(Task& task, const WindowMover::Attempt& made);

    PlacementMemory& memory;
    std::vector<Waiting> waiting;
};

} // namespace tessel
