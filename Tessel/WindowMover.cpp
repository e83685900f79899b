#include "Tessel/WindowMover.h"

#include "CorvidKit/Concurrency.h"
#include "Platform/Seam/Desktop/ProcessInfo.h"
#include "Platform/Seam/Desktop/Screens.h"
#include "Platform/Seam/Desktop/Workspace.h"
#include "Platform/Seam/Platform.h"
#include "TesselCore/WindowLayout.h"
#include "TesselCore/WindowMove.h"

#include <algorithm>
#include <cstddef>
#include <expected>
#include <iterator>
#include <string>
#include <utility>
#include <variant>

namespace tessel::WindowMover {

using corvid::CGPoint;
using corvid::CGRect;
using corvid::CGSize;
using platform::AXError;
using platform::AXUIElement;
using platform::AXValue;
namespace AXAttribute = platform::AXAttribute;

namespace {

platform::Accessibility& accessibility() {
    return platform::current().desktop.accessibility;
}

void assertMainThread(unsigned line) {
    corvid::assertIsolated({.file = "Tessel/WindowMover", .line = line});
}

/// Whether a value is a boxed number of any kind, as opposed to a text or an element, before it is unboxed.
bool isBoxed(const AXValue& value) {
    return std::holds_alternative<CGPoint>(value) || std::holds_alternative<CGSize>(value);
}

/// A point or a size, still boxed.
std::expected<AXValue, AXError> boxedAttribute(const AXUIElement& window, std::string_view attribute) {
    auto value = accessibility().copyAttributeValue(window, attribute);
    if (value && !isBoxed(*value)) {
        return std::unexpected(AXError::noValue);
    }
    return value;
}

std::expected<CGRect, AXError> readFrame(const AXUIElement& window) {
    const auto position = boxedAttribute(window, AXAttribute::position);
    if (!position) {
        return std::unexpected(position.error());
    }
    const auto size = boxedAttribute(window, AXAttribute::size);
    if (!size) {
        return std::unexpected(size.error());
    }
    const auto* origin = std::get_if<CGPoint>(&*position);
    const auto* extent = std::get_if<CGSize>(&*size);
    if (origin == nullptr || extent == nullptr) {
        return std::unexpected(AXError::noValue);
    }
    return CGRect{.origin = *origin, .size = *extent};
}

Outcome outcomeWithout(const std::expected<CGRect, AXError>& frame) {
    return frame.error() == AXError::cannotComplete ? Outcome::unanswered : Outcome::refused;
}

/// Boxes and writes; without a box nothing is written. Returns whether the window accepted it.
template <typename Payload>
bool write(const AXUIElement& window, std::string_view attribute, const Payload& payload) {
    const std::optional<AXValue> value = accessibility().createValue(payload);
    return value && accessibility().setAttributeValue(window, attribute, *value) == AXError::success;
}

bool carryOut(const WindowMove& move, const AXUIElement& window) {
    if (const auto* resize = std::get_if<WindowMove::SetSize>(&move.step)) {
        return write(window, AXAttribute::size, resize->size);
    }
    return write(window, AXAttribute::position, std::get<WindowMove::SetPosition>(move.step).position);
}

/// Runs a function with the owning application's enhanced user interface switched off: while it is on, an application
/// animates its windows and handles their writes late.
template <typename Work>
void withoutEnhancedUserInterface(const std::expected<platform::ProcessIdentifier, AXError>& process, Work work) {
    if (!process) {
        work();
        return;
    }
    const AXUIElement application = accessibility().applicationElement(*process);
    const auto value = accessibility().copyAttributeValue(application, AXAttribute::enhancedUserInterface);
    const bool* isOn = value ? std::get_if<bool>(&*value) : nullptr;
    if (isOn == nullptr || !*isOn) {
        work();
        return;
    }
    accessibility().setAttributeValue(application, AXAttribute::enhancedUserInterface, false);
    work();
    accessibility().setAttributeValue(application, AXAttribute::enhancedUserInterface, true);
}

/// The displays in the accessibility space, the primary one first.
std::vector<Display> displays() {
    std::vector<Display> found;
    const std::vector<platform::Screen> screens = platform::current().desktop.screens.screens();
    found.reserve(screens.size());
    for (const platform::Screen& screen : screens) {
        const double primaryScreenHeight = screens.front().frame.height();
        found.push_back({.frame = WindowLayout::flip(screen.frame, primaryScreenHeight),
                         .visible = WindowLayout::flip(screen.visibleFrame, primaryScreenHeight)});
    }
    return found;
}

Attempt place(const AXUIElement& window, const CGRect& current, const WindowGoal& goal) {
    const auto process = accessibility().processIdentifier(window);
    bool isTaken = false;
    withoutEnhancedUserInterface(process, [&] {
        for (const WindowMove& move : WindowMove::steps(current, goal.target)) {
            isTaken = carryOut(move, window) || isTaken;
        }
    });
    Attempt made{.outcome = isTaken ? Outcome::ended : Outcome::refused,
                 .before = current,
                 .goal = goal,
                 .placed = isTaken ? std::optional(goal.target) : std::nullopt,
                 .process = process ? std::optional(*process) : std::nullopt};
    const std::expected<CGRect, AXError> settled = readFrame(window);
    if (!settled) {
        made.outcome = outcomeWithout(settled);
        return made;
    }
    const std::optional<CGPoint> corrected = goal.correction(settled->size);
    if (corrected) {
        write(window, AXAttribute::position, *corrected);
    }
    if (isTaken) {
        made.placed = CGRect{.origin = corrected.value_or(settled->origin), .size = settled->size};
    }
    return made;
}

} // namespace

std::optional<AXUIElement> focusedWindow() {
    assertMainThread(__LINE__);
    const auto process = platform::current().desktop.workspace.frontmostApplication();
    if (!process || *process == platform::current().processInfo.processIdentifier()) {
        return std::nullopt;
    }
    const auto value =
        accessibility().copyAttributeValue(accessibility().applicationElement(*process), AXAttribute::focusedWindow);
    const auto* window = value ? std::get_if<AXUIElement>(&*value) : nullptr;
    return window == nullptr ? std::nullopt : std::optional(*window);
}

void perform(WindowAction action, const AXUIElement& window) {
    static_cast<void>(attempt(action, window));
}

Attempt attempt(const WindowOrder& order, const AXUIElement& window, const PlacementTrail& trail) {
    assertMainThread(__LINE__);
    const std::expected<CGRect, AXError> current = readFrame(window);
    if (!current) {
        return {.outcome = outcomeWithout(current)};
    }
    if (const std::optional<WindowGoal> goal = WindowGoal::of(order, *current, displays(), trail)) {
        return place(window, *current, *goal);
    }
    const bool isWayBack = order == WindowOrder(WindowPlacement(WindowPlacement::restore));
    return {.outcome = isWayBack ? Outcome::nothingToRestore : Outcome::ended};
}

Attempt attempt(const WindowGoal& goal, const AXUIElement& window) {
    assertMainThread(__LINE__);
    const std::expected<CGRect, AXError> current = readFrame(window);
    return current ? place(window, *current, goal) : Attempt{.outcome = outcomeWithout(current)};
}

std::optional<CGRect> frame(const AXUIElement& window) {
    assertMainThread(__LINE__);
    const std::expected<CGRect, AXError> present = readFrame(window);
    return present ? std::optional(*present) : std::nullopt;
}

std::vector<AXUIElement> standardWindows(const AXUIElement& application) {
    assertMainThread(__LINE__);
    const auto value = accessibility().copyAttributeValue(application, AXAttribute::windows);
    const auto* windows = value ? std::get_if<std::vector<AXUIElement>>(&*value) : nullptr;
    if (windows == nullptr) {
        return {};
    }
    std::vector<AXUIElement> standard;
    std::ranges::copy_if(*windows, std::back_inserter(standard), isStandard);
    return standard;
}

bool isStandard(const AXUIElement& window) {
    assertMainThread(__LINE__);
    const auto value = accessibility().copyAttributeValue(window, AXAttribute::subrole);
    const auto* subrole = value ? std::get_if<std::string>(&*value) : nullptr;
    return subrole != nullptr && *subrole == platform::AXSubrole::standardWindow;
}

} // namespace tessel::WindowMover
