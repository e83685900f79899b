#pragma once

#include <cstdint>

namespace platform {

/// A process's use of the machine's memory, in bytes.
struct MemoryUse {
    std::uint64_t current = 0;
    /// The largest value since the process started; never less than `current`.
    std::uint64_t peak = 0;

    friend bool operator==(const MemoryUse&, const MemoryUse&) = default;
};

} // namespace platform
