#include "XServer.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <stdexcept>

namespace platform::x11 {

XServer::XServer(const std::vector<std::string>& lacking) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("cannot make a pipe");
    }
    process = fork();
    if (process == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        const int announcement = dup(ends[1]);
        const std::string number = std::to_string(announcement);
        const int silence = open("/dev/null", O_RDWR);
        dup2(silence, STDOUT_FILENO);
        dup2(silence, STDERR_FILENO);
        std::vector<const char*> words{"Xvfb",        "-displayfd", number.c_str(), "-screen", "0",
                                       "1280x800x24", "-noreset",   "-listen",      "tcp"};
        for (const std::string& extension : lacking) {
            words.insert(words.end(), {"-extension", extension.c_str()});
        }
        words.push_back(nullptr);
        execvp("Xvfb", const_cast<char* const*>(words.data()));
        _exit(127);
    }
    close(ends[1]);
    // The server writes its number when it is ready, and ends the line.
    for (char letter = 0; read(ends[0], &letter, 1) == 1 && letter != '\n';) {
        name += letter;
    }
    close(ends[0]);
    if (name.empty()) {
        throw std::runtime_error("Xvfb does not start");
    }
    name.insert(0, ":");
    setenv("DISPLAY", name.c_str(), 1);
}

XServer::~XServer() {
    const int end = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
    pollfd state{.fd = end, .events = POLLIN, .revents = 0};
    constexpr int aWhile = 1000;
    // The server may be just about to wait for its clients: then it notices a signal only with the next one.
    do {
        kill(process, SIGTERM);
    } while (end >= 0 && poll(&state, 1, aWhile) == 0);
    close(end);
    waitpid(process, nullptr, 0);
}

} // namespace platform::x11
