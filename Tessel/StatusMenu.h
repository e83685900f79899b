#pragma once

#include "CorvidKit/Lifetime.h"
#include "CorvidKit/Publisher.h"
#include "Platform/Seam/Desktop/Localization.h"
#include "Platform/Seam/Desktop/MainActor.h"
#include "Platform/Seam/Desktop/StatusItem.h"
#include "Platform/Seam/Desktop/ThisApplication.h"
#include "Tessel/AppState.h"

#include <functional>
#include <optional>
#include <string>

namespace tessel {

/// Updates the status item's menu and tool tip with the state: the program's status, a switch, and the entries that
/// open and end the program; after an update, also the entry that starts the new version. Main thread only.
class StatusMenu {
public:
    /// All of it outlives the menu.
    struct Context {
        platform::MainActor& mainActor;
        const platform::Localization& localization;
        platform::ThisApplication& application;
        /// Shows the program to the user.
        std::function<void()> open;
    };

    /// `state` and `item` must outlive the menu, and the state the item.
    StatusMenu(AppState& state, platform::StatusItem& item, Context context);
    StatusMenu(const StatusMenu&) = delete;
    StatusMenu& operator=(const StatusMenu&) = delete;
    ~StatusMenu() = default;

    /// Shows changes that are not part of the state.
    void update();

private:
    AppState& state;
    platform::StatusItem& item;
    Context context;
    /// The text of the item at present.
    std::string shownText;
    std::optional<bool> shownSwitch;
    bool showsReplacement = false;
    corvid::Subscription changes;
    corvid::Lifetime lifetime;
};

} // namespace tessel
