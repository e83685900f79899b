#pragma once

#include <xcb/xcb.h>

#include <sys/types.h>

#include <string>

namespace platform::x11 {

/// Another program: a process with a connection of its own that opens windows on request. Any client can do the rest
/// with its windows.
class ClientProcess {
public:
    explicit ClientProcess(const std::string& display);
    ClientProcess(const ClientProcess&) = delete;
    ClientProcess& operator=(const ClientProcess&) = delete;
    ~ClientProcess() { end(); }

    [[nodiscard]] pid_t process() const { return child; }

    /// Makes a window that is not shown.
    [[nodiscard]] xcb_window_t makeWindow() const;

    /// Kills it, and waits until it is gone.
    void end();

private:
    pid_t child = -1;
    int commands = -1;
};

} // namespace platform::x11
