#include "Tessel/Wiring/ResidentRun.h"

#include "CorvidKit/DeferredOpenPanel.h"
#include "CorvidKit/DeferredPopover.h"
#include "CorvidKit/DeferredToolkit.h"
#include "CorvidKit/MenuBarApp.h"
#include "CorvidKit/MenuBarController.h"
#include "CorvidKit/Publisher.h"
#include "Platform/Linux/AddressOpener.h"
#include "Platform/Linux/Appearance.h"
#include "Platform/Linux/Applications/DesktopEntries.h"
#include "Platform/Linux/Applications/DesktopEntryCatalogue.h"
#include "Platform/Linux/Applications/DesktopEntryIdentification.h"
#include "Platform/Linux/AutostartLoginItem.h"
#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/Control/ControlBusName.h"
#include "Platform/Linux/Control/ControlSocket.h"
#include "Platform/Linux/Control/SessionClaim.h"
#include "Platform/Linux/Localization.h"
#include "Platform/Linux/Log.h"
#include "Platform/Linux/LoopApplication.h"
#include "Platform/Linux/MainLoop.h"
#include "Platform/Linux/PluginFile.h"
#include "Platform/Linux/ProcessInfo.h"
#include "Platform/Linux/ProgramFile.h"
#include "Platform/Linux/ServiceNotification.h"
#include "Platform/Linux/SessionLock.h"
#include "Platform/Linux/Settings/UserDefaults.h"
#include "Platform/Linux/StandardStreams.h"
#include "Platform/Linux/StartEnvironment.h"
#include "Platform/Linux/SystemClock.h"
#include "Platform/Linux/SystemLog.h"
#include "Platform/Linux/Tray/NotifierPlace.h"
#include "Platform/Linux/Tray/StatusBar.h"
#include "Platform/MainBundle.h"
#include "Platform/Platform.h"
#include "Tessel/AppState.h"
#include "Tessel/MenuBarSymbol.h"
#include "Tessel/MenuView.h"
#include "Tessel/RemoteControl.h"
#include "Tessel/StatusMenu.h"
#include "Tessel/StatusText.h"
#include "Tessel/Wiring/DesktopChoice.h"
#include "Tessel/Wiring/Locale.h"
#include "Tessel/Wiring/ProcessEnvironment.h"
#include "Tessel/Wiring/SessionFacts.h"
#include "Tessel/Wiring/ThisProgram.h"
#include "Tessel/Wiring/ToolkitPlugin.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace tessel {

