#include "CorvidKit/MenuBarApp.h"
#include "CorvidKit/MenuBarController.h"
#include "CorvidKit/Publisher.h"
#include "Platform/Linux/AddressOpener.h"
#include "Platform/Linux/Applications/DesktopEntries.h"
#include "Platform/Linux/Applications/DesktopEntryCatalogue.h"
#include "Platform/Linux/Applications/DesktopEntryIdentification.h"
#include "Platform/Linux/AutostartLoginItem.h"
#include "Platform/Linux/Control/ControlBusName.h"
#include "Platform/Linux/Control/ControlClient.h"
#include "Platform/Linux/Control/ControlSocket.h"
#include "Platform/Linux/Control/SessionBus.h"
#include "Platform/Linux/Control/SessionClaim.h"
#include "Platform/Linux/Localization.h"
#include "Platform/Linux/Log.h"
#include "Platform/Linux/LoopApplication.h"
#include "Platform/Linux/MainLoop.h"
#include "Platform/Linux/ProcessInfo.h"
#include "Platform/Linux/ProgramFolder.h"
#include "Platform/Linux/ServiceNotification.h"
#include "Platform/Linux/Settings/UserDefaults.h"
#include "Platform/Linux/SystemClock.h"
#include "Platform/Linux/SystemLog.h"
#include "Platform/Linux/Tray/NotifierPlace.h"
#include "Platform/Linux/Tray/StatusBar.h"
#include "Platform/MainBundle.h"
#include "Platform/Platform.h"
#include "Platform/Popover.h"
#include "Platform/View.h"
#include "Platform/X11/Desktop.h"
#include "Tessel/AppState.h"
#include "Tessel/CommandLine.h"
#include "Tessel/RemoteCommand.h"
#include "Tessel/RemoteControl.h"
#include "Tessel/StatusLine.h"
#include "Tessel/StatusMenu.h"

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

platform::MainBundle mainBundle() {
    return {.identifier = "org.corvid.Tessel",
            .infoDictionary = {{"CFBundleShortVersionString", TESSEL_VERSION}},
            .website = TESSEL_WEBSITE};
}

/// Lets names be sorted and shown in the user's language; numbers stay as programs write them.
void enterLocale() {
    for (const int category : {LC_CTYPE, LC_COLLATE, LC_MESSAGES}) {
        if (std::setlocale(category, "") == nullptr) {
            std::setlocale(category, "C.UTF-8");
        }
    }
}

std::string statusLine(const tessel::AppState& state) {
    return tessel::statusLine(state.status(), state.failedShortcuts());
}

/// There is nothing yet to show in one.
class NoPopover final : public platform::Popover {
public:
    void setContentView(std::shared_ptr<const platform::View> /*view*/) override {}

    [[nodiscard]] bool hasContentView() const override { return false; }

    void setBehavior(Behavior /*behavior*/) override {}

    void setAnimates(bool /*animates*/) override {}

    [[nodiscard]] bool isShown() const override { return false; }

    void show(const Anchor& /*anchor*/, Edge /*preferredEdge*/) override {}

    void makeKey() override {}

    void performClose() override {}
};

void openPopover() {
    if (const auto& menuBar = corvid::MenuBarController::shared()) {
        menuBar->open();
    }
}

