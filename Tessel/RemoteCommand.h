#pragma once

#include "Platform/ControlRequests.h"
#include "Tessel/CommandLine.h"

#include <string>

/// The command line's side of the remote control: asks, and words the answer.
namespace tessel::RemoteCommand {

/// What a command prints and ends with: 0 where it was carried out, 1 where not.
struct Outcome {
    std::string output;
    std::string errors;
    int status = 0;

    friend bool operator==(const Outcome&, const Outcome&) = default;
};

/// Carries out what was asked. Waits for the answer as long as `program` does.
[[nodiscard]] Outcome carryOut(const CommandLine::Ask& ask, platform::ControlRequests& program);

} // namespace tessel::RemoteCommand
