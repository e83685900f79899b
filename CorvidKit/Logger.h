#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace corvid {

/// Writes to the system's log under a subsystem and a category.
class Logger {
public:
    Logger(std::string subsystem, std::string category)
        : subsystem(std::move(subsystem))
        , category(std::move(category)) {}

    /// Logs an error; every reader of the log can read the message.
    void error(std::string_view message) const;

private:
    std::string subsystem;
    std::string category;
};

} // namespace corvid
