#pragma once

#include "TesselCore/AppStatus.h"
#include "TesselCore/WindowAction.h"
#include "TesselCore/WindowMove.h"
#include "TesselCore/WindowPlacement.h"
#include "Tests/CorvidKitCore/Printing.h"

#include <ostream>
#include <variant>

/// Printing of the core's values in a failed test.
namespace tessel {

inline std::ostream& operator<<(std::ostream& out, WindowAction action) {
    return out << action.rawValue();
}

inline std::ostream& operator<<(std::ostream& out, WindowPlacement placement) {
    return out << placement.rawValue();
}

inline std::ostream& operator<<(std::ostream& out, AppStatus status) {
    return out << "status " << static_cast<int>(static_cast<AppStatus::Case>(status));
}

inline std::ostream& operator<<(std::ostream& out, const WindowMove& move) {
    if (const auto* resize = std::get_if<WindowMove::SetSize>(&move.step)) {
        return out << "size " << resize->size;
    }
    return out << "position " << std::get<WindowMove::SetPosition>(move.step).position;
}

} // namespace tessel
