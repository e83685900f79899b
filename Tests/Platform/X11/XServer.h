#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace platform::x11 {

/// An X server of the test's own, without a screen and without a window manager. Ends with it.
class XServer {
public:
    /// Starts it and makes it the environment's DISPLAY. A test without one cannot go on: stops it with an exception.
    /// `lacking` names extensions that it is to go without.
    explicit XServer(const std::vector<std::string>& lacking = {});
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;
    ~XServer();

    /// Its name for clients on this machine.
    [[nodiscard]] const std::string& display() const { return name; }

    /// Its name for clients that come over the network, of whose processes it knows nothing.
    [[nodiscard]] std::string remoteDisplay() const { return "127.0.0.1" + name; }

private:
    pid_t process = -1;
    std::string name;
};

} // namespace platform::x11
