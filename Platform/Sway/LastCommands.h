#pragma once

#include "Platform/Linux/Files/FileDescriptor.h"

#include <string>

namespace platform::sway {

/// Commands that run in sway's default mode as soon as this program is gone, however it ends: by a shell that waits for
/// that, and `swaymsg`. Without commands there is no shell. A shell that is killed together with this program runs
/// nothing. Main thread only.
class LastCommands {
public:
    /// `socketPath`: sway's.
    explicit LastCommands(std::string socketPath);

    /// A list of commands without line breaks, which replaces the former one; empty for none. If this is destroyed with
    /// commands left, they run.
    void set(const std::string& commands);

private:
    [[nodiscard]] bool start();
    [[nodiscard]] bool send(const std::string& commands);

    std::string socketPath;
    /// The shell's input; none while there is no shell.
    linux::FileDescriptor pipe;
};

} // namespace platform::sway
