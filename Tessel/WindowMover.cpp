#include "Tessel/WindowMover.h"

#include "CorvidKit/Concurrency.h"
#include "Platform/Platform.h"
#include "Platform/ProcessInfo.h"
#include "Platform/Screens.h"
#include "Platform/Workspace.h"
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
    return platform::current().accessibility;
}

void assertMainThread(unsigned line) {
    corvid::assertIsolated({.file = "Tessel/WindowMover", .line = line});
}

/// Whether a value is a boxed number, of whatever kind: what tells it from a text or an element before it is unboxed.
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
    return frame.error() == AXError::cannotComplete ? Outcome::unanswered : Outcome::ended;
}

/// Boxes and writes; without a box nothing is written.
template <typename Payload>
void write(const AXUIElement& window, std::string_view attribute, const Payload& payload) {
    if (const std::optional<AXValue> value = accessibility().createValue(payload)) {
        accessibility().setAttributeValue(window, attribute, *value);
    }
}

void carryOut(const WindowMove& move, const AXUIElement& window) {
    if (const auto* resize = std::get_if<WindowMove::SetSize>(&move.step)) {
        write(window, AXAttribute::size, resize->size);
    } else {
        write(window, AXAttribute::position, std::get<WindowMove::SetPosition>(move.step).position);
    }
}

/// Runs a block of work with the owning application's enhanced user interface switched off: while it is on, an
/// application animates its windows and takes their writes late.
template <typename Work>
void withoutEnhancedUserInterface(const AXUIElement& window, Work work) {
    const auto process = accessibility().processIdentifier(window);
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

} // namespace

std::optional<AXUIElement> focusedWindow() {
    assertMainThread(__LINE__);
    const auto process = platform::current().workspace.frontmostApplication();
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

Attempt attempt(WindowAction action, const AXUIElement& window) {
    assertMainThread(__LINE__);
    const std::expected<CGRect, AXError> current = readFrame(window);
    if (!current) {
        return {.outcome = outcomeWithout(current)};
    }
    const std::vector<platform::Screen> screens = platform::current().screens.screens();
    if (screens.empty()) {
        return {};
    }
    const double primaryScreenHeight = screens.front().frame.height();
    std::vector<CGRect> frames;
    frames.reserve(screens.size());
    for (const platform::Screen& screen : screens) {
        frames.push_back(WindowLayout::flip(screen.frame, primaryScreenHeight));
    }
    const std::optional<std::size_t> index = WindowLayout::bestScreen(*current, frames);
    if (!index) {
        return {};
    }
    const CGRect visible = WindowLayout::flip(screens[*index].visibleFrame, primaryScreenHeight);
    const CGRect target = WindowLayout::targetFrame(action, *current, visible);
    withoutEnhancedUserInterface(window, [&] {
        for (const WindowMove& move : WindowMove::steps(*current, target)) {
            carryOut(move, window);
        }
    });
    const std::expected<CGRect, AXError> settled = readFrame(window);
    if (!settled) {
        return {.outcome = outcomeWithout(settled), .before = *current, .target = target};
    }
    if (const auto position = WindowMove::correction(action, settled->size, target, visible)) {
        write(window, AXAttribute::position, *position);
    }
    return {.outcome = Outcome::ended, .before = *current, .target = target};
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
