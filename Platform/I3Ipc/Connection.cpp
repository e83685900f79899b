#include "Platform/I3Ipc/Connection.h"

#include "Platform/Linux/Files/LocalSocket.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>

namespace platform::i3ipc {

std::optional<Connection> Connection::open(const std::string& path, const MainActor& clock) {
    linux::FileDescriptor socket = linux::connectTo(path);
    return socket ? std::optional(Connection(std::move(socket), clock)) : std::nullopt;
}

bool Connection::send(MessageType type, std::string_view payload, Instant deadline) {
    const std::string bytes = encodedMessage(type, payload);
    std::string_view rest = bytes;
    while (!broken && !rest.empty()) {
        const ssize_t sent = ::send(socket.get(), rest.data(), rest.size(), MSG_NOSIGNAL);
        if (sent >= 0) {
            rest.remove_prefix(static_cast<std::size_t>(sent));
        } else if (errno == EAGAIN) {
            if (!await(POLLOUT, deadline)) {
                broken = rest.size() < bytes.size();
                return false;
            }
        } else if (errno != EINTR) {
            broken = true;
        }
    }
    return !broken;
}

std::optional<Message> Connection::receive(Instant deadline) {
    while (!broken) {
        if (auto message = reader.next()) {
            return message;
        }
        broken = broken || reader.isBroken();
        if (broken || (!read() && !broken && !await(POLLIN, deadline))) {
            return std::nullopt;
        }
    }
    return std::nullopt;
}

bool Connection::await(short event, Instant deadline) const {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - clock->now());
    if (left.count() <= 0) {
        return false;
    }
    pollfd state{.fd = socket.get(), .events = event, .revents = 0};
    // The caller restarts an interrupted wait, which finds nothing.
    return ::poll(&state, 1, static_cast<int>(left.count())) != 0;
}

bool Connection::read() {
    std::array<char, std::size_t{64} << 10U> buffer;
    const ssize_t received = ::recv(socket.get(), buffer.data(), buffer.size(), 0);
    if (received > 0) {
        reader.add({buffer.data(), static_cast<std::size_t>(received)});
        return true;
    }
    broken = received == 0 || (errno != EAGAIN && errno != EINTR);
    return false;
}

} // namespace platform::i3ipc
