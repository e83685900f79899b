#pragma once

#include <chrono>

namespace corvid {

/// A point in time by the calendar, with seconds since 1970-01-01 00:00 UTC as a 64-bit float.
using Date = std::chrono::sys_time<std::chrono::duration<double>>;

/// Seconds from 1970-01-01 00:00 UTC.
[[nodiscard]] constexpr double secondsSince1970(Date date) {
    return date.time_since_epoch().count();
}

[[nodiscard]] constexpr Date dateOf(double secondsSince1970) {
    return Date(std::chrono::duration<double>(secondsSince1970));
}

} // namespace corvid
