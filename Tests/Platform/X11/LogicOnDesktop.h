#pragma once

#include "FollowedDesktop.h"
#include "Platform/Seam/Platform.h"
#include "Platform/Simulated/Desktop.h"

#include <functional>

namespace platform::x11 {

/// Runs the logic on a started desktop, while this lives. The parts that do not need an X server are simulated,
/// including the clock.
class LogicOnDesktop {
public:
    explicit LogicOnDesktop(FollowedDesktop& followed)
        : followed(followed) {}

    /// Runs a function in a turn of the event loop, as a key press or a timer would; false if that turn does not come.
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
    /// The desktop's, but with the simulated keys and sound.
    [[nodiscard]] DesktopParts parts() {
        const DesktopParts real = followed.desktop->parts();
        return {.accessibility = real.accessibility,
                .accessibilityObservers = real.accessibilityObservers,
                .sound = other.sound,
                .hotKeyEvents = other.hotKeyEvents,
                .ownWindows = real.ownWindows,
                .runningApplications = real.runningApplications,
                .screens = real.screens,
                .shortcutHolders = nullptr,
                .workspace = real.workspace};
    }

    Platform table{
        .desktop = parts(),
        .addressOpener = other.addressOpener,
        .applicationCatalogue = followed.catalogue,
        .imageRenderer = nullptr,
        .localization = other.localization,
        .log = other.log,
        .loginItemService = other.loginItemService,
        .mainActor = other.mainActor,
        .mainBundle = other.mainBundle,
        .processInfo = other.processInfo,
        .standardUserDefaults = other.standardUserDefaults,
        .statusBar = other.statusBar,
        .systemClock = other.systemClock,
        .thisApplication = other.thisApplication,
    };
    Installation installation{table};
};

} // namespace platform::x11
