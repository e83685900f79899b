#pragma once

#include "Platform/Accessibility.h"
#include "Platform/MainActor.h"
#include "TesselCore/WindowAction.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace tessel {

/// Carries out actions, and carries one out again where the desktop did not answer within the turn's time.
///
/// Such an action leaves out the steps that depend on the answer: a window that rounds its size stays beside the edge
/// of the screen. A repeated action changes nothing where the first one was complete, so repeating it is safe. A window
/// that was moved elsewhere meanwhile is left there. A later action on the same window replaces the one that waits.
/// Main thread only.
class WindowActionRetry {
public:
    /// Carries out the action now. If the desktop does not answer, the action is repeated three times at most, within
    /// some three seconds: a window that moves later than that surprises the user.
    void perform(WindowAction action, const platform::AXUIElement& window);

    /// Gives up everything that waits.
    void cancel() { waiting.clear(); }

private:
    struct Waiting {
        platform::AXUIElement window;
        std::unique_ptr<platform::ScheduledWork> work;
    };

    void attempt(WindowAction action, platform::AXUIElement window, std::size_t retries);
    void forget(platform::AXUIElement window);

    std::vector<Waiting> waiting;
};

} // namespace tessel
