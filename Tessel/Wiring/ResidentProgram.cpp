#include "Tessel/Wiring/ResidentProgram.h"

#include "CorvidKit/MenuBarController.h"
#include "Platform/Linux/Files/BaseFolders.h"
#include "Platform/Linux/Processes/ServiceNotification.h"
#include "Platform/Linux/Tray/PanelIcons.h"
#include "Tessel/MenuBarSymbol.h"
#include "Tessel/MenuView.h"
#include "Tessel/StatusText.h"
#include "Tessel/Wiring/ThisProgram.h"
#include "Tessel/Wiring/ToolkitPlugin.h"

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

} // namespace

ResidentProgram::ResidentProgram(const Foundation& foundation, std::unique_ptr<platform::linux::Desktop> opened)
    : foundation(foundation)
    , desktop(followed(std::move(opened)))
    , notifiers(foundation.mainLoop, foundation.sessionBus, desktop->parts().screens,
                platform::linux::iconThemePath(iconFolder(), platform::linux::BaseFolders::ofThisProcess().data,
                                               platform::linux::currentDesktops()))
    , statusBar(foundation.mainLoop, "org.corvid.Tessel", trayPlaces())
    , appearance(foundation.sessionBus, desktop->appearanceSource())
    , sessionLock(foundation.mainLoop, foundation.sessionBus)
    , toolkit(
          foundation.mainLoop, [this] { return startToolkit(); },
          [&mainLoop = foundation.mainLoop](std::function<void()> host) { mainLoop.continueIn(std::move(host)); })
    , table{
          .desktop = desktop->parts(),
          .addressOpener = addressOpener,
          .applicationCatalogue = catalogue,
          .imageRenderer = nullptr,
          .localization = foundation.localization,
          .log = systemLog,
          .loginItemService = loginItem,
          .mainActor = foundation.mainLoop,
          .mainBundle = foundation.bundle,
          .processInfo = processInfo,
          .standardUserDefaults = userDefaults,
          .statusBar = statusBar,
          .systemClock = systemClock,
          .thisApplication = application,
      } {
}

int ResidentProgram::run() {
    return corvid::MenuBarApp::run([this] { return launch(); });
}

std::unique_ptr<platform::linux::Desktop> ResidentProgram::followed(std::unique_ptr<platform::linux::Desktop> opened) {
    opened->followApplications(identification, catalogue);
    return opened;
}

std::vector<platform::linux::TrayPlace*> ResidentProgram::trayPlaces() {
    std::vector<platform::linux::TrayPlace*> places{&notifiers};
    if (platform::linux::TrayPlace* own = desktop->trayPlace()) {
        places.insert(desktop->prefersOwnTrayPlace() ? places.begin() : places.end(), own);
    }
    return places;
}

std::unique_ptr<platform::Toolkit> ResidentProgram::startToolkit() {
    return tessel::startToolkit(foundation.plugin, {.mainLoop = foundation.mainLoop,
                                                    .mainActor = foundation.mainLoop,
                                                    .appearance = appearance,
                                                    .ownWindows = &desktop->parts().ownWindows,
                                                    .screens = desktop->parts().screens,
                                                    .sessionLock = &sessionLock,
                                                    .languages = foundation.bundle.preferredLocalizations});
}

corvid::MenuBarApp::Parts ResidentProgram::launch() {
    AppState& state = AppState::shared();
    auto menuBar = corvid::MenuBarController::make("Tessel", std::make_shared<MenuView>(state), popover,
                                                   state.objectWillChange(), menuBarSymbol(state));
    statusMenu.emplace(state, menuBar->statusItem(),
                       StatusMenu::Context{.mainActor = foundation.mainLoop,
                                           .localization = foundation.localization,
                                           .application = application,
                                           .open = openPopover});
    programFile.onChange([this] { statusMenu->update(); });
    followStatus(state);
    entries.onChange([&state] { state.applicationsChanged(); });
    serveRequests(state);
    reportedStatus = lineFor(state);
    platform::linux::notifyReady(reportedStatus);
    welcome.begin(
        state,
        {.open = openPopover,
         .notify = [this](const std::string& text) { notifications.show(text); },
         .watchLock = [this](std::function<void()> locked) { return sessionLock.watchAndAsk(std::move(locked)); }});
    return {.menuBar = std::move(menuBar), .updates = state.updates()};
}

void ResidentProgram::followStatus(AppState& state) {
    // Sent before a change; the new status is there in the next turn.
    statusChanges = state.objectWillChange().subscribe([this, &state] {
        foundation.mainLoop.post([this, &state] {
            // A service manager that does not read its messages would make the program wait in the end, so only a new
            // line is sent.
            if (std::string line = lineFor(state); line != reportedStatus) {
                platform::linux::notifyStatus(line);
                reportedStatus = std::move(line);
            }
        });
    });
}

void ResidentProgram::serveRequests(AppState& state) {
    remoteControl.emplace(state, RemoteControl::Context{
                                     .version = TESSEL_VERSION,
                                     .localization = foundation.localization,
                                     .application = application,
                                     .backend = [this] { return std::string(desktop->name()); },
                                     .caution = [this] { return desktop->caution(); },
                                     .open = openPopover,
                                 });
    foundation.controlSocket.serve(*remoteControl);
    busName.emplace(foundation.sessionBus, *remoteControl);
}

} // namespace tessel
