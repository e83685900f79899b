#pragma once

#include "Platform/Linux/Files/FileDescriptor.h"

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

namespace platform::linux {

/// Starts a program, found in `PATH` unless the name has a slash, with arguments: in a session of its own, with this
/// program's original environment, and without any other descriptor or blocked signal of ours. It reads from `input`, a
/// descriptor of ours, or from an empty input if that is negative; its output is discarded. It is no child of this
/// process, so that no code has to wait for it. False if there is no such program or it cannot be started; its later
/// failures are not reported. Main thread only.
bool startProgram(const std::string& program, const std::vector<std::string>& arguments, int input = -1);

/// A child of this process that prints.
struct PrintingProgram {
    /// The owner waits for it (waitpid(2)).
    pid_t process = 0;
    /// The reading end of its standard output; reading never blocks.
    FileDescriptor output;
};

/// The same for a program that is run for its standard output.
[[nodiscard]] std::optional<PrintingProgram> startPrinting(const std::string& program,
                                                           const std::vector<std::string>& arguments);

} // namespace platform::linux
