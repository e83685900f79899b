#pragma once

#include "Platform/Linux/FileDescriptor.h"

#include <string>

namespace platform::sway {

/// Commands that are carried out in sway's default mode as soon as this program is gone, however it ends: by a shell
/// that waits for that, and `swaymsg`. There is no shell while there are no commands. One that is killed together with
/// this program carries out nothing. Main thread only.
class LastCommands {
public:
    /// `socketPath`: of sway.
    explicit LastCommands(std::string socketPath);

    /// A list of commands without line breaks, in the place of the former one; empty for none. Dropping this while
    /// there are some has them carried out.
    void set(const std::string& commands);

private:
    [[nodiscard]] bool start();
    [[nodiscard]] bool send(const std::string& commands);

    std::string socketPath;
    /// Where the shell reads; none while there is no shell.
    linux::FileDescriptor way;
};

} // namespace platform::sway