/// The resident program: everything is wired here, and nowhere else.
int runResident() {
    enterLocale();
    platform::linux::MainLoop mainLoop;
    mainLoop.endOnTerminationSignals();

    const auto instance = platform::linux::claimSession(platform::x11::Desktop::sessionName());
    if (!instance) {
        if (!instance.error().asked) {
            platform::linux::logToStandardError("already running in this session, but not answering");
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
    const auto desktop = platform::x11::Desktop::open(mainLoop);
    if (!desktop) {
        platform::linux::logToStandardError(desktop.error());
        return EXIT_FAILURE;
    }

    (*desktop)->followApplications(identification, catalogue);
    platform::linux::SessionBus sessionBus(mainLoop);
    platform::linux::AddressOpener addressOpener(mainLoop, sessionBus);
    platform::linux::AutostartLoginItem loginItem;
    platform::linux::Localization localization("tessel", platform::linux::programFolder() / TESSEL_LOCALE_FOLDER);
    platform::linux::LoopApplication application(mainLoop);
    platform::linux::ProcessInfo processInfo;
    platform::linux::SystemClock systemClock;
    platform::linux::SystemLog systemLog;
    platform::linux::UserDefaults userDefaults;
    platform::linux::NotifierPlace notifiers(mainLoop, sessionBus, (*desktop)->screens(),
                                             platform::linux::programFolder() / TESSEL_ICON_FOLDER);
    platform::linux::StatusBar statusBar(mainLoop, "org.corvid.Tessel", {&notifiers, &(*desktop)->systemTray()});
    NoPopover popover;
    const platform::MainBundle bundle = mainBundle();
    const platform::Platform table{
        .accessibility = (*desktop)->accessibility(),
        .accessibilityObservers = (*desktop)->accessibilityObservers(),
        .addressOpener = addressOpener,
        .applicationCatalogue = catalogue,
        .sound = (*desktop)->sound(),
        .hotKeyEvents = (*desktop)->hotKeyEvents(),
        .localization = localization,
        .log = systemLog,
        .loginItemService = loginItem,
        .mainActor = mainLoop,
        .mainBundle = bundle,
        .openPanel = nullptr,
        .processInfo = processInfo,
        .runningApplications = (*desktop)->runningApplications(),
        .screens = (*desktop)->screens(),
        .standardUserDefaults = userDefaults,
        .statusBar = statusBar,
        .systemClock = systemClock,
        .thisApplication = application,
        .workspace = (*desktop)->workspace(),
    };
    const platform::Installation installation(table);

    corvid::Subscription statusReport;
    std::optional<tessel::StatusMenu> statusMenu;
    std::optional<tessel::RemoteControl> remoteControl;
    std::optional<platform::linux::ControlBusName> busName;
    return corvid::MenuBarApp::run([&]() -> corvid::MenuBarApp::Parts {
        tessel::AppState& state = tessel::AppState::shared();
        const auto quit = [&application] { application.terminate(); };
        auto menuBar = corvid::MenuBarController::make(
            "Tessel", std::make_shared<platform::View>(), popover, state.objectWillChange(),
            [&state] { return std::string(state.status().menuBarSymbol()); });
        statusMenu.emplace(state, menuBar->statusItem(), tessel::StatusMenu::Ways{.open = openPopover, .quit = quit});
        // Subscribers are told before a change; the new status is there in the next turn.
        statusReport = state.objectWillChange().subscribe(
            [&] { mainLoop.post([&state] { platform::linux::notifyStatus(statusLine(state)); }); });
        // What was just installed has another name now, and may be what a window was waiting to be called.
        entries.onChange([&state] {
            if (!state.rules().empty()) {
                state.setRules(state.rules());
            }
        });
        remoteControl.emplace(state,
                              tessel::RemoteControl::Surroundings{
                                  .version = TESSEL_VERSION, .backend = "X11", .open = openPopover, .quit = quit});
        controlSocket.serve(*remoteControl);
        busName.emplace(sessionBus, *remoteControl);
        platform::linux::notifyReady(statusLine(state));
        return {.menuBar = std::move(menuBar), .updates = state.updates()};
    });
}

/// Asks the program that runs on this display; without a display to name, the one on the user's message bus.
int ask(const tessel::CommandLine::Ask& request) {
    using platform::linux::ControlClient;
    const std::string session = platform::x11::Desktop::sessionName();
    ControlClient client = session.empty() ? ControlClient::onBus(platform::linux::sessionBusAddress())
                                           : ControlClient::ofSession(session);
    const tessel::RemoteCommand::Outcome outcome = tessel::RemoteCommand::carryOut(request, client);
    std::fputs(outcome.output.c_str(), stdout);
    std::fputs(outcome.errors.c_str(), stderr);
    return outcome.status;
}

template <typename... Handlers>
struct Overloaded : Handlers... {
    using Handlers::operator()...;
};

} // namespace

int main(int argumentCount, char** arguments) {
    const std::vector<std::string> words(arguments, arguments + argumentCount);
    return std::visit(Overloaded{
                          [](const tessel::CommandLine::Run&) { return runResident(); },
                          [](const tessel::CommandLine::Print& print) {
                              std::fputs(print.text.c_str(), stdout);
                              return EXIT_SUCCESS;
                          },
                          [](const tessel::CommandLine::Refuse& refusal) {
                              constexpr int wrongUsage = 2;
                              std::fputs(refusal.line.c_str(), stderr);
                              return wrongUsage;
                          },
                          [](const tessel::CommandLine::Ask& request) { return ask(request); },
                      },
                      tessel::CommandLine::parse(words, TESSEL_VERSION));
}
