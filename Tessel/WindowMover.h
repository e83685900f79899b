#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Accessibility.h"
#include "TesselCore/PlacementTrail.h"
#include "TesselCore/WindowGoal.h"
#include "TesselCore/WindowOrder.h"

#include <cstdint>
#include <optional>
#include <vector>

/// The only place that reads and writes other applications' windows. Rectangles are in points in the accessibility
/// space.
///
/// Every failure is silent: what cannot be read is missing, what cannot be written stays as it is. Main thread only,
/// and checked; a call may block for as long as the platform waits for the window's application.
namespace tessel::WindowMover {

/// The focused window of the frontmost application; nothing where that is this program.
[[nodiscard]] std::optional<platform::AXUIElement> focusedWindow();

/// Carries out an action: on the screen that the window is mostly on, once, and with one correction of the position
/// where the application did not take the size.
void perform(WindowAction action, const platform::AXUIElement& window);

/// How far an order got.
enum class Outcome : std::uint8_t {
    /// All its steps were made, or there is nothing that could be placed.
    ended,
    /// The desktop did not answer in time, and the steps that depend on its answer were left out.
    unanswered,
    /// The window was to go back, and its trail leads nowhere from where it stands.
    nothingToRestore,
};

/// An order that was carried out.
struct Attempt {
    Outcome outcome = Outcome::ended;
    /// The window's frame before, and what the order came to; nothing where the window was asked for nothing, as where
    /// there is no other display to go to.
    std::optional<corvid::CGRect> before = {};
    std::optional<WindowGoal> goal = {};
    /// Where the window stands now, as far as it has answered; nothing where it cannot be moved (fullscreen).
    std::optional<corvid::CGRect> placed = {};
    /// Whose window it is.
    std::optional<platform::ProcessIdentifier> process = {};
};

/// The same as `perform`, of any order, and tells how far it got. `trail` is the window's way back.
[[nodiscard]] Attempt attempt(const WindowOrder& order, const platform::AXUIElement& window,
                              const PlacementTrail& trail = {});

/// Brings a window to what an earlier attempt was to bring it to. On another display the order would lead to a third.
[[nodiscard]] Attempt attempt(const WindowGoal& goal, const platform::AXUIElement& window);

/// Where a window is.
[[nodiscard]] std::optional<corvid::CGRect> frame(const platform::AXUIElement& window);

/// An application's normal document windows, in the order in which it reports them.
[[nodiscard]] std::vector<platform::AXUIElement> standardWindows(const platform::AXUIElement& application);

/// Whether a window is a normal document window.
[[nodiscard]] bool isStandard(const platform::AXUIElement& window);

} // namespace tessel::WindowMover
