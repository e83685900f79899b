#pragma once

#include "Platform/Compositor/Turn.h"
#include "Platform/Compositor/WindowAccess.h"
#include "Platform/Linux/Windows/PlacementRequest.h"

#include <map>
#include <utility>
#include <vector>

namespace platform::compositor {

using linux::PlacementRequest;

/// Moves and resizes windows through the window access. Collects the requests for a window until they are carried out,
/// so that a size, a position and a size again become one frame. Rectangles are in the compositor's own space; requests
/// to the window access are in whole points.
class Placement {
public:
    Placement(WindowAccess& access, Turn& turn)
        : access(access)
        , turn(turn) {}

    /// Adds to the requests for a window.
    void request(const WindowIdentifier& window, const PlacementRequest& part);

    /// Carries out the pending requests for this window, and waits until it has come to rest. If it has not, returns
    /// the same error again for the rest of the turn, because the frame in the table is not the final one.
    [[nodiscard]] AXError settle(const WindowIdentifier& window);

    /// Ends the turn: sends all pending requests, without waiting for any of them.
    void finishTurn();

private:
    using Job = std::pair<WindowIdentifier, PlacementRequest>;

    [[nodiscard]] AXError carryOut(const Job& job, Instant deadline);

    WindowAccess& access;
    Turn& turn;
    /// The oldest first, one for each window.
    std::vector<Job> waiting;
    /// Windows of this turn that have not come to rest in time.
    std::map<WindowIdentifier, AXError> unsettled;
};

} // namespace platform::compositor
