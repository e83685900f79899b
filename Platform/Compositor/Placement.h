#pragma once

#include "Platform/Compositor/Door.h"
#include "Platform/Compositor/Turn.h"
#include "Platform/Linux/Windows/PlacementRequest.h"

#include <map>
#include <utility>
#include <vector>

namespace platform::compositor {

using linux::PlacementRequest;

/// Moves and resizes windows through the door. Requests of one window gather until they are carried out, so that a
/// size, a position and a size again are the one frame that they amount to. Rectangles are in the compositor's own
/// space; what is asked of the door is in whole points.
class Placement {
public:
    Placement(Door& door, Turn& turn)
        : door(door)
        , turn(turn) {}

    /// Adds to what is asked of a window.
    void request(const WindowIdentifier& window, const PlacementRequest& part);

    /// Carries out what waits for this window, and waits until it has come to rest. Gives an error, in the same turn
    /// again and again, where it has not, so that the frame in the table is not the one that it will have.
    [[nodiscard]] AXError settle(const WindowIdentifier& window);

    /// Ends the turn: asks for all that waits still, without waiting for any of it.
    void finishTurn();

private:
    using Job = std::pair<WindowIdentifier, PlacementRequest>;

    [[nodiscard]] AXError carryOut(const Job& job, Instant deadline);

    Door& door;
    Turn& turn;
    /// The oldest first, one for each window.
    std::vector<Job> waiting;
    /// Windows of this turn that have not come to rest in time.
    std::map<WindowIdentifier, AXError> unsettled;
};

} // namespace platform::compositor
