#pragma once

#include <string>
#include <string_view>

namespace platform::linux {

/// Notes an error, for whoever looks for the reason of something that did not work: in the journal with the fields
/// `TESSEL_SUBSYSTEM` and `TESSEL_CATEGORY`, and on standard error, as "tessel: [category] message", where there is no
/// journal to take it or where somebody watches. Never waits: what nobody takes at once is lost. Any thread.
void logError(std::string_view subsystem, std::string_view category, std::string_view message);

/// The line for standard error, control characters made harmless, and cut to a length that is written in one piece.
[[nodiscard]] std::string errorLine(std::string_view category, std::string_view message);

} // namespace platform::linux
