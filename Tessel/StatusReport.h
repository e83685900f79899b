#pragma once

#include "Platform/Seam/Requests/ControlRequests.h"

#include <string>
#include <vector>

/// Replies of the running program in words, each text with its line ends.
namespace tessel::StatusReport {

/// For people.
[[nodiscard]] std::string text(const platform::ControlStatus& status);

/// For programs: one JSON object on one line.
[[nodiscard]] std::string json(const platform::ControlStatus& status);

/// The result of a request: {"done": true}, or {"done": false, "error": …, "message": …}.
[[nodiscard]] std::string doneJson();
[[nodiscard]] std::string json(const platform::ControlRefusal& refusal);

/// The removed files, each path on a line of its own; and the failures, as sentences.
[[nodiscard]] std::string forgottenText(const std::vector<std::string>& removed);
[[nodiscard]] std::string forgottenJson(const std::vector<std::string>& removed,
                                        const std::vector<std::string>& failures);

/// The status of a program that does not run.
[[nodiscard]] std::string notRunningJson();

} // namespace tessel::StatusReport
