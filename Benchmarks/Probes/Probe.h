#pragma once

#include <chrono>

namespace benchmarks {

using Clock = std::chrono::steady_clock;

/// Ends the probe with a message on standard error: a failed measurement must not look like a result.
[[noreturn]] void fail(const char* sentence);

} // namespace benchmarks
