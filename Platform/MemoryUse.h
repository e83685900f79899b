#pragma once

#include <cstdint>

namespace platform {

/// The physical memory that a process takes, in bytes, as the kernel counts it.
struct MemoryUse {
    std::uint64_t current = 0;
    /// The most that it has ever taken.
    std::uint64_t peak = 0;

    friend bool operator==(const MemoryUse&, const MemoryUse&) = default;
};

} // namespace platform
