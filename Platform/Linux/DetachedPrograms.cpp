#include "Platform/Linux/DetachedPrograms.h"

#include "Platform/Linux/FileDescriptor.h"
#include "Platform/Linux/StartEnvironment.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <functional>
#include <utility>

namespace platform::linux {

namespace {

bool canRun(const std::string& path) {
    struct stat file{};
    return ::stat(path.c_str(), &file) == 0 && S_ISREG(file.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

/// posix_spawn's settings, given back with their owner.
class SpawnSettings {
public:
    SpawnSettings() {
        posix_spawn_file_actions_init(&actions);
        posix_spawnattr_init(&attributes);
        for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            posix_spawn_file_actions_addopen(&actions, standard, "/dev/null", O_RDWR, 0);
        }
        posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes, &signals);
        sigfillset(&signals);
        posix_spawnattr_setsigdefault(&attributes, &signals);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }

    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;

    ~SpawnSettings() {
        posix_spawn_file_actions_destroy(&actions);
        posix_spawnattr_destroy(&attributes);
    }

    posix_spawn_file_actions_t actions{};
    posix_spawnattr_t attributes{};
};

} // namespace

std::optional<std::string> findProgram(std::string_view name) {
    if (name.contains('/')) {
        return canRun(std::string(name)) ? std::optional<std::string>(name) : std::nullopt;
    }
    // The environment stays as it was at the start.
    const char* path = std::getenv("PATH"); // NOLINT(concurrency-mt-unsafe)
    std::string_view folders = path == nullptr ? "/usr/local/bin:/usr/bin:/bin" : path;
    while (!folders.empty()) {
        const std::size_t end = std::min(folders.find(':'), folders.size());
        const std::string_view folder = folders.substr(0, end);
        folders.remove_prefix(std::min(end + 1, folders.size()));
        // A relative folder would be one of whoever started this program.
        if (!folder.starts_with('/')) {
            continue;
        }
        if (std::string candidate = std::string(folder) + "/" + std::string(name); canRun(candidate)) {
            return candidate;
        }
    }
    return std::nullopt;
}

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

bool DetachedPrograms::start(std::string_view program, const std::vector<std::string>& arguments) {
    const std::optional<std::string> path = findProgram(program);
    if (!path) {
        return false;
    }
    std::vector<std::string> words{std::string(program)};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<std::string> variables = startEnvironment();
    const std::vector<char*> given = pointersTo(variables);
    const SpawnSettings settings;
    pid_t process = 0;
    if (::posix_spawn(&process, path->c_str(), &settings.actions, &settings.attributes, pointersTo(words).data(),
                      variables.empty() ? environ : given.data()) != 0) {
        return false;
    }
    collect();
    // Collected in a turn of its own: a watch cannot be dropped by what it calls.
    children.emplace_back(mainLoop, process,
                          [this] { collection = mainLoop.schedule(mainLoop.now(), {}, [this] { collect(); }); });
    return true;
}

void DetachedPrograms::collect() {
    children.remove_if([](const Child& child) { return child.collect(); });
}

} // namespace platform::linux
