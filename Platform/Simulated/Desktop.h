#pragma once

#include "Platform/MainBundle.h"
#include "Platform/Platform.h"
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

/// A whole desktop in memory, in force for as long as it lives: what a test does to its parts, the logic meets through
/// `platform::current()`. Everything that the logic asks for is in one trace. What uses the desktop must be gone before
/// the desktop is.
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

private:
    Platform table{.accessibility = accessibility,
                   .accessibilityObservers = accessibilityObservers,
                   .addressOpener = addressOpener,
                   .applicationCatalogue = applicationCatalogue,
                   .sound = sound,
                   .hotKeyEvents = hotKeyEvents,
                   .imageRenderer = &imageRenderer,
                   .localization = localization,
                   .log = log,
                   .loginItemService = loginItemService,
                   .mainActor = mainActor,
                   .mainBundle = mainBundle,
                   .processInfo = processInfo,
                   .runningApplications = applications,
                   .screens = screens,
                   .shortcutHolders = &shortcutHolders,
                   .standardUserDefaults = standardUserDefaults,
                   .statusBar = statusBar,
                   .systemClock = systemClock,
                   .thisApplication = thisApplication,
                   .workspace = workspace};
    Installation installation{table};
};

} // namespace platform::simulated
