#pragma once

#include "Platform/Seam/Requests/ControlRequests.h"
#include "Tessel/CommandLine.h"

#include <string>

/// The command line's side of the remote control: sends the request, and puts the reply into words.
namespace tessel::RemoteCommand {

/// A command's output and exit status: 0 for success, 1 for failure.
struct Outcome {
    std::string output;
    std::string errors;
    int status = 0;

    friend bool operator==(const Outcome&, const Outcome&) = default;
};

/// Carries out the request. Waits for the reply as long as `program` does.
[[nodiscard]] Outcome carryOut(const CommandLine::Ask& ask, platform::ControlRequests& program);

} // namespace tessel::RemoteCommand
