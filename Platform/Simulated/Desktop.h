#pragma once

#include "Platform/Seam/Desktop/MainBundle.h"
#include "Platform/Seam/Platform.h"
#include "Platform/Simulated/Accessibility.h"
#include "Platform/Simulated/AccessibilityObservers.h"
#include "Platform/Simulated/AddressOpener.h"
#include "Platform/Simulated/Appearance.h"
#include "Platform/Simulated/ApplicationCatalogue.h"
#include "Platform/Simulated/Applications.h"
#include "Platform/Simulated/Beep.h"
#include "Platform/Simulated/HotKeyEvents.h"
#include "Platform/Simulated/ImageRenderer.h"
#include "Platform/Simulated/Localization.h"
#include "Platform/Simulated/Log.h"
#include "Platform/Simulated/LoginItemService.h"
#include "Platform/Simulated/MainActor.h"
#include "Platform/Simulated/OpenPanel.h"
#include "Platform/Simulated/OwnWindows.h"
#include "Platform/Simulated/ProcessInfo.h"
#include "Platform/Simulated/Screens.h"
#include "Platform/Simulated/SessionLock.h"
#include "Platform/Simulated/ShortcutHolders.h"
#include "Platform/Simulated/StatusBar.h"
#include "Platform/Simulated/SystemClock.h"
#include "Platform/Simulated/ThisApplication.h"
#include "Platform/Simulated/Trace.h"
#include "Platform/Simulated/UserDefaults.h"
#include "Platform/Simulated/Workspace.h"

namespace platform::simulated {

/// A whole desktop in memory, which is the current platform while it lives: the logic sees a test's changes to its
/// parts through `platform::current()`. One trace records every request of the logic. Users of the desktop must be
/// destroyed before it.
class Desktop {
public:
    Trace trace;
    MainActor mainActor;
    Screens screens{trace};
    Applications applications{mainActor};
    Workspace workspace{trace, applications};
    Accessibility accessibility{trace, applications};
    AccessibilityObservers accessibilityObservers{trace, mainActor, applications};
    HotKeyEvents hotKeyEvents{trace};
    ShortcutHolders shortcutHolders{trace, mainActor};
    ImageRenderer imageRenderer{trace};
    Beep sound{trace};
    ProcessInfo processInfo;
    UserDefaults standardUserDefaults{trace};
    ApplicationCatalogue applicationCatalogue{trace};
    AddressOpener addressOpener{trace};
    Appearance appearance;
    LoginItemService loginItemService{trace};
    StatusBar statusBar{trace};
    Localization localization;
    Log log{trace};
    OpenPanel openPanel{trace};
    OwnWindows ownWindows{trace};
    SessionLock sessionLock;
    SystemClock systemClock{mainActor};
    ThisApplication thisApplication{trace, mainActor};
    MainBundle mainBundle{.identifier = "org.example.Tessel",
                          .infoDictionary = {{"CFBundleShortVersionString", "1.2"}},
                          .website = "https://tessel.example"};

    /// A table with the windows, applications and screens of another desktop, whose catalogue this is. Keys, sound and
    /// all services are the simulated ones.
    [[nodiscard]] Platform around(const DesktopParts& other, platform::ApplicationCatalogue& catalogue) {
        return {.desktop = {.accessibility = other.accessibility,
                            .accessibilityObservers = other.accessibilityObservers,
                            .sound = sound,
                            .hotKeyEvents = hotKeyEvents,
                            .ownWindows = other.ownWindows,
                            .runningApplications = other.runningApplications,
                            .screens = other.screens,
                            .shortcutHolders = &shortcutHolders,
                            .workspace = other.workspace},
                .addressOpener = addressOpener,
                .applicationCatalogue = catalogue,
                .imageRenderer = &imageRenderer,
                .localization = localization,
                .log = log,
                .loginItemService = loginItemService,
                .mainActor = mainActor,
                .mainBundle = mainBundle,
                .processInfo = processInfo,
                .standardUserDefaults = standardUserDefaults,
                .statusBar = statusBar,
                .systemClock = systemClock,
                .thisApplication = thisApplication};
    }

private:
    Platform table{around({.accessibility = accessibility,
                           .accessibilityObservers = accessibilityObservers,
                           .sound = sound,
                           .hotKeyEvents = hotKeyEvents,
                           .ownWindows = ownWindows,
                           .runningApplications = applications,
                           .screens = screens,
                           .shortcutHolders = &shortcutHolders,
                           .workspace = workspace},
                          applicationCatalogue)};
    Installation installation{table};
};

} // namespace platform::simulated
