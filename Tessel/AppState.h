#pragma once

#include "CorvidKit/Concurrency.h"
#include "CorvidKit/HotKeys.h"
#include "CorvidKit/Lifetime.h"
#include "CorvidKit/Publisher.h"
#include "CorvidKit/UpdateCenter.h"
#include "CorvidKitCore/PreferenceStore.h"
#include "Platform/Seam/Desktop/AccessObstacle.h"
#include "Platform/Seam/Desktop/Accessibility.h"
#include "Platform/Seam/Desktop/HotKeyEvents.h"
#include "Platform/Seam/Desktop/RunningApplications.h"
#include "Platform/Seam/Desktop/ShortcutHolders.h"
#include "Platform/Seam/Toolkit/OpenPanel.h"
#include "Tessel/AppRules.h"
#include "Tessel/PlacementMemory.h"
#include "Tessel/Prefs.h"
#include "Tessel/RuleApp.h"
#include "Tessel/WindowActionRetry.h"
#include "Tessel/WindowMover.h"
#include "TesselCore/AppStatus.h"
#include "TesselCore/WindowAction.h"
#include "TesselCore/WindowOrder.h"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tessel {

/// The program's state, and the one switch that turns hot keys and app rules on and off. Main thread only.
///
/// Both are on exactly when `isEnabled` and `hasAccessibility` are true. A preview only provides values for display: it
/// registers no hot key, watches no application, and neither requests the permission nor checks it.
class AppState {
public:
    /// The program's own state, over the user's settings. Created on first use, never released.
    [[nodiscard]] static AppState& shared();

    /// `preferences` and `dispatcher` must outlive the state.
    AppState(corvid::PreferenceStore& preferences, bool preview,
             corvid::HotKeyDispatcher& dispatcher = corvid::HotKeyDispatcher::shared());
    AppState(const AppState&) = delete;
    AppState& operator=(const AppState&) = delete;
    ~AppState() = default;

    /// The master switch. Every assignment is stored and takes effect, even with the same value.
    [[nodiscard]] bool isEnabled() const { return enabled; }

    void setEnabled(bool value);

    /// Actions by bundle identifier. Every assignment is stored (except in a preview), even with the same value.
    [[nodiscard]] const Prefs::Rules& rules() const { return currentRules; }

    void setRules(Prefs::Rules value);

    /// Adds, changes or (with an empty action) removes one rule.
    void setRule(const std::string& bundleIdentifier, std::optional<WindowAction> action);

    /// To be called on the main thread when applications were installed, changed or removed: they may go by other names
    /// now, and be the ones that a rule has waited for. Nothing is stored.
    void applicationsChanged();

    /// The rules as rows for display, by name.
    [[nodiscard]] const std::vector<RuleApp>& ruleApps() const { return rows; }

    /// Whether the desktop lets us move windows, as far as is known.
    [[nodiscard]] bool hasAccessibility() const { return !missing; }

    /// The reason why it does not; nothing where it does.
    [[nodiscard]] const std::optional<platform::AccessObstacle>& obstacle() const { return missing; }

    /// Only for previews: a real state checks this itself.
    void setHasAccessibility(bool value);

    /// The actions whose shortcut could not be registered at the last registration.
    [[nodiscard]] const std::set<WindowAction>& failedShortcuts() const { return failed; }

    /// The holders of those, as far as the desktop has reported them. It is asked once a shortcut turns out to be
    /// taken.
    [[nodiscard]] const std::map<WindowAction, platform::ShortcutHolder>& shortcutHolders() const { return holders; }

    /// Whether shortcuts that others hold are borrowed while the program runs, if the desktop can do that. Only the
    /// user sets it. Every assignment is stored (except in a preview) and registers all shortcuts again.
    [[nodiscard]] bool borrowsShortcuts() const { return borrows; }

    void setBorrowsShortcuts(bool value);

    /// The actions whose shortcut had that state when it was last registered or refused.
    [[nodiscard]] std::set<WindowAction> shortcutsOnLoan(platform::HotKeyLoan loan) const;

    /// The taken ones that cannot be borrowed, as far as the desktop says why.
    [[nodiscard]] const std::map<WindowAction, platform::LoanObstacle>& loanObstacles() const { return obstacles; }

    [[nodiscard]] AppStatus status() const { return {enabled, hasAccessibility(), !failed.empty()}; }

    /// The reminder to check for a newer version.
    [[nodiscard]] corvid::UpdateCenter& updates() { return updateCenter; }

    /// The ordinary running applications that a rule can be added for, by name: not this program itself, none without a
    /// bundle identifier, none that has a rule.
    [[nodiscard]] std::vector<platform::RunningApplicationReference> addableRunningApps() const;

    /// Lets the user pick applications in the panel, and gives each of them the action. The panel may outlive this.
    void chooseApp(WindowAction action, platform::OpenPanel& panel);

    /// Emits before every assignment of a value above. A subscriber reads the new value in a later turn.
    [[nodiscard]] corvid::Publisher<>& objectWillChange() { return willChange; }

    const bool isPreview;

    /// Carries out an order of the user. If the window's desktop does not answer in time, the order is repeated when it
    /// may. Returns the result of the first attempt. `ended`: see `WindowActionRetry::perform`.
    WindowMover::Outcome perform(const WindowOrder& order, const platform::AXUIElement& window,
                                 WindowActionRetry::Ended ended = {});

private:
    /// The single place where the system is switched on or off.
    void update();

    /// Asks the desktop for the holders of the shortcuts that could not be registered.
    void findHolders();

    /// The present state of each shortcut that is registered, or was refused.
    [[nodiscard]] std::map<WindowAction, platform::HotKeyLoan> presentLoans() const;
    [[nodiscard]] std::map<WindowAction, platform::LoanObstacle> presentObstacles() const;

    /// Checks whether the permission was granted or revoked, and whether each loan is still needed.
    void checkPermission();

    /// Registers all hot keys anew, after a pause.
    void renewHotKeysSoon();

    /// Announces the change, then makes it.
    template <typename Value>
    void assign(Value& published, Value value) {
        willChange.send();
        published = std::move(value);
    }

    bool enabled;
    Prefs::Rules currentRules;
    bool borrows = false;
    std::vector<RuleApp> rows;
    /// A preview has not asked, so it has no permission.
    std::optional<platform::AccessObstacle> missing{std::in_place};
    std::set<WindowAction> failed;
    std::map<WindowAction, platform::HotKeyLoan> loans;
    std::map<WindowAction, platform::LoanObstacle> obstacles;
    std::map<WindowAction, platform::ShortcutHolder> holders;
    std::unique_ptr<platform::HolderSearch> holderSearch;
    corvid::HotKeyCenter<WindowAction> hotKeys;
    AppRules appRules;
    PlacementMemory placements;
    WindowActionRetry actions{placements};
    corvid::PreferenceStore& preferences;
    corvid::Publisher<> willChange;
    std::optional<corvid::RepeatingTask> permissionWatch;
    std::optional<corvid::NotificationObservation> permissionChanges;
    std::optional<corvid::NotificationObservation> hotKeyLosses;
    std::unique_ptr<platform::ScheduledWork> hotKeyRenewal;
    RuleAppIcons icons;
    corvid::UpdateCenter updateCenter;
    corvid::Lifetime lifetime;
};

} // namespace tessel
