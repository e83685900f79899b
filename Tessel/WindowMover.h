#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Seam/Desktop/Accessibility.h"
#include "TesselCore/PlacementTrail.h"
#include "TesselCore/WindowGoal.h"
#include "TesselCore/WindowOrder.h"

#include <cstdint>
#include <optional>
#include <vector>

/// The only class that reads and writes other applications' windows. Rectangles are in points in the accessibility
/// space.
///
/// Every failure is silent: a value that cannot be read is missing, a value that cannot be written stays as it is. Main
/// thread only, and checked; a call may block for as long as the platform waits for the window's application.
namespace tessel::WindowMover {

/// The focused window of the frontmost application; empty if that is this program.
[[nodiscard]] std::optional<platform::AXUIElement> focusedWindow();

/// Carries out an action on the screen that shows most of the window, once, and with one correction of the position if
/// the application did not take the size.
void perform(WindowAction action, const platform::AXUIElement& window);

/// The result of an order.
enum class Outcome : std::uint8_t {
    /// All its steps were made, or there was none to make.
    ended,
    /// The desktop did not answer in time, and the steps that depend on its answer were left out.
    unanswered,
    /// The window is gone, or took none of the steps, as in fullscreen.
    refused,
    /// The order was to restore the window, and its trail has no way back from its present frame.
    nothingToRestore,
};

/// An order that was carried out.
struct Attempt {
    Outcome outcome = Outcome::ended;
    /// The window's frame before, and the goal of the order; empty if there was no request to the window, as without
    /// another display to go to.
    std::optional<corvid::CGRect> before = {};
    std::optional<WindowGoal> goal = {};
    /// The window's present frame, as far as it has answered; empty if it cannot be moved (fullscreen).
    std::optional<corvid::CGRect> placed = {};
    /// The window's process.
    std::optional<platform::ProcessIdentifier> process = {};
};

/// The same as `perform`, for any order, and returns its result. `trail` is the window's own.
[[nodiscard]] Attempt attempt(const WindowOrder& order, const platform::AXUIElement& window,
                              const PlacementTrail& trail = {});

/// Moves a window to the goal of an earlier attempt. On another display the order would lead to a third.
[[nodiscard]] Attempt attempt(const WindowGoal& goal, const platform::AXUIElement& window);

/// The frame of a window.
[[nodiscard]] std::optional<corvid::CGRect> frame(const platform::AXUIElement& window);

/// An application's normal document windows, in the order in which it reports them.
[[nodiscard]] std::vector<platform::AXUIElement> standardWindows(const platform::AXUIElement& application);

/// Whether a window is a normal document window.
[[nodiscard]] bool isStandard(const platform::AXUIElement& window);

} // namespace tessel::WindowMover
