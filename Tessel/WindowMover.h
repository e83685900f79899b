#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Accessibility.h"
#include "TesselCore/WindowAction.h"

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

/// How far an action got.
enum class Outcome : std::uint8_t {
    /// All its steps were made, or there is nothing that could be placed.
    ended,
    /// The desktop did not answer in time, and the steps that depend on its answer were left out.
    unanswered,
};

/// An action that was carried out.
struct Attempt {
    Outcome outcome = Outcome::ended;
    /// The window's frame before, and the one that it was asked for; nothing where it was asked for none.
    std::optional<corvid::CGRect> before = {};
    std::optional<corvid::CGRect> target = {};
};

/// The same as `perform`, and tells how far it got.
[[nodiscard]] Attempt attempt(WindowAction action, const platform::AXUIElement& window);

/// Where a window is.
[[nodiscard]] std::optional<corvid::CGRect> frame(const platform::AXUIElement& window);

/// An application's normal document windows, in the order in which it reports them.
[[nodiscard]] std::vector<platform::AXUIElement> standardWindows(const platform::AXUIElement& application);

/// Whether a window is a normal document window.
[[nodiscard]] bool isStandard(const platform::AXUIElement& window);

} // namespace tessel::WindowMover
