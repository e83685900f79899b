#pragma once

#include "Platform/Simulated/Desktop.h"
#include "Tessel/AppState.h"
#include "Tessel/MenuTab.h"

#include <string>
#include <string_view>
#include <vector>

namespace tessel {

/// The menu, tip or window that is open over the view, or in place of it.
enum class OpenPart {
    nothing,
    /// The menu of the first rule, with the pointer on its first line.
    ruleMenu,
    addMenu,
    /// The tip about the first taken shortcut.
    shortcutTip,
    switchTip,
    /// The window in which applications are chosen, with the keyboard.
    chooser,
    chooserWithSearch,
    chooserWithoutMatch,
};

/// One state of the program, and the tab that shows it.
struct ShownState {
    std::string_view name;
    MenuTab tab;
    OpenPart open = OpenPart::nothing;
    /// Prepares the desktop so that the program will be in that state.
    void (*prepare)(platform::simulated::Desktop& desktop);
    /// Runs while the program runs.
    void (*live)(platform::simulated::Desktop& desktop, AppState& state);
};

/// All of them.
[[nodiscard]] const std::vector<ShownState>& shownStates();

} // namespace tessel
