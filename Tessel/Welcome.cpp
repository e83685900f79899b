#include "Tessel/Welcome.h"

#include "CorvidKit/Concurrency.h"
#include "CorvidKitCore/Preference.h"
#include "Platform/Seam/Desktop/AccessObstacle.h"
#include "Platform/Seam/Desktop/Localization.h"
#include "Platform/Seam/Platform.h"

#include <optional>
#include <utility>

namespace tessel {

namespace {

/// The names of the reasons in the settings.
constexpr const char* startReason = "start";
constexpr const char* permissionReason = "permission";
constexpr const char* shortcutsReason = "shortcuts";

/// The reasons for which the popover was opened. "start" is false from the first start until the popover was opened.
const corvid::Preference<std::map<std::string, bool, std::less<>>> openedForPreference{.key = "openedFor",
                                                                                       .defaultValue = {}};

/// Whether windows can be moved only once the user has logged in again.
const corvid::Preference<std::optional<bool>> awaitsLoginPreference{.key = "awaitsLogin", .defaultValue = std::nullopt};

/// The note of the update reminder: every start leaves it.
const corvid::Preference<std::optional<std::string>> usedVersionPreference{.key = "updateReminderVersion",
                                                                           .defaultValue = std::nullopt};

} // namespace

Welcome::Welcome(corvid::PreferenceStore& preferences)
    : preferences(preferences) {
    const Reasons openedFor = preferences[openedForPreference];
    const auto start = openedFor.find(startReason);
    if (start != openedFor.end()) {
        isFirstStart = !start->second;
        return;
    }
    // Settings of a version that did not open by itself have a user who knows the program.
    const std::optional<std::string> usedVersion = preferences[usedVersionPreference];
    isFirstStart = !usedVersion;
    if (isFirstStart) {
        Reasons noted = openedFor;
        noted.emplace(startReason, false);
        preferences[openedForPreference].change(openedFor, noted);
    }
}

void Welcome::begin(AppState& newState, Commands newCommands) {
    corvid::assertIsolated({.file = "Tessel/Welcome", .line = __LINE__});
    state = &newState;
    commands = std::move(newCommands);
    changes = state->objectWillChange().subscribe([this] {
        // The notification precedes the change, which is there in the next turn.
        platform::current().mainActor.post([this, watch = lifetime.watch()] {
            if (!watch.isOver()) {
                follow();
            }
        });
    });
    follow();
    if (isFirstStart) {
        openSoon();
    }
    const Reasons openedFor = preferences[openedForPreference];
    if (!state->hasAccessibility() || !openedFor.contains(permissionReason) || !openedFor.contains(shortcutsReason)) {
        looking = after(patience, &Welcome::look);
    }
}

Welcome::Reasons Welcome::reasons() const {
    Reasons all = preferences[openedForPreference];
    if (state->isEnabled()) {
        if (isFirstStart) {
            all[startReason] = true;
        }
        if (!state->hasAccessibility()) {
            all[permissionReason] = true;
        } else if (!state->failedShortcuts().empty()) {
            all[shortcutsReason] = true;
        }
    }
    return all;
}

void Welcome::openSoon() {
    lockWatch = commands.watchLock([this] {
        opening.reset();
        lockWatch.reset();
    });
    opening = after(settling, &Welcome::openIfNeeded);
}

void Welcome::openIfNeeded() {
    lockWatch.reset();
    noteLogin();
    const Reasons former = preferences[openedForPreference];
    const Reasons latter = reasons();
    if (latter == former) {
        return;
    }
    isFirstStart = false;
    // Kept before it opens: one that cannot open must not be tried again at every start.
    preferences[openedForPreference].change(former, latter);
    commands.open();
}

bool Welcome::needsLogin() const {
    const std::optional<platform::AccessObstacle>& obstacle = state->obstacle();
    return obstacle && obstacle->kind == platform::AccessObstacle::Kind::extensionNotLoaded;
}

void Welcome::noteLogin() {
    noting.reset();
    if (needsLogin()) {
        preferences[awaitsLoginPreference] = true;
    }
}

void Welcome::follow() {
    const std::optional<bool> awaitsLogin = preferences[awaitsLoginPreference];
    if (!needsLogin() || awaitsLogin) {
        noting.reset();
    } else if (!noting) {
        noting = after(certainty, &Welcome::noteLogin);
    }
    sayIfReady();
}

void Welcome::look() {
    noteLogin();
    const Reasons openedFor = preferences[openedForPreference];
    if (reasons() != openedFor) {
        openSoon();
    }
}

void Welcome::sayIfReady() {
    const std::optional<bool> awaitsLogin = preferences[awaitsLoginPreference];
    if (awaitsLogin && state->isEnabled() && state->hasAccessibility()) {
        preferences[awaitsLoginPreference] = std::nullopt;
        commands.notify(platform::current().localization.text("Tessel", "Tessel is ready"));
    }
}

std::unique_ptr<platform::ScheduledWork> Welcome::after(platform::Duration delay, void (Welcome::*work)()) {
    platform::MainActor& mainActor = platform::current().mainActor;
    return mainActor.schedule(mainActor.now() + delay, delay / 2, [this, work] { (this->*work)(); });
}

} // namespace tessel
