#pragma once

#include <string_view>

namespace corvid {

/// A place in the source, as fatal errors name it.
struct SourceLocation {
    std::string_view file;
    unsigned line = 0;
};

/// Stops the process because of a programming error, after "file:line: Fatal error: message" on the standard error.
[[noreturn]] void fatalError(std::string_view message, SourceLocation location);

} // namespace corvid
