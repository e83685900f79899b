#include "Platform/Linux/Files/LocalSocket.h"

#include "Platform/Linux/Files/FileDescriptor.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <utility>

namespace platform::linux {

namespace {

/// A socket that is connected to the listener at the path, or waits for it behind others; none without a listener.
FileDescriptor connectedTo(const std::string& path) {
    sockaddr_un address{};
    if (path.empty() || path.size() >= sizeof(address.sun_path)) {
        return {};
    }
    address.sun_family = AF_UNIX;
    std::ranges::copy(path, std::begin(address.sun_path));
    FileDescriptor socket{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)};
    // If other clients wait already, there is a listener that will accept them (connect(2)).
    const bool isThere =
        socket &&
        (::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0 || errno == EAGAIN);
    return isThere ? std::move(socket) : FileDescriptor();
}

} // namespace

bool isListenedTo(const std::string& path) {
    return static_cast<bool>(connectedTo(path));
}

std::optional<ProcessIdentifier> listenerAt(const std::string& path) {
    const FileDescriptor socket = connectedTo(path);
    ucred owner{};
    socklen_t size = sizeof(owner);
    const bool isKnown = socket && ::getsockopt(socket.get(), SOL_SOCKET, SO_PEERCRED, &owner, &size) == 0;
    return isKnown && owner.pid > 0 ? std::optional<ProcessIdentifier>(owner.pid) : std::nullopt;
}

} // namespace platform::linux
