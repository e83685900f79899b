#include "Platform/Linux/Processes/ProgramStart.h"

#include "Platform/Linux/Applications/ExecLine.h"
#include "Platform/Linux/Files/BaseFolders.h"
#include "Platform/Linux/Processes/StartEnvironment.h"

#include <fcntl.h>
#include <glib.h>
#include <unistd.h>

#include <bit>
#include <csignal>

namespace platform::linux {

namespace {

/// GLib closes the descriptors; it leaves the session and the blocked signals as they are.
void leaveSession(gpointer /*data*/) {
    ::setsid();
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr); // NOLINT(concurrency-mt-unsafe)
}

/// `flags` are those of GLib. Null pointers: no child and no pipe is wanted.
bool spawn(const std::string& program, const std::vector<std::string>& arguments, unsigned flags, int input,
           pid_t* process, int* output) {
    const std::optional<std::string> path = ExecLine::locate(program, programSearchPath());
    if (!path) {
        return false;
    }
    std::vector<std::string> words{*path, program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<std::string> variables = startEnvironment();
    const std::vector<char*> given = pointersTo(variables);
    return g_spawn_async_with_pipes_and_fds(nullptr, pointersTo(words).data(),
                                            variables.empty() ? nullptr : given.data(),
                                            std::bit_cast<GSpawnFlags>(flags), &leaveSession, nullptr, input, -1, -1,
                                            nullptr, nullptr, 0, process, nullptr, output, nullptr, nullptr) != 0;
}

constexpr unsigned quiet = G_SPAWN_FILE_AND_ARGV_ZERO | G_SPAWN_STDERR_TO_DEV_NULL;

} // namespace

bool startProgram(const std::string& program, const std::vector<std::string>& arguments, int input) {
    return spawn(program, arguments, quiet | G_SPAWN_STDOUT_TO_DEV_NULL, input, nullptr, nullptr);
}

std::optional<PrintingProgram> startPrinting(const std::string& program, const std::vector<std::string>& arguments) {
    pid_t process = 0;
    int output = -1;
    constexpr unsigned flags = quiet | G_SPAWN_DO_NOT_REAP_CHILD | G_SPAWN_CLOEXEC_PIPES;
    if (!spawn(program, arguments, flags, -1, &process, &output)) {
        return std::nullopt;
    }
    ::fcntl(output, F_SETFL, O_NONBLOCK);
    return PrintingProgram{.process = process, .output = FileDescriptor(output)};
}

} // namespace platform::linux
