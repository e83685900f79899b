#pragma once

#include "CorvidKit/Concurrency.h"
#include "CorvidKit/MenuBarController.h"
#include "Tessel/AppState.h"

#include <string>

namespace tessel {

/// Names the item's symbol for the program's present state. `state` must outlive it. A call on another thread stops the
/// process.
[[nodiscard]] inline corvid::MenuBarController::Symbol menuBarSymbol(const AppState& state) {
    return [&state] {
        corvid::assertIsolated({.file = "Tessel/MenuBarSymbol", .line = __LINE__});
        return std::string(state.status().menuBarSymbol());
    };
}

} // namespace tessel