namespace {

std::string lineFor(const AppState& state) {
    return statusLine(state.status(), state.failedShortcuts());
}

void openPopover() {
    if (const auto& menuBar = corvid::MenuBarController::shared()) {
        menuBar->open();
    }
}

/// Runs the program until it ends. `next`: the program to become then, if any.
int runUntilTheEnd(std::optional<std::string>& next) {
    // Opened first: an upgrade may put another build's file in its place later.
    platform::linux::PluginFile plugin(menuPlugin());
    platform::linux::MainLoop mainLoop;
    mainLoop.endOnTerminationSignals();

    const SessionFacts session = SessionFacts::ofThisProcess();
    auto instance = platform::linux::claimSession(sessionOf(session));
    if (!instance) {
        if (!instance.error().asked) {
            platform::linux::logToStandardError(instance.error().reason);
            return EXIT_FAILURE;
        }
        std::puts("tessel: already running in this session");
        return EXIT_SUCCESS;
    }
    // Made before the desktop, to be dropped after it: who waits for the end waits until the keys are free again.
    platform::linux::ControlSocket controlSocket(mainLoop, *instance);

    platform::linux::DesktopEntries entries(mainLoop);
    platform::linux::DesktopEntryIdentification identification(entries);
    platform::linux::DesktopEntryCatalogue catalogue(entries);
    platform::linux::SessionBus sessionBus(mainLoop);
    const auto opened =
        openDesktop(mainLoop, sessionBus, session,
                    {.icons = iconFolder(), .shellExtension = shellExtensionFolder(), .kwinScript = kwinScript()});
    if (!opened) {
        platform::linux::logToStandardError(opened.error());
        return EXIT_FAILURE;
    }
    platform::linux::Desktop& desktop = **opened;
    desktop.followApplications(identification, catalogue);
    platform::linux::AddressOpener addressOpener(sessionBus);
    platform::linux::AutostartLoginItem loginItem;
    platform::linux::ProgramFile programFile(mainLoop);
    platform::linux::LoopApplication application(mainLoop, programFile);
    platform::linux::ProcessInfo processInfo;
    platform::linux::SystemClock systemClock;
    platform::linux::SystemLog systemLog;
    platform::linux::UserDefaults userDefaults;
    const platform::MainBundle bundle = mainBundle();
    platform::linux::Localization localization("tessel", localeFolder(), bundle.preferredLocalizations);
    platform::linux::NotifierPlace notifiers(mainLoop, sessionBus, desktop.screens(), iconFolder());
    std::vector<platform::linux::TrayPlace*> trayPlaces{&notifiers};
    if (platform::linux::TrayPlace* own = desktop.trayPlace()) {
        trayPlaces.insert(desktop.prefersOwnTrayPlace() ? trayPlaces.begin() : trayPlaces.end(), own);
    }
    platform::linux::StatusBar statusBar(mainLoop, "org.corvid.Tessel", trayPlaces);
    platform::linux::Appearance appearance(sessionBus, desktop.appearanceSource());
    platform::linux::SessionLock sessionLock(mainLoop, sessionBus);
    corvid::DeferredToolkit toolkit(
        [&] {
            return startToolkit(plugin, {.mainLoop = mainLoop,
                                         .appearance = appearance,
                                         .ownWindows = &desktop.ownWindows(),
                                         .screens = desktop.screens(),
                                         .sessionLock = &sessionLock,
                                         .languages = bundle.preferredLocalizations});
        },
        [&](std::function<void()> host) { mainLoop.continueIn(std::move(host)); });
    corvid::DeferredOpenPanel openPanel(toolkit);
    corvid::DeferredPopover popover(toolkit);
    const platform::Platform table{
        .accessibility = desktop.accessibility(),
        .accessibilityObservers = desktop.accessibilityObservers(),
        .addressOpener = addressOpener,
        .applicationCatalogue = catalogue,
        .sound = desktop.sound(),
        .hotKeyEvents = desktop.hotKeyEvents(),
        .imageRenderer = nullptr,
        .localization = localization,
        .log = systemLog,
        .loginItemService = loginItem,
        .mainActor = mainLoop,
        .mainBundle = bundle,
        .openPanel = &openPanel,
        .processInfo = processInfo,
        .runningApplications = desktop.runningApplications(),
        .screens = desktop.screens(),
        .shortcutHolders = desktop.shortcutHolders(),
        .standardUserDefaults = userDefaults,
        .statusBar = statusBar,
        .systemClock = systemClock,
        .thisApplication = application,
        .workspace = desktop.workspace(),
    };
    const platform::Installation installation(table);

    corvid::Subscription statusReport;
    std::string toldStatus;
    std::optional<StatusMenu> statusMenu;
    std::optional<RemoteControl> remoteControl;
    std::optional<platform::linux::ControlBusName> busName;
    const int status = corvid::MenuBarApp::run([&]() -> corvid::MenuBarApp::Parts {
        AppState& state = AppState::shared();
        const auto quit = [&application] { application.terminate(); };
        auto menuBar = corvid::MenuBarController::make("Tessel", std::make_shared<MenuView>(state), popover,
                                                       state.objectWillChange(), menuBarSymbol(state));
        statusMenu.emplace(state, menuBar->statusItem(), StatusMenu::Ways{.open = openPopover, .quit = quit});
        programFile.onChange([&statusMenu] { statusMenu->update(); });
        // Subscribers are told before a change; the new status is there in the next turn.
        statusReport = state.objectWillChange().subscribe([&] {
            mainLoop.post([&state, &toldStatus] {
                // Who does not read what is told would have the program wait in the end.
                if (std::string line = lineFor(state); line != toldStatus) {
                    platform::linux::notifyStatus(line);
                    toldStatus = std::move(line);
                }
            });
        });
        entries.onChange([&state] { state.applicationsChanged(); });
        remoteControl.emplace(state,
                              RemoteControl::Surroundings{.version = TESSEL_VERSION,
                                                          .backend = [&desktop] { return std::string(desktop.name()); },
                                                          .caution = [&desktop] { return desktop.caution(); },
                                                          .open = openPopover,
                                                          .quit = quit});
        controlSocket.serve(*remoteControl);
        busName.emplace(sessionBus, *remoteControl);
        toldStatus = lineFor(state);
        platform::linux::notifyReady(toldStatus);
        return {.menuBar = std::move(menuBar), .updates = state.updates()};
    });
    next = application.nextProgram();
    return status;
}

} // namespace

int runResident() {
    settleEnvironment();
    enterLocale();
    platform::linux::outliveStandardReaders();
    std::optional<std::string> next;
    const int status = runUntilTheEnd(next);
    if (!next) {
        return status;
    }
    platform::linux::becomeProgram(*next);
    platform::linux::logToStandardError("cannot start " + *next + ": " + std::generic_category().message(errno));
    return EXIT_FAILURE;
}

} // namespace tessel
