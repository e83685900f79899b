#pragma once

#include "CorvidKit/Concurrency.h"
#include "CorvidKit/HotKeys.h"
#include "CorvidKit/Publisher.h"
#include "CorvidKitCore/PreferenceStore.h"
#include "Tessel/Prefs.h"
#include "TesselCore/AppStatus.h"
#include "TesselCore/WindowAction.h"

#include <optional>
#include <set>
#include <string>

namespace tessel {

/// The program's state, and the one switch that turns hot keys on and off. Main thread only.
///
/// The hot keys are registered exactly when `isEnabled` and `hasAccessibility` are both true. A preview only holds
/// values for others to show: it never registers a hot key, never asks for permission and never looks for it.
class AppState {
public:
    /// The one of the program, over the user's settings. Made on first use, never released.
    [[nodiscard]] static AppState& shared();

    /// `preferences` and `dispatcher` must outlive the state.
    AppState(corvid::PreferenceStore& preferences, bool preview,
             corvid::HotKeyDispatcher& dispatcher = corvid::HotKeyDispatcher::shared());
    AppState(const AppState&) = delete;
    AppState& operator=(const AppState&) = delete;
    ~AppState() = default;

    /// The master switch. Every assignment is stored and acted upon, also of the same value.
    [[nodiscard]] bool isEnabled() const { return enabled; }

    void setEnabled(bool value);

    /// Actions by bundle identifier. Every assignment is stored (but for a preview's), also of the same value.
    [[nodiscard]] const Prefs::Rules& rules() const { return currentRules; }

    void setRules(Prefs::Rules value);

    /// Adds, changes or (with nothing) removes one rule.
    void setRule(const std::string& bundleIdentifier, std::optional<WindowAction> action);

    /// Whether the desktop lets us move windows, as far as is known.
    [[nodiscard]] bool hasAccessibility() const { return trusted; }

    /// Only for previews: a real state finds out for itself.
    void setHasAccessibility(bool value);

    /// The actions whose shortcut could not be registered at the last registration.
    [[nodiscard]] const std::set<WindowAction>& failedShortcuts() const { return failed; }

    [[nodiscard]] AppStatus status() const { return {enabled, trusted, !failed.empty()}; }

    /// Emits before every assignment of a value above: whoever wants the new value looks in a later turn.
    [[nodiscard]] corvid::Publisher<>& objectWillChange() { return willChange; }

    const bool isPreview;

private:
    /// The single place where the system is switched on or off.
    void update();

    /// Looks whether the permission was given or taken away.
    void checkPermission();

    /// Announces the change, then makes it.
    template <typename Value>
    void assign(Value& published, Value value) {
        willChange.send();
        published = std::move(value);
    }

    bool enabled;
    Prefs::Rules currentRules;
    bool trusted = false;
    std::set<WindowAction> failed;
    corvid::HotKeyCenter<WindowAction> hotKeys;
    corvid::PreferenceStore& preferences;
    corvid::Publisher<> willChange;
    std::optional<corvid::RepeatingTask> permissionWatch;
};

} // namespace tessel
