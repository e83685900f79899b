#include "Platform/Linux/StandardStreams.h"

#include "Platform/Linux/Log.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>
#include <system_error>

namespace platform::linux {

void openClosedStandardStreams() {
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(standard, F_GETFD) < 0) {
            // The lowest number that is free, which is this one: those before are open by now.
            [[maybe_unused]] const int opened = ::open("/dev/null", O_RDWR);
        }
    }
}

bool printToStandardOutput(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0) {
        return true;
    }
    logToStandardError("cannot write to standard output: " + std::generic_category().message(errno));
    return false;
}

} // namespace platform::linux
