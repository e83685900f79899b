#include "Platform/Hyprland/Requests.h"

#include "Platform/Compositor/Json.h"
#include "Platform/Linux/Files/LocalSocket.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

namespace platform::hyprland {

namespace {

using Buffer = std::array<char, std::size_t{16} << 10U>;

/// A request is far shorter than the buffer of a socket, so it is written at once or not at all.
bool sendAll(int socket, std::string_view request) {
    const ssize_t sent = ::send(socket, request.data(), request.size(), MSG_NOSIGNAL);
    // A compositor may read until the end of the request (Hyprland 0.57, src/debug/HyprCtlSocket.cpp).
    return sent == static_cast<ssize_t>(request.size()) && ::shutdown(socket, SHUT_WR) == 0;
}

} // namespace

std::optional<std::string> Requests::ask(const std::string& path, std::string_view request, Instant deadline) {
    linux::FileDescriptor socket = isFull() ? linux::FileDescriptor() : linux::connectedTo(path);
    if (!socket || !sendAll(socket.get(), request)) {
        return std::nullopt;
    }
    std::string answer;
    Buffer buffer;
    while (answer.size() <= compositor::longestJson) {
        const ssize_t received = ::recv(socket.get(), buffer.data(), buffer.size(), 0);
        if (received == 0) {
            return answer;
        }
        if (received > 0) {
            answer.append(buffer.data(), static_cast<std::size_t>(received));
        } else if (errno != EINTR && errno != EAGAIN) {
            return std::nullopt;
        } else if (!linux::awaitSocket(socket, POLLIN, mainLoop, deadline)) {
            leave(std::move(socket));
            return std::nullopt;
        }
    }
    return std::nullopt;
}

void Requests::forget() {
    sweep.reset();
    late.clear();
}

void Requests::leave(linux::FileDescriptor socket) {
    Late& left = late.emplace_back(Late{.socket = std::move(socket), .watch = nullptr});
    left.watch = mainLoop.watch(left.socket.get(), [] { return false; }, [this, &left] { drain(left); });
}

void Requests::drain(Late& left) {
    Buffer buffer;
    const ssize_t received = ::recv(left.socket.get(), buffer.data(), buffer.size(), 0);
    if (received > 0 || (received < 0 && (errno == EINTR || errno == EAGAIN))) {
        return;
    }
    left.isOver = true;
    // In a turn of its own: the watch must not go while it is served.
    sweep =
        mainLoop.schedule(mainLoop.now(), {}, [this] { late.remove_if([](const Late& each) { return each.isOver; }); });
}

} // namespace platform::hyprland
