#pragma once

#include "TesselCore/WindowAction.h"
#include "TesselCore/WindowPlacement.h"

#include <optional>
#include <string_view>
#include <variant>

namespace tessel {

/// An order by name: an action, which has a shortcut too, or a placement.
using WindowOrder = std::variant<WindowAction, WindowPlacement>;

/// The order of a raw value; empty for any other text. No action has the raw value of a placement.
[[nodiscard]] inline std::optional<WindowOrder> orderFromRawValue(std::string_view rawValue) {
    if (const auto action = WindowAction::fromRawValue(rawValue)) {
        return *action;
    }
    if (const auto placement = WindowPlacement::fromRawValue(rawValue)) {
        return *placement;
    }
    return std::nullopt;
}

} // namespace tessel
