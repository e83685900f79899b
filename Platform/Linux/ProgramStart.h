#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::linux {

/// The program of that name in `PATH`, or of that path where the name has a slash; nothing where there is none to run.
/// Reads the environment.
[[nodiscard]] std::optional<std::string> findProgram(std::string_view name);

/// Starts the program (see `findProgram`) with arguments: in a session of its own, with the environment that this
/// program was started with, with no descriptor and no blocked signal of ours. What it writes to its standard output
/// goes to `output`, a descriptor of ours, or nowhere where that is negative; it reads from `input` or nothing
/// likewise. Nothing where it cannot be started. Whoever calls has to wait for it (waitpid(2)). Main thread only.
[[nodiscard]] std::optional<pid_t> startProgram(std::string_view program, const std::vector<std::string>& arguments,
                                                int output = -1, int input = -1);

} // namespace platform::linux
