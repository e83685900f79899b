#include "Platform/Linux/Log/Log.h"

#include <unistd.h>

#include <cerrno>
#include <string>

namespace platform::linux {

void logToStandardError(std::string_view line) {
    const std::string text = std::string{program_invocation_short_name} + ": " + std::string{line} + "\n";
    // One call, so that lines of several processes do not run into each other.
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, text.data(), text.size());
}

} // namespace platform::linux
