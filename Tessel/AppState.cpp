#include "Tessel/AppState.h"

#include "CorvidKit/AccessibilityAccess.h"
#include "CorvidKit/AppInfo.h"
#include "CorvidKit/LocalizedComparison.h"
#include "Platform/Seam/Desktop/ApplicationCatalogue.h"
#include "Platform/Seam/Desktop/Beep.h"
#include "Platform/Seam/Desktop/SystemClock.h"
#include "Platform/Seam/Platform.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <utility>

namespace tessel {

namespace {

/// The master switch, as stored in the user's defaults.
const corvid::Preference<bool> enabledPreference{.key = "enabled", .defaultValue = true};

/// Whether the user allows the program to use shortcuts that the desktop holds.
const corvid::Preference<bool> borrowsShortcutsPreference{.key = "borrowsShortcuts", .defaultValue = false};

/// The interval between checks for the permission.
constexpr platform::Duration permissionInterval = std::chrono::seconds(2);

/// Several hot keys are lost together, and a desktop that was too busy to answer is left alone for a while.
constexpr platform::Duration pauseBeforeRenewal = std::chrono::seconds(2);
constexpr platform::Duration renewalLeeway = std::chrono::seconds(1);

void assertStateOnMainThread(unsigned line) {
    corvid::assertIsolated({.file = "Tessel/AppState", .line = line});
}

/// The program's name on the website.
constexpr const char* websiteName = "tessel";

corvid::UpdateCenter makeUpdateCenter(bool isPreview) {
    if (isPreview) {
        return corvid::UpdateCenter::preview(websiteName, false);
    }
    const platform::Platform& desktop = platform::current();
    return {websiteName, corvid::AppInfo::version(), desktop.standardUserDefaults,
            [&clock = desktop.systemClock] { return clock.now(); }};
}

bool isAddable(const platform::RunningApplication& application, const Prefs::Rules& rules) {
    const std::optional<std::string> identifier = application.bundleIdentifier();
    return application.activationPolicy() == platform::ActivationPolicy::regular && identifier &&
           identifier != corvid::AppInfo::identifier() && !rules.contains(*identifier);
}

} // namespace

AppState& AppState::shared() {
    // Never released, so that the desktop's last callbacks still find it.
    static AppState& instance = *new AppState(platform::current().standardUserDefaults, false);
    return instance;
}

AppState::AppState(corvid::PreferenceStore& preferences, bool preview, corvid::HotKeyDispatcher& dispatcher)
    : isPreview(preview)
    , enabled(preferences[enabledPreference])
    , currentRules(preferences[Prefs::rules])
    , borrows(preferences[borrowsShortcutsPreference])
    , hotKeys(dispatcher)
    , preferences(preferences)
    , updateCenter(makeUpdateCenter(preview)) {
    rows = tessel::ruleApps(currentRules, icons);
    if (isPreview) {
        return;
    }
    appRules.setRules(currentRules);
    appRules.onPlacement = [this](WindowAction action, const platform::AXUIElement& window,
                                  const WindowMover::Attempt& made) { actions.follow(action, window, made); };
    platform::current().desktop.hotKeyEvents.setBorrows(borrows);
    hotKeys.onPress = [this](WindowAction action) {
        if (const auto window = WindowMover::focusedWindow()) {
            perform(action, *window);
        } else {
            platform::current().desktop.sound.beep();
        }
    };
    const platform::DesktopParts& desktop = platform::current().desktop;
    permissionChanges.emplace(platform::AccessNotification::didChange, desktop.accessibility.notificationCenter(),
                              [this](const platform::Notification& /*change*/) { checkPermission(); });
    hotKeyLosses.emplace(platform::HotKeyNotification::didLoseHotKeys, desktop.hotKeyEvents.notificationCenter(),
                         [this](const platform::Notification& /*loss*/) { renewHotKeysSoon(); });
    missing.reset();
    if (!corvid::AccessibilityAccess::requestIfNeeded()) {
        missing = corvid::AccessibilityAccess::obstacle().value_or(platform::AccessObstacle{});
    }
    update();
    // The watch ends with its state.
    permissionWatch.emplace(permissionInterval, [this] { checkPermission(); });
}

void AppState::setEnabled(bool value) {
    assign(enabled, value);
    preferences[enabledPreference] = enabled;
    update();
}

void AppState::setBorrowsShortcuts(bool value) {
    assign(borrows, value);
    preferences[borrowsShortcutsPreference] = borrows;
    if (isPreview) {
        return;
    }
    platform::current().desktop.hotKeyEvents.setBorrows(borrows);
    hotKeys.unregister();
    update();
}

std::set<WindowAction> AppState::shortcutsOnLoan(platform::HotKeyLoan loan) const {
    std::set<WindowAction> found;
    for (const WindowAction action : WindowAction::allCases) {
        const auto present = loans.find(action);
        if (present != loans.end() && present->second == loan) {
            found.insert(action);
        }
    }
    return found;
}

void AppState::setRules(Prefs::Rules value) {
    const Prefs::Rules former = currentRules;
    assign(currentRules, std::move(value));
    assign(rows, tessel::ruleApps(currentRules, icons));
    if (isPreview) {
        return;
    }
    // Other processes may have stored rules meanwhile, some of which are not even known here.
    preferences[Prefs::rules].change(former, currentRules);
    appRules.setRules(currentRules);
}

void AppState::applicationsChanged() {
    assertStateOnMainThread(__LINE__);
    if (currentRules.empty()) {
        return;
    }
    assign(rows, tessel::ruleApps(currentRules, icons));
    if (!isPreview) {
        appRules.setRules(currentRules);
    }
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
    assign(missing, value ? std::nullopt : std::optional(platform::AccessObstacle{}));
}

std::vector<platform::RunningApplicationReference> AppState::addableRunningApps() const {
    std::vector<platform::RunningApplicationReference> addable =
        platform::current().desktop.runningApplications.runningApplications();
    std::erase_if(addable, [this](const auto& application) { return !isAddable(*application, currentRules); });
    corvid::sortByName(addable, [](const auto& application) { return application->localizedName().value_or(""); });
    return addable;
}

void AppState::chooseApp(WindowAction action, platform::OpenPanel& panel) {
    panel.activateIgnoringOtherApps();
    panel.runModal({.allowedContentTypes = {platform::applicationContentType},
                    .directory = "/Applications",
                    .allowsMultipleSelection = true,
                    .prompt = "Add"},
                   [this, watch = lifetime.watch(), action](const std::vector<std::filesystem::path>& chosen) {
                       assertStateOnMainThread(__LINE__);
                       if (watch.isOver()) {
                           return;
                       }
                       preferences.together([&] {
                           for (const std::filesystem::path& location : chosen) {
                               if (const auto identifier =
                                       platform::current().applicationCatalogue.bundleIdentifier(location)) {
                                   setRule(*identifier, action);
                               }
                           }
                       });
                   });
}

WindowMover::Outcome AppState::perform(const WindowOrder& order, const platform::AXUIElement& window,
                                       WindowActionRetry::Ended ended) {
    assertStateOnMainThread(__LINE__);
    return actions.perform(order, window, std::move(ended));
}

void AppState::update() {
    if (isPreview) {
        return;
    }
    bool isAnew = false;
    if (enabled && hasAccessibility()) {
        if (!hotKeys.isRegistered()) {
            hotKeys.registerShortcuts(WindowAction::shortcuts());
            isAnew = true;
        }
        appRules.start();
    } else {
        hotKeys.unregister();
        appRules.stop();
        actions.cancel();
        isAnew = true;
    }
    loans = presentLoans();
    obstacles = presentObstacles();
    assign(failed, std::set(hotKeys.failed().begin(), hotKeys.failed().end()));
    if (isAnew) {
        findHolders();
    }
}

std::map<WindowAction, platform::HotKeyLoan> AppState::presentLoans() const {
    std::map<WindowAction, platform::HotKeyLoan> present;
    if (hotKeys.isRegistered() || !hotKeys.failed().empty()) {
        for (const WindowAction action : WindowAction::allCases) {
            const corvid::Shortcut shortcut = action.shortcut();
            present.emplace(action,
                            platform::current().desktop.hotKeyEvents.loan(shortcut.keyCode, shortcut.modifiers));
        }
    }
    return present;
}

std::map<WindowAction, platform::LoanObstacle> AppState::presentObstacles() const {
    std::map<WindowAction, platform::LoanObstacle> present;
    for (const WindowAction action : hotKeys.failed()) {
        const corvid::Shortcut shortcut = action.shortcut();
        if (const auto obstacle =
                platform::current().desktop.hotKeyEvents.loanObstacle(shortcut.keyCode, shortcut.modifiers)) {
            present.emplace(action, *obstacle);
        }
    }
    return present;
}

void AppState::findHolders() {
    holderSearch.reset();
    if (!holders.empty()) {
        assign(holders, {});
    }
    platform::ShortcutHolders* desktop = platform::current().desktop.shortcutHolders;
    std::set<WindowAction> taken = shortcutsOnLoan(platform::HotKeyLoan::made);
    taken.insert(failed.begin(), failed.end());
    if (taken.empty() || desktop == nullptr) {
        return;
    }
    const std::vector<WindowAction> held(taken.begin(), taken.end());
    std::vector<corvid::Shortcut> shortcuts;
    std::ranges::transform(held, std::back_inserter(shortcuts), &WindowAction::shortcut);
    holderSearch = desktop->find(shortcuts, [this, held](const platform::ShortcutHolders::Answers& answers) {
        assertStateOnMainThread(__LINE__);
        std::map<WindowAction, platform::ShortcutHolder> found;
        for (std::size_t place = 0; place < std::min(held.size(), answers.size()); ++place) {
            if (answers[place]) {
                found.emplace(held[place], *answers[place]);
            }
        }
        assign(holders, std::move(found));
    });
}

void AppState::checkPermission() {
    assertStateOnMainThread(__LINE__);
    std::optional<platform::AccessObstacle> present = corvid::AccessibilityAccess::obstacle();
    const bool isTrusted = !present;
    if (isTrusted != hasAccessibility()) {
        assign(missing, std::move(present));
        update();
    } else if (present != missing) {
        assign(missing, std::move(present));
    } else if (borrows && presentLoans() != loans) {
        // The desktop's settings have changed.
        assign(loans, presentLoans());
        findHolders();
    }
}

void AppState::renewHotKeysSoon() {
    assertStateOnMainThread(__LINE__);
    if (hotKeyRenewal) {
        return;
    }
    platform::MainActor& mainActor = platform::current().mainActor;
    hotKeyRenewal = mainActor.schedule(mainActor.now() + pauseBeforeRenewal, renewalLeeway, [this] {
        hotKeyRenewal.reset();
        hotKeys.unregister();
        update();
    });
}

} // namespace tessel
