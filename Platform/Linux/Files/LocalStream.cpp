#include "Platform/Linux/Files/LocalStream.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <array>
#include <cerrno>
#include <chrono>

namespace platform::linux {

std::optional<LocalStream> LocalStream::open(const std::string& path, const MainActor& clock) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.empty() || path.size() >= sizeof address.sun_path) {
        return std::nullopt;
    }
    path.copy(address.sun_path, path.size());
    FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): that is how sockets take their addresses.
    if (!socket || ::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        return std::nullopt;
    }
    return LocalStream(std::move(socket), clock);
}

bool LocalStream::send(std::string_view bytes, Instant deadline) {
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

bool LocalStream::awaitData(Instant deadline) const {
    return await(POLLIN, deadline);
}

bool LocalStream::await(short event, Instant deadline) const {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - clock->now());
    if (left.count() <= 0) {
        return false;
    }
    pollfd state{.fd = socket.get(), .events = event, .revents = 0};
    // The caller restarts an interrupted wait, which finds nothing.
    return ::poll(&state, 1, static_cast<int>(left.count())) != 0;
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
