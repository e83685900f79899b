#include "CorvidKitCore/CommandLineOption.h"
#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/Control/ControlClient.h"
#include "Platform/Linux/Processes/StandardStreams.h"
#include "Tessel/CommandLine.h"
#include "Tessel/RemoteCommand.h"
#include "Tessel/Wiring/Forgetting.h"
#include "Tessel/Wiring/PictureRun.h"
#include "Tessel/Wiring/ResidentRun.h"
#include "Tessel/Wiring/SessionFacts.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

/// Sends requests to the program that runs in this session; without a display, to the one on the user's message bus.
int ask(const tessel::CommandLine::Ask& request) {
    using platform::linux::ControlClient;
    const auto session = tessel::sessionOf(tessel::SessionFacts::ofThisProcess());
    ControlClient client = session.display.empty() ? ControlClient::onBus(platform::linux::sessionBusAddress())
                                                   : ControlClient::ofSession(session);
    const tessel::RemoteCommand::Outcome outcome = tessel::RemoteCommand::carryOut(request, client);
    // A script must not continue as if the reply had been printed.
    const bool isPrinted = platform::linux::printToStandardOutput(outcome.output);
    std::fputs(outcome.errors.c_str(), stderr);
    return isPrinted || outcome.status != EXIT_SUCCESS ? outcome.status : EXIT_FAILURE;
}

template <typename... Handlers>
struct Overloaded : Handlers... {
    using Handlers::operator()...;
};

} // namespace

int main(int argumentCount, char** arguments) {
    platform::linux::openClosedStandardStreams();
    const std::vector<std::string> words(arguments, arguments + argumentCount);
    if (const auto directory = corvid::CommandLineOption::value("--snapshot", words)) {
        tessel::runPictures(*directory);
        return EXIT_SUCCESS;
    }
    return std::visit(Overloaded{
                          [](const tessel::CommandLine::Run&) { return tessel::runResident(); },
                          [](const tessel::CommandLine::Print& print) {
                              const bool isPrinted = platform::linux::printToStandardOutput(print.text);
                              return isPrinted ? EXIT_SUCCESS : EXIT_FAILURE;
                          },
                          [](const tessel::CommandLine::Refuse& refusal) {
                              constexpr int wrongUsage = 2;
                              std::fputs(refusal.line.c_str(), stderr);
                              return wrongUsage;
                          },
                          [](const tessel::CommandLine::Ask& request) { return ask(request); },
                          [](const tessel::CommandLine::Forget& request) { return tessel::forget(request); },
                      },
                      tessel::CommandLine::parse(words, TESSEL_VERSION));
}
