#pragma once

#include "Platform/Seam/Desktop/Accessibility.h"
#include "Platform/Seam/Desktop/MainActor.h"
#include "Tessel/PlacementMemory.h"
#include "Tessel/WindowMover.h"
#include "TesselCore/WindowOrder.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
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

    /// Receives the result of an order.
    using Ended = std::function<void(WindowMover::Outcome outcome)>;

    /// Carries out the order now, and returns its result. If the desktop does not answer, retries the order at most
    /// three times, within about three seconds: a window that moves later than that surprises the user. `ended`, if
    /// there is one, is called exactly once: before this returns or, if the order is retried, within about a second. It
    /// gets `unanswered` if no attempt by then had an answer, or the order was replaced or cancelled.
    WindowMover::Outcome perform(const WindowOrder& order, const platform::AXUIElement& window, Ended ended = {});

    /// Records an order that was carried out elsewhere, and retries it in the same way.
    void follow(const WindowOrder& order, const platform::AXUIElement& window, const WindowMover::Attempt& made);

    /// Cancels all pending orders.
    void cancel() { waiting.clear(); }

private:
    struct Waiting {
        platform::AXUIElement window;
        std::unique_ptr<platform::ScheduledWork> work;
    };

    /// Calls `Ended` once; when it is dropped at the latest.
    class Report {
    public:
        explicit Report(Ended ended)
            : ended(std::move(ended)) {}

        Report(const Report&) = delete;
        Report& operator=(const Report&) = delete;

        ~Report() { deliver(WindowMover::Outcome::unanswered); }

        void deliver(WindowMover::Outcome outcome) {
            if (const Ended receiver = std::exchange(ended, {})) {
                receiver(outcome);
            }
        }

    private:
        Ended ended;
    };

    /// A pending order.
    struct Task {
        WindowOrder order;
        platform::AXUIElement window;
        std::size_t retries = 0;
        /// The last attempt for which the window answered; empty before.
        WindowMover::Attempt made = {};
        bool isRemembered = false;
        /// Null if nobody wants to know.
        std::shared_ptr<Report> report = {};
    };

    WindowMover::Outcome attempt(Task task);
    void conclude(Task task, const WindowMover::Attempt& made);
    void forget(platform::AXUIElement window);
    void remember(Task& task, const WindowMover::Attempt& made);

    PlacementMemory& memory;
    std::vector<Waiting> waiting;
};

} // namespace tessel
