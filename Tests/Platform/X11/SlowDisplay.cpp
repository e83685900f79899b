#include "SlowDisplay.h"

#include <netinet/in.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <deque>
#include <stdexcept>
#include <utility>

namespace platform::x11 {

namespace {

using Clock = std::chrono::steady_clock;

/// The port of display 0.
constexpr int firstPort = 6000;

sockaddr_in addressOf(std::uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

bool sendAll(int descriptor, const char* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t count = ::send(descriptor, bytes, size, MSG_NOSIGNAL);
        if (count <= 0) {
            return false;
        }
        bytes += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

} // namespace

SlowDisplay::SlowDisplay(const std::string& remoteDisplay, std::chrono::milliseconds delay)
    : serverPort(static_cast<std::uint16_t>(firstPort + std::stoi(remoteDisplay.substr(remoteDisplay.find(':') + 1))))
    , listening(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    , ending(::eventfd(0, EFD_CLOEXEC))
    , delay(delay) {
    sockaddr_in address = addressOf(0);
    socklen_t size = sizeof(address);
    auto* generic = reinterpret_cast<sockaddr*>(&address);
    if (::bind(listening, generic, size) != 0 || ::listen(listening, 1) != 0 ||
        ::getsockname(listening, generic, &size) != 0) {
        throw std::runtime_error("cannot listen");
    }
    name = "127.0.0.1:" + std::to_string(ntohs(address.sin_port) - firstPort);
    thread = std::thread([this] { serve(); });
}

SlowDisplay::~SlowDisplay() {
    ::eventfd_write(ending, 1);
    thread.join();
    ::close(listening);
    ::close(ending);
}

void SlowDisplay::serve() {
    for (;;) {
        std::array<pollfd, 2> waiting{
            {{.fd = ending, .events = POLLIN, .revents = 0}, {.fd = listening, .events = POLLIN, .revents = 0}}};
        ::poll(waiting.data(), waiting.size(), -1);
        if (waiting[0].revents != 0) {
            return;
        }
        const int client = ::accept4(listening, nullptr, nullptr, SOCK_CLOEXEC);
        const int server = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        const sockaddr_in address = addressOf(serverPort);
        if (::connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0) {
            handOn(client, server);
        }
        ::close(client);
        ::close(server);
    }
}

void SlowDisplay::handOn(int client, int server) {
    std::deque<std::pair<Clock::time_point, std::string>> held;
    for (;;) {
        const auto left = held.empty()
                              ? std::chrono::milliseconds(-1)
                              : std::chrono::ceil<std::chrono::milliseconds>(held.front().first - Clock::now());
        std::array<pollfd, 3> waiting{{{.fd = ending, .events = POLLIN, .revents = 0},
                                       {.fd = client, .events = POLLIN, .revents = 0},
                                       {.fd = server, .events = POLLIN, .revents = 0}}};
        ::poll(waiting.data(), waiting.size(), held.empty() ? -1 : std::max(0, static_cast<int>(left.count())));
        if (waiting[0].revents != 0) {
            return;
        }
        std::array<char, 65536> bytes{};
        if (waiting[1].revents != 0) {
            const ssize_t count = ::recv(client, bytes.data(), bytes.size(), 0);
            if (count <= 0 || !sendAll(server, bytes.data(), static_cast<std::size_t>(count))) {
                return;
            }
        }
        if (waiting[2].revents != 0) {
            const ssize_t count = ::recv(server, bytes.data(), bytes.size(), 0);
            if (count <= 0) {
                return;
            }
            held.emplace_back(Clock::now() + delay.load(), std::string(bytes.data(), static_cast<std::size_t>(count)));
        }
        while (!held.empty() && held.front().first <= Clock::now()) {
            if (!sendAll(client, held.front().second.data(), held.front().second.size())) {
                return;
            }
            held.pop_front();
        }
    }
}

} // namespace platform::x11
