#pragma once

#include <string>
#include <string_view>

namespace platform::linux {

/// Logs an error. The journal gets it with the fields `TESSEL_SUBSYSTEM` and `TESSEL_CATEGORY`. Standard error gets it
/// as "tessel: [category] message" where there is no journal, or where it is a terminal. Never blocks: a line that
/// cannot be written at once is lost. Any thread.
void logError(std::string_view subsystem, std::string_view category, std::string_view message);

/// The line for standard error, control characters made harmless, and cut to a length that is written in one piece.
[[nodiscard]] std::string errorLine(std::string_view category, std::string_view message);

} // namespace platform::linux
