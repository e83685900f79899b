#include "Platform/Linux/DetachedPrograms.h"

#include "Platform/Linux/FileDescriptor.h"
#include "Platform/Linux/ProgramStart.h"

#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <utility>

namespace platform::linux {

class DetachedPrograms::Child {
public:
    Child(MainLoop& mainLoop, pid_t process, std::function<void()> ended)
        : process(process)
        // glibc 2.36 declares the function for C only.
        , handle(static_cast<int>(::syscall(SYS_pidfd_open, process, 0))) {
        // Readable when the process ends (pidfd_open(2)). Without it the process waits for the next start.
        if (handle) {
            watch = mainLoop.watch(handle.get(), [] { return false; }, std::move(ended));
        }
    }

    /// Whether the process is gone. Asked only once for a process that is.
    [[nodiscard]] bool collect() const { return ::waitpid(process, nullptr, WNOHANG) != 0; }

private:
    pid_t process;
    FileDescriptor handle;
    std::unique_ptr<DescriptorWatch> watch;
};

DetachedPrograms::DetachedPrograms(MainLoop& mainLoop)
    : mainLoop(mainLoop) {
}

DetachedPrograms::~DetachedPrograms() = default;

bool DetachedPrograms::start(std::string_view program, const std::vector<std::string>& arguments, int input) {
    constexpr int nowhere = -1;
    const std::optional<pid_t> process = startProgram(program, arguments, nowhere, input);
    if (!process) {
        return false;
    }
    collect();
    children.emplace_back(mainLoop, *process, [this] { collectSoon(); });
    return true;
}

void DetachedPrograms::collectSoon() {
    // In a turn of its own: a watch cannot be dropped by what it calls. And once: the handle stays readable until then,
    // and a timer that is set anew in every turn may never be the one whose turn it is.
    if (!collection) {
        collection = mainLoop.schedule(mainLoop.now(), {}, [this] {
            collection.reset();
            collect();
        });
    }
}

void DetachedPrograms::collect() {
    children.remove_if([](const Child& child) { return child.collect(); });
}

} // namespace platform::linux
