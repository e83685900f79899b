#pragma once

#include "CorvidKit/Concurrency.h"
#include "CorvidKit/MenuBarController.h"
#include "Tessel/AppState.h"

#include <string>

namespace tessel {

/// Names the item's symbol: how the program stands at the time. `state` must outlive it. Asked on another thread, it
/// stops the process.
[[nodiscard]] inline corvid::MenuBarController::Symbol menuBarSymbol(const AppState& state) {
    return [&state] {
        corvid::assertIsolated({.file = "Tessel/MenuBarSymbol", .line = __LINE__});
        return std::string(state.status().menuBarSymbol());
    };
}

} // namespace tessel
