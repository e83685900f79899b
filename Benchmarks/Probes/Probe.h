#pragma once

#include <chrono>

namespace benchmarks {

using Clock = std::chrono::steady_clock;

/// Ends the probe with a sentence on standard error: a measurement that cannot be made must not look like one.
[[noreturn]] void fail(const char* sentence);

} // namespace benchmarks
