#include "Platform/Linux/Processes/StandardStreams.h"

#include "Platform/Linux/Log/Log.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
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

void outliveStandardReaders() {
    // A handler ends with the program that is replaced; a signal that is ignored would stay so in those that are
    // started.
    struct sigaction action{};
    action.sa_handler = [](int /*signal*/) {};
    action.sa_flags = SA_RESTART;
    ::sigaction(SIGPIPE, &action, nullptr);
}

bool printToStandardOutput(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0) {
        return true;
    }
    logToStandardError("cannot write to standard output: " + std::generic_category().message(errno));
    return false;
}

} // namespace platform::linux
