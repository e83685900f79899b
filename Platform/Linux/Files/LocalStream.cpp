#include "Platform/Linux/Files/LocalStream.h"

#include "Platform/Linux/Files/LocalSocket.h"

#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>

namespace platform::linux {

std::optional<LocalStream> LocalStream::open(const std::string& path, const MainActor& clock) {
    FileDescriptor socket = connectedTo(path);
    return socket ? std::optional(LocalStream(std::move(socket), clock)) : std::nullopt;
}

bool LocalStream::send(std::string_view bytes, Instant deadline) {
    std::string_view rest = bytes;
    while (!broken && !rest.empty()) {
        const ssize_t sent = ::send(socket.get(), rest.data(), rest.size(), MSG_NOSIGNAL);
        if (sent >= 0) {
            rest.remove_prefix(static_cast<std::size_t>(sent));
        } else if (errno == EAGAIN) {
            if (!awaitSocket(socket, POLLOUT, *clock, deadline)) {
                broken = rest.size() < bytes.size();
                return false;
            }
        } else if (errno != EINTR) {
            broken = true;
        }
    }
    return !broken;
}

bool LocalStream::awaitData(Instant deadline) const {
    return awaitSocket(socket, POLLIN, *clock, deadline);
}

std::string LocalStream::arrived() {
    std::array<char, std::size_t{64} << 10U> buffer;
    const ssize_t received = ::recv(socket.get(), buffer.data(), buffer.size(), 0);
    if (received > 0) {
        return {buffer.data(), static_cast<std::size_t>(received)};
    }
    broken = received == 0 || (errno != EAGAIN && errno != EINTR);
    return {};
}

} // namespace platform::linux
