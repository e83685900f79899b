#pragma once

#include "CorvidKit/Concurrency.h"
#include "Platform/Seam/Desktop/Accessibility.h"
#include "Tessel/WindowMover.h"
#include "TesselCore/PlacementTrail.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace tessel {

/// The windows' frames before their placements, for `WindowPlacement::restore`. Kept in memory only, for the windows
/// that were placed last. A window's entry is removed when its application ends, and at the latest when another window
/// is placed after it was closed. Main thread only.
class PlacementMemory {
public:
    /// Windows beyond these are forgotten, those first that were placed longest ago: placing a new window asks
    /// each of their applications for its windows.
    static constexpr std::size_t mostWindows = 64;

    PlacementMemory() = default;
    PlacementMemory(const PlacementMemory&) = delete;
    PlacementMemory& operator=(const PlacementMemory&) = delete;
    ~PlacementMemory() = default;

    /// The trail of a window; an empty one for an unknown window.
    [[nodiscard]] const PlacementTrail& trail(const platform::AXUIElement& window) const;

    /// Records a placement of a window. One that did not move it is ignored.
    void add(const platform::AXUIElement& window, const WindowMover::Attempt& made);

    /// Records that a window was put back along its trail.
    void goBack(const platform::AXUIElement& window, const WindowMover::Attempt& made);

    /// Records that the last placement of a window was repeated.
    void amend(const platform::AXUIElement& window, const WindowMover::Attempt& made);

    /// The number of remembered windows.
    [[nodiscard]] std::size_t count() const { return windows.size(); }

private:
    struct Remembered {
        platform::AXUIElement window;
        platform::ProcessIdentifier process;
        PlacementTrail trail;
    };

    [[nodiscard]] std::vector<Remembered>::iterator find(const platform::AXUIElement& window);
    void forgetEnded(const platform::Notification& notification);
    void forgetClosed();
    void forgetPointless();

    /// In the order of their last placements.
    std::vector<Remembered> windows;
    std::optional<corvid::NotificationObservation> terminations;
};

} // namespace tessel
