#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace platform::x11 {

/// A private X server, without a screen and without a window manager. Ends with it.
class XServer {
public:
    /// Starts it and makes it the environment's DISPLAY. Throws if there is none, which stops the test. `lacking` names
    /// extensions that it starts without.
    explicit XServer(const std::vector<std::string>& lacking = {});
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;
    ~XServer();

    /// Its name for clients on this machine.
    [[nodiscard]] const std::string& display() const { return name; }

    /// Its name for clients over the network, whose processes it does not know.
    [[nodiscard]] std::string remoteDisplay() const { return "127.0.0.1" + name; }

private:
    pid_t process = -1;
    std::string name;
};

} // namespace platform::x11
