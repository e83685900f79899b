#pragma once

#include "FollowedDesktop.h"
#include "Platform/Platform.h"
#include "Platform/Simulated/Desktop.h"

#include <functional>

namespace platform::x11 {

/// Has the logic work on a desktop that has been started, for as long as this lives. What an X server has no part in is
/// simulated, the clock with it.
class LogicOnDesktop {
public:
    explicit LogicOnDesktop(FollowedDesktop& followed)
        : followed(followed) {}

    /// Does it in a turn of the event loop, as a key press or a timer would; false if that does not come.
    [[nodiscard]] bool inATurn(const std::function<void()>& work) {
        bool isDone = false;
        followed.mainLoop.post([&] {
            work();
            isDone = true;
        });
        return followed.runUntil([&] { return isDone; });
    }

    simulated::Desktop other;

private:
    FollowedDesktop& followed;
    Platform table{
        .accessibility = followed.desktop->accessibility(),
        .accessibilityObservers = followed.desktop->accessibilityObservers(),
        .addressOpener = other.addressOpener,
        .applicationCatalogue = followed.catalogue,
        .sound = other.sound,
        .hotKeyEvents = other.hotKeyEvents,
        .imageRenderer = nullptr,
        .localization = other.localization,
        .log = other.log,
        .loginItemService = other.loginItemService,
        .mainActor = other.mainActor,
        .mainBundle = other.mainBundle,
        .processInfo = other.processInfo,
        .runningApplications = followed.desktop->runningApplications(),
        .screens = followed.desktop->screens(),
        .shortcutHolders = nullptr,
        .standardUserDefaults = other.standardUserDefaults,
        .statusBar = other.statusBar,
        .systemClock = other.systemClock,
        .thisApplication = other.thisApplication,
        .workspace = followed.desktop->workspace(),
    };
    Installation installation{table};
};

} // namespace platform::x11
