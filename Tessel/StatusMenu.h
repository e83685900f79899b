#pragma once

#include "CorvidKit/Lifetime.h"
#include "CorvidKit/Publisher.h"
#include "Platform/Localization.h"
#include "Platform/MainActor.h"
#include "Platform/StatusItem.h"
#include "Platform/ThisApplication.h"
#include "Tessel/AppState.h"

#include <functional>
#include <optional>
#include <string>

namespace tessel {

/// Keeps the status item's menu and tool tip in step with the state: how the program stands, a switch, and the ways to
/// the program and out of it; and, where it was replaced, the way to what is in its place. Main thread only.
class StatusMenu {
public:
    /// All of it outlives the menu.
    struct Surroundings {
        platform::MainActor& mainActor;
        const platform::Localization& localization;
        platform::ThisApplication& application;
        /// Shows the program to the user.
        std::function<void()> open;
    };

    /// `state` and `item` must outlive the menu, and the state the item.
    StatusMenu(AppState& state, platform::StatusItem& item, Surroundings surroundings);
    StatusMenu(const StatusMenu&) = delete;
    StatusMenu& operator=(const StatusMenu&) = delete;
    ~StatusMenu() = default;

    /// Shows what has changed beside the state.
    void update();

private:
    AppState& state;
    platform::StatusItem& item;
    Surroundings surroundings;
    /// The text of the item at present.
    std::string shownText;
    std::optional<bool> shownSwitch;
    bool showsReplacement = false;
    corvid::Subscription changes;
    corvid::Lifetime lifetime;
};

} // namespace tessel
