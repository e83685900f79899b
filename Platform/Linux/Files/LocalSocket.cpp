#include "Platform/Linux/Files/LocalSocket.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <expected>
#include <iterator>
#include <utility>

namespace platform::linux {

namespace {

/// A connection, or the number of the error.
std::expected<FileDescriptor, int> connection(const std::string& path) {
    sockaddr_un address{};
    if (path.empty() || path.size() >= sizeof(address.sun_path)) {
        return std::unexpected(ENAMETOOLONG);
    }
    address.sun_family = AF_UNIX;
    std::ranges::copy(path, std::begin(address.sun_path));
    FileDescriptor socket{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)};
    if (!socket || ::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) {
        return std::unexpected(errno);
    }
    return socket;
}

} // namespace

FileDescriptor connectedTo(const std::string& path) {
    return connection(path).value_or(FileDescriptor{});
}

bool awaitSocket(const FileDescriptor& socket, short event, const MainActor& clock, Instant deadline) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - clock.now());
    if (left.count() <= 0) {
        return false;
    }
    pollfd state{.fd = socket.get(), .events = event, .revents = 0};
    // The caller restarts an interrupted wait, which finds nothing.
    return ::poll(&state, 1, static_cast<int>(left.count())) != 0;
}

bool isListenedTo(const std::string& path) {
    const auto made = connection(path);
    // If other clients wait already, there is a listener that will accept them (connect(2)).
    return made || made.error() == EAGAIN;
}

std::optional<ProcessIdentifier> listenerAt(const std::string& path) {
    const FileDescriptor socket = connectedTo(path);
    ucred owner{};
    socklen_t size = sizeof(owner);
    const bool isKnown = socket && ::getsockopt(socket.get(), SOL_SOCKET, SO_PEERCRED, &owner, &size) == 0;
    return isKnown && owner.pid > 0 ? std::optional<ProcessIdentifier>(owner.pid) : std::nullopt;
}

} // namespace platform::linux
