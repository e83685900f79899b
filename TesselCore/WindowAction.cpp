#include "TesselCore/WindowAction.h"

#include "CorvidKitCore/KeyCode.h"

#include <algorithm>
#include <cstdlib>

namespace tessel {
namespace {

using corvid::Shortcut;

struct Description {
    WindowAction action;
    std::string_view rawValue;
    std::string_view title;
    std::string_view symbol;
    std::uint32_t keyCode;
};

namespace KeyCode = corvid::KeyCode;

constexpr std::array<Description, 6> descriptions{{
    {WindowAction::leftHalf, "leftHalf", "Left half", "rectangle.lefthalf.filled", KeyCode::leftArrow},
    {WindowAction::rightHalf, "rightHalf", "Right half", "rectangle.righthalf.filled", KeyCode::rightArrow},
    {WindowAction::center, "center", "Center", "rectangle.center.inset.filled", KeyCode::c},
    {WindowAction::maximize, "maximize", "Maximize", "arrow.up.left.and.arrow.down.right", KeyCode::upArrow},
    {WindowAction::almostMaximize, "almostMaximize", "Almost maximize", "rectangle.inset.filled", KeyCode::d},
    {WindowAction::maximizeHeight, "maximizeHeight", "Maximize height", "rectangle.expand.vertical",
     KeyCode::downArrow},
}};

// The index into the table is the action's position in the declaration.
static_assert(std::ranges::equal(descriptions, WindowAction::allCases, {}, &Description::action));

constexpr const Description& description(WindowAction action) {
    return descriptions.at(static_cast<std::size_t>(static_cast<WindowAction::Case>(action)));
}

} // namespace

std::optional<WindowAction> WindowAction::fromRawValue(std::string_view rawValue) {
    const auto match = std::ranges::find(descriptions, rawValue, &Description::rawValue);
    return match != descriptions.end() ? std::optional{match->action} : std::nullopt;
}

std::string_view WindowAction::rawValue() const {
    return description(value).rawValue;
}

std::string_view WindowAction::title() const {
    return description(value).title;
}

std::string_view WindowAction::symbol() const {
    return description(value).symbol;
}

Shortcut WindowAction::shortcut() const {
    return {.keyCode = description(value).keyCode, .modifiers = Shortcut::control | Shortcut::option};
}

std::map<WindowAction, Shortcut> WindowAction::shortcuts() {
    std::map<WindowAction, Shortcut> all;
    for (const WindowAction action : allCases) {
        if (!all.emplace(action, action.shortcut()).second) {
            // An action listed twice would silently lose a shortcut.
            std::abort();
        }
    }
    return all;
}

} // namespace tessel
