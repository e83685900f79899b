#include "Platform/Linux/ProgramStart.h"

#include "Platform/Linux/StartEnvironment.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <cstdlib>

namespace platform::linux {

namespace {

bool canRun(const std::string& path) {
    struct stat file{};
    return ::stat(path.c_str(), &file) == 0 && S_ISREG(file.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

/// posix_spawn's settings, given back with their owner.
class SpawnSettings {
public:
    SpawnSettings(int output, int input) {
        posix_spawn_file_actions_init(&actions);
        posix_spawnattr_init(&attributes);
        for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            posix_spawn_file_actions_addopen(&actions, standard, "/dev/null", O_RDWR, 0);
        }
        if (output >= 0) {
            posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
        }
        if (input >= 0) {
            posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
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

std::optional<pid_t> startProgram(std::string_view program, const std::vector<std::string>& arguments, int output,
                                  int input) {
    const std::optional<std::string> path = findProgram(program);
    if (!path) {
        return std::nullopt;
    }
    std::vector<std::string> words{std::string(program)};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<std::string> variables = startEnvironment();
    const std::vector<char*> given = pointersTo(variables);
    const SpawnSettings settings(output, input);
    pid_t process = 0;
    const int error = ::posix_spawn(&process, path->c_str(), &settings.actions, &settings.attributes,
                                    pointersTo(words).data(), variables.empty() ? environ : given.data());
    return error == 0 ? std::optional(process) : std::nullopt;
}

} // namespace platform::linux
