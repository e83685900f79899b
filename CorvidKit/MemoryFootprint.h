#pragma once

#include <cstdint>

/// How much memory this process takes.
namespace corvid::MemoryFootprint {

struct Reading {
    /// The physical memory that the process takes now, in bytes.
    std::uint64_t current = 0;
    /// The most that it has ever taken, in bytes.
    std::uint64_t peak = 0;

    /// In mebibytes.
    [[nodiscard]] double currentMB() const;
    [[nodiscard]] double peakMB() const;

    friend bool operator==(const Reading&, const Reading&) = default;
};

/// Asks the system; zeros where it does not report them.
[[nodiscard]] Reading read();

} // namespace corvid::MemoryFootprint
