#pragma once

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace platform::linux {

/// A process that waits to be killed.
class Sleeper {
public:
    Sleeper() {
        if (process == 0) {
            for (;;) {
                pause();
            }
        }
    }

    Sleeper(const Sleeper&) = delete;
    Sleeper& operator=(const Sleeper&) = delete;
    ~Sleeper() { end(); }

    [[nodiscard]] pid_t number() const { return process; }

    void end() {
        if (process > 0) {
            kill(process, SIGKILL);
            waitpid(process, nullptr, 0);
            process = -1;
        }
    }

private:
    pid_t process = fork();
};

} // namespace platform::linux
