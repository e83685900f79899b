#include "CorvidKit/Publisher.h"
#include "CorvidKitCore/PreferredLocalizations.h"
#include "Platform/Linux/AddressOpener.h"
#include "Platform/Linux/Applications/DesktopEntries.h"
#include "Platform/Linux/Applications/DesktopEntryCatalogue.h"
#include "Platform/Linux/Applications/DesktopEntryIdentification.h"
#include "Platform/Linux/AutostartLoginItem.h"
#include "Platform/Linux/BaseFolders.h"
#include "Platform/Linux/Control/ControlBusName.h"
#include "Platform/Linux/Control/ControlClient.h"
#include "Platform/Linux/Control/ControlSocket.h"
#include "Platform/Linux/Control/SessionBus.h"
#include "Platform/Linux/Control/SessionClaim.h"
#include "Platform/Linux/Languages.h"
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
#include "Platform/MainBundle.h"
#include "Platform/Platform.h"
#include "Platform/X11/Desktop.h"
#include "Tessel/AppState.h"
#include "Tessel/CommandLine.h"
#include "Tessel/RemoteCommand.h"
#include "Tessel/RemoteControl.h"
#include "Tessel/StatusLine.h"

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

platform::MainBundle mainBundle() {
    return {.identifier = "org.corvid.Tessel",
            .infoDictionary = {{"CFBundleShortVersionString", TESSEL_VERSION}},
            .website = TESSEL_WEBSITE,
            .preferredLocalizations = corvid::preferredLocalizations(
                platform::linux::partsBetweenColons(TESSEL_LANGUAGES), platform::linux::userLanguages())};
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
    const platform::MainBundle bundle = mainBundle();
    platform::linux::Localization localization("tessel", platform::linux::programFolder() / TESSEL_LOCALE_FOLDER,
                                               bundle.preferredLocalizations);
    platform::linux::LoopApplication application(mainLoop);
    platform::linux::ProcessInfo processInfo;
    platform::linux::SystemClock systemClock;
    platform::linux::SystemLog systemLog;
    platform::linux::UserDefaults userDefaults;
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
        .systemClock = systemClock,
        .thisApplication = application,
        .workspace = (*desktop)->workspace(),
    };
    const platform::Installation installation(table);

    tessel::AppState& state = tessel::AppState::shared();
    // Subscribers are told before a change; the new status is there in the next turn.
    const corvid::Subscription statusReport = state.objectWillChange().subscribe(
        [&] { mainLoop.post([&state] { platform::linux::notifyStatus(statusLine(state)); }); });
    // What was just installed has another name now, and may be what a window was waiting to be called.
    entries.onChange([&state] {
        if (!state.rules().empty()) {
            state.setRules(state.rules());
        }
    });
    tessel::RemoteControl remoteControl(state, {.version = TESSEL_VERSION,
                                                .backend = "X11",
                                                .open = [] {},
                                                .quit = [&mainLoop] { mainLoop.end(EXIT_SUCCESS); }});
    controlSocket.serve(remoteControl);
    const platform::linux::ControlBusName busName(sessionBus, remoteControl);

    platform::linux::notifyReady(statusLine(state));
    return mainLoop.run();
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
