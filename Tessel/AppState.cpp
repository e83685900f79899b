#include "Tessel/AppState.h"

#include "CorvidKit/AccessibilityAccess.h"
#include "Platform/Beep.h"
#include "Platform/Platform.h"
#include "Tessel/WindowMover.h"

#include <chrono>
#include <utility>

namespace tessel {

namespace {

/// The master switch, as it is kept in the user's defaults.
const corvid::Preference<bool> enabledPreference{.key = "enabled", .defaultValue = true};

/// How often the permission is looked for.
constexpr platform::Duration permissionInterval = std::chrono::seconds(2);

void performOnFocusedWindow(WindowAction action) {
    if (const auto window = WindowMover::focusedWindow()) {
        WindowMover::perform(action, *window);
    } else {
        platform::current().sound.beep();
    }
}

} // namespace

AppState& AppState::shared() {
    // Never released: whatever the desktop delivers last still finds it.
    static AppState& instance = *new AppState(platform::current().standardUserDefaults, false);
    return instance;
}

AppState::AppState(corvid::PreferenceStore& preferences, bool preview, corvid::HotKeyDispatcher& dispatcher)
    : isPreview(preview)
    , enabled(preferences[enabledPreference])
    , currentRules(preferences[Prefs::rules])
    , hotKeys(dispatcher)
    , preferences(preferences) {
    if (isPreview) {
        return;
    }
    hotKeys.onPress = performOnFocusedWindow;
    trusted = corvid::AccessibilityAccess::requestIfNeeded();
    update();
    // The watch ends with the state that it belongs to.
    permissionWatch.emplace(permissionInterval, [this] { checkPermission(); });
}

void AppState::setEnabled(bool value) {
    assign(enabled, value);
    preferences[enabledPreference] = enabled;
    update();
}

void AppState::setRules(Prefs::Rules value) {
    assign(currentRules, std::move(value));
    if (isPreview) {
        return;
    }
    preferences[Prefs::rules] = currentRules;
}

void AppState::setRule(const std::string& bundleIdentifier, std::optional<WindowAction> action) {
    Prefs::Rules changed = currentRules;
    if (action) {
        changed.insert_or_assign(bundleIdentifier, *action);
    } else {
        changed.erase(bundleIdentifier);
    }
    setRules(std::move(changed));
}

void AppState::setHasAccessibility(bool value) {
    assign(trusted, value);
}

void AppState::update() {
    if (isPreview) {
        return;
    }
    if (enabled && trusted) {
        if (!hotKeys.isRegistered()) {
            hotKeys.registerShortcuts(WindowAction::shortcuts());
        }
    } else {
        hotKeys.unregister();
    }
    assign(failed, hotKeys.failed());
}

void AppState::checkPermission() {
    corvid::assertIsolated({.file = "Tessel/AppState", .line = __LINE__});
    const bool isTrusted = corvid::AccessibilityAccess::isTrusted();
    if (isTrusted != trusted) {
        assign(trusted, isTrusted);
        update();
    }
}

} // namespace tessel
