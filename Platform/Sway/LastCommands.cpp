#include "Platform/Sway/LastCommands.h"

#include "Platform/Linux/Applications/ExecLine.h"
#include "Platform/Linux/Files/BaseFolders.h"
#include "Platform/Linux/Processes/ProgramStart.h"

#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <utility>

namespace platform::sway {

namespace {

/// Reads lists of commands, a line each. At the end of file, which is the end of the writing program, it runs the last
/// list. It leaves the current mode for that time. Arguments: sway's socket, and the path of swaymsg.
constexpr const char* script = R"sh(
while read -r line; do list=$line; done
test -n "$list" || exit 0
mode=$("$1" --socket "$0" --raw --type get_binding_state | sed -n 's/.*"name": *"\([^"\\]*\)".*/\1/p')
exec "$1" --socket "$0" "mode \"default\"; $list; mode \"${mode:-default}\""
)sh";

} // namespace

LastCommands::LastCommands(std::string socketPath)
    : socketPath(std::move(socketPath)) {
}

void LastCommands::set(const std::string& commands) {
    if (commands.empty()) {
        if (pipe) {
            static_cast<void>(send(commands));
            pipe = {};
        }
        return;
    }
    // Another program may have ended the shell.
    if ((!pipe || !send(commands)) && start()) {
        static_cast<void>(send(commands));
    }
}

bool LastCommands::start() {
    std::array<int, 2> ends{};
    // Not a pipe: a write to one without a reader would end this program.
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        pipe = {};
        return false;
    }
    pipe = linux::FileDescriptor(ends[0]);
    const linux::FileDescriptor theirs(ends[1]);
    const auto messenger = linux::ExecLine::locate("swaymsg", linux::programSearchPath());
    if (!messenger || !linux::startProgram("sh", {"-c", script, socketPath, *messenger}, theirs.get())) {
        pipe = {};
    }
    return static_cast<bool>(pipe);
}

bool LastCommands::send(const std::string& commands) {
    const std::string line = commands + "\n";
    // A few kilobytes at most; the socket's buffer is about a hundred.
    return ::send(pipe.get(), line.data(), line.size(), MSG_NOSIGNAL | MSG_DONTWAIT) ==
           static_cast<ssize_t>(line.size());
}

} // namespace platform::sway
