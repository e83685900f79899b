#include "Tessel/StatusMenu.h"

#include "CorvidKit/Concurrency.h"
#include "Platform/Localization.h"
#include "Platform/MainActor.h"
#include "Platform/Platform.h"
#include "Platform/ThisApplication.h"
#include "Tessel/StatusText.h"

#include <functional>
#include <utility>
#include <vector>

namespace tessel {

namespace {

/// A panel calls this: on another thread it stops the process.
std::function<void()> onMainThread(std::function<void()> action) {
    return [action = std::move(action)] {
        corvid::assumeIsolated({.file = "Tessel/StatusMenu", .line = __LINE__}, action);
    };
}

} // namespace

StatusMenu::StatusMenu(AppState& state, platform::StatusItem& item, Ways ways)
    : state(state)
    , item(item)
    , ways(std::move(ways)) {
    update();
    changes = state.objectWillChange().subscribe([this] {
        // Notified before the change.
        platform::current().mainActor.post([this, watch = lifetime.watch()] {
            if (!watch.isOver()) {
                update();
            }
        });
    });
}

void StatusMenu::update() {
    const platform::Localization& localization = platform::current().localization;
    const bool isEnabled = state.isEnabled();
    std::string text = statusText(state.status(), state.rules().size(), localization);
    // A panel reads the whole menu again after each new one.
    const bool isReplaced = platform::current().thisApplication.isReplaced();
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
                         .action = onMainThread([] { platform::current().thisApplication.restart(); })});
    }
    lines.push_back({.title = localization.text("Tessel", isEnabled ? "Turn off" : "Turn on"),
                     .isChecked = std::nullopt,
                     .action = onMainThread([&state = state, isEnabled] { state.setEnabled(!isEnabled); })});
    lines.push_back({.title = "", .isChecked = std::nullopt, .action = nullptr});
    lines.push_back({.title = localization.text("Tessel", "Open Tessel"),
                     .isChecked = std::nullopt,
                     .action = onMainThread(ways.open)});
    lines.push_back({.title = localization.text("CorvidKit", "Quit"),
                     .isChecked = std::nullopt,
                     .action = onMainThread(ways.quit)});
    item.setMenu(std::move(lines));
}

} // namespace tessel
