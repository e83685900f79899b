#pragma once

#include <cstdint>

namespace platform {

/// How much of the machine's memory a process occupies, in bytes.
struct MemoryUse {
    std::uint64_t current = 0;
    /// The most that it has been since the process started; never less than `current`.
    std::uint64_t peak = 0;

    friend bool operator==(const MemoryUse&, const MemoryUse&) = default;
};

} // namespace platform
