#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <string>
#include <thread>

namespace platform::x11 {

/// A display with a remote or busy server: forwards the messages between one client at a time and the server, the
/// server's with a delay.
class SlowDisplay {
public:
    /// In front of the display that listens at 127.0.0.1.
    SlowDisplay(const std::string& remoteDisplay, std::chrono::milliseconds delay);
    SlowDisplay(const SlowDisplay&) = delete;
    SlowDisplay& operator=(const SlowDisplay&) = delete;
    ~SlowDisplay();

    [[nodiscard]] const std::string& display() const { return name; }

    /// Applies to all messages of the server from now on.
    void setDelay(std::chrono::milliseconds newDelay) { delay = newDelay; }

private:
    void serve();
    void handOn(int client, int server);

    std::string name;
    std::uint16_t serverPort = 0;
    int listening = -1;
    int ending = -1;
    std::atomic<std::chrono::milliseconds> delay;
    std::thread thread;
};

} // namespace platform::x11
