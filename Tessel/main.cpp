#include "CorvidKit/Publisher.h"
#include "Platform/Linux/Log.h"
#include "Platform/Linux/MainLoop.h"
#include "Platform/Linux/ProcessInfo.h"
#include "Platform/Linux/ServiceNotification.h"
#include "Platform/Linux/SingleInstance.h"
#include "Platform/Linux/UserDefaults.h"
#include "Platform/Platform.h"
#include "Platform/X11/Desktop.h"
#include "Tessel/AppState.h"
#include "Tessel/CommandLine.h"
#include "Tessel/StatusLine.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

std::string statusLine(const tessel::AppState& state) {
    return tessel::statusLine(state.status(), state.failedShortcuts());
}

/// The resident program: everything is wired here, and nowhere else.
int runResident() {
    platform::linux::MainLoop mainLoop;
    mainLoop.endOnTerminationSignals();

    const auto desktop = platform::x11::Desktop::open(mainLoop);
    if (!desktop) {
        platform::linux::logToStandardError(desktop.error());
        return EXIT_FAILURE;
    }
    const auto instance = platform::linux::SingleInstance::acquire((*desktop)->sessionName());
    if (!instance) {
        std::puts("tessel: already running in this session");
        return EXIT_SUCCESS;
    }

    platform::linux::ProcessInfo processInfo;
    platform::linux::UserDefaults userDefaults;
    const platform::Platform table{
        .accessibility = (*desktop)->accessibility(),
        .sound = (*desktop)->sound(),
        .hotKeyEvents = (*desktop)->hotKeyEvents(),
        .mainActor = mainLoop,
        .processInfo = processInfo,
        .screens = (*desktop)->screens(),
        .standardUserDefaults = userDefaults,
        .workspace = (*desktop)->workspace(),
    };
    const platform::Installation installation(table);

    tessel::AppState& state = tessel::AppState::shared();
    // Subscribers are told before a change; the new status is there in the next turn.
    const corvid::Subscription statusReport = state.objectWillChange().subscribe(
        [&] { mainLoop.post([&state] { platform::linux::notifyStatus(statusLine(state)); }); });
    platform::linux::notifyReady(statusLine(state));
    return mainLoop.run();
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
                      },
                      tessel::CommandLine::parse(words, TESSEL_VERSION));
}
