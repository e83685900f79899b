#pragma once

#include <functional>
#include <string_view>

namespace platform::linux {

/// The destination of a line for the log: one text without a line end.
using Log = std::function<void(std::string_view line)>;

/// Writes the line to standard error after the program's name, in one piece. A desktop session keeps its programs'
/// standard error in the user's journal. Failures are ignored.
void logToStandardError(std::string_view line);

} // namespace platform::linux
