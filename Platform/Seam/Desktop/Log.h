#pragma once

#include <string_view>

namespace platform {

/// The system's log. Any thread; never blocks for long, never fails.
class Log {
public:
    Log() = default;
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;
    virtual ~Log() = default;

    /// Logs an error. `subsystem` names the program (org.corvid.Tessel), `category` the part of it.
    virtual void error(std::string_view subsystem, std::string_view category, std::string_view message) = 0;
};

} // namespace platform
