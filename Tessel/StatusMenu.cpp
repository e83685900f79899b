#include "Tessel/StatusMenu.h"

#include "CorvidKit/Concurrency.h"
#include "Tessel/StatusText.h"

#include <functional>
#include <utility>
#include <vector>

namespace tessel {

namespace {

/// An action for the panel to call; a call on another thread stops the process.
std::function<void()> onMainThread(std::function<void()> action) {
    return [action = std::move(action)] {
        corvid::assumeIsolated({.file = "Tessel/StatusMenu", .line = __LINE__}, action);
    };
}

} // namespace

StatusMenu::StatusMenu(AppState& state, platform::StatusItem& item, Surroundings surroundings)
    : state(state)
    , item(item)
    , surroundings(std::move(surroundings)) {
    update();
    changes = state.objectWillChange().subscribe([this] {
        // Sent before the change.
        this->surroundings.mainActor.post([this, watch = lifetime.watch()] {
            if (!watch.isOver()) {
                update();
            }
        });
    });
}

void StatusMenu::update() {
    const platform::Localization& localization = surroundings.localization;
    const bool isEnabled = state.isEnabled();
    std::string text = statusText(state.status(), state.rules().size(), localization);
    // A panel reads the whole menu again after each change of it.
    const bool isReplaced = surroundings.application.isReplaced();
    if (shownSwitch == isEnabled && shownText == text && showsReplacement == isReplaced) {
        return;
    }
    shownText = text;
    shownSwitch = isEnabled;
    showsReplacement = isReplaced;
    item.setToolTip(text);
    std::vector<platform::StatusMenuLine> lines;
    lines.push_back({.title = std::move(text), .isEnabled = false, .isChecked = std::nullopt, .action = nullptr});
    if (isReplaced) {
        lines.push_back({.title = localization.text("Tessel", "Tessel was updated"),
                         .isEnabled = false,
                         .isChecked = std::nullopt,
                         .action = nullptr});
        lines.push_back({.title = localization.text("Tessel", "Restart Tessel"),
                         .isChecked = std::nullopt,
                         .action = onMainThread([&application = surroundings.application] { application.restart(); })});
    }
    lines.push_back({.title = localization.text("Tessel", isEnabled ? "Turn off" : "Turn on"),
                     .isChecked = std::nullopt,
                     .action = onMainThread([&state = state, isEnabled] { state.setEnabled(!isEnabled); })});
    lines.push_back({.title = "", .isChecked = std::nullopt, .action = nullptr});
    lines.push_back({.title = localization.text("Tessel", "Open Tessel"),
                     .isChecked = std::nullopt,
                     .action = onMainThread(surroundings.open)});
    lines.push_back({.title = localization.text("CorvidKit", "Quit"),
                     .isChecked = std::nullopt,
                     .action = onMainThread([&application = surroundings.application] { application.terminate(); })});
    item.setMenu(std::move(lines));
}

} // namespace tessel
