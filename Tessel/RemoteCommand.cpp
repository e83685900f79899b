#include "Tessel/RemoteCommand.h"

#include "Tessel/StatusReport.h"

#include <utility>

namespace tessel::RemoteCommand {

namespace {

using platform::ControlAnswer;
using platform::ControlRefusal;
using What = CommandLine::Ask::What;

Outcome refused(const CommandLine::Ask& ask, const ControlRefusal& refusal) {
    if (!ask.json) {
        return {.output = {}, .errors = "tessel: " + refusal.reason + "\n", .status = 1};
    }
    const bool isAbsent = ask.what == What::status && refusal.kind == ControlRefusal::Kind::notRunning;
    return {
        .output = isAbsent ? StatusReport::notRunningJson() : StatusReport::json(refusal), .errors = {}, .status = 1};
}

ControlAnswer<void> order(const CommandLine::Ask& ask, platform::ControlRequests& program) {
    switch (ask.what) {
    case What::perform: {
        ControlAnswer<void> answer;
        program.perform(ask.arguments.at(0), [&answer](const ControlAnswer<void>& given) { answer = given; });
        return answer;
    }
    case What::rule:
        return program.setRule(ask.arguments.at(0), ask.arguments.at(1));
    case What::takeShortcuts:
        return program.setBorrowsShortcuts(true);
    case What::giveBackShortcuts:
        return program.setBorrowsShortcuts(false);
    case What::quit:
        return program.quit();
    case What::status:
        break;
    }
    std::unreachable();
}

} // namespace

Outcome carryOut(const CommandLine::Ask& ask, platform::ControlRequests& program) {
    if (ask.what == What::status) {
        const auto status = program.status();
        if (!status) {
            return refused(ask, status.error());
        }
        return {.output = ask.json ? StatusReport::json(*status) : StatusReport::text(*status), .errors = {}};
    }
    if (const ControlAnswer<void> answer = order(ask, program); !answer) {
        return refused(ask, answer.error());
    }
    return {.output = ask.json ? StatusReport::doneJson() : std::string(), .errors = {}};
}

} // namespace tessel::RemoteCommand
