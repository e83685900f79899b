#pragma once

#include "CorvidKit/Concurrency.h"
#include "Platform/Accessibility.h"
#include "Tessel/WindowMover.h"
#include "TesselCore/PlacementTrail.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace tessel {

/// Where the windows stood before they were placed, for `WindowPlacement::restore`. Kept in memory only, for the
/// windows that were placed last; what is known of a window goes with its application, and at the latest when another
/// window is placed after it was closed. Main thread only.
class PlacementMemory {
public:
    /// Windows beyond these are forgotten, those first that were placed longest ago: placing a new window asks
    /// each of their applications for its windows.
    static constexpr std::size_t mostWindows = 64;

    PlacementMemory() = default;
    PlacementMemory(const PlacementMemory&) = delete;
    PlacementMemory& operator=(const PlacementMemory&) = delete;
    ~PlacementMemory() = default;

    /// The way back of a window; an empty one where nothing is known.
    [[nodiscard]] const PlacementTrail& trail(const platform::AXUIElement& window) const;

    /// A window was placed. What did not move it is of no account.
    void add(const platform::AXUIElement& window, const WindowMover::Attempt& made);

    /// A window was put back to where its trail led.
    void goBack(const platform::AXUIElement& window, const WindowMover::Attempt& made);

    /// The last placement of a window was repeated.
    void amend(const platform::AXUIElement& window, const WindowMover::Attempt& made);

    /// How many windows are remembered.
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

    /// The one that was placed last is the last.
    std::vector<Remembered> windows;
    std::optional<corvid::NotificationObservation> terminations;
};

} // namespace tessel
