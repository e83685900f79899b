#include "Openbox.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string>

namespace platform::x11 {

Openbox::Openbox(const char* option)
    : process(fork()) {
    if (process == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        const int silence = open("/dev/null", O_RDWR);
        dup2(silence, STDOUT_FILENO);
        dup2(silence, STDERR_FILENO);
        const std::string folder = testing::TempDir() + "openbox";
        for (const char* variable : {"HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"}) {
            setenv(variable, folder.c_str(), 1);
        }
        execlp("openbox", "openbox", "--sm-disable", option, static_cast<char*>(nullptr));
        _exit(127);
    }
}

Openbox::~Openbox() {
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
}

bool Openbox::isInstalled() {
    return std::system("command -v openbox >/dev/null") == 0;
}

} // namespace platform::x11
