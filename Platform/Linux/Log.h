#pragma once

#include <functional>
#include <string_view>

namespace platform::linux {

/// Where a line for the log goes: one text without a line end.
using Log = std::function<void(std::string_view line)>;

/// Writes the line to standard error after the program's name, in one piece. A desktop session keeps what its programs
/// write there in the user's journal. Failures are ignored.
void logToStandardError(std::string_view line);

} // namespace platform::linux
