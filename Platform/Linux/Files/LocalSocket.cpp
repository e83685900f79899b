#include "Platform/Linux/Files/LocalSocket.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <cerrno>
#include <iterator>

namespace platform::linux {

namespace {

/// Empty, and `errno` has the reason, if there is no connection.
FileDescriptor connection(const std::string& path) {
    sockaddr_un address{};
    if (path.empty() || path.size() >= sizeof(address.sun_path)) {
        errno = ENAMETOOLONG;
        return {};
    }
    address.sun_family = AF_UNIX;
    std::ranges::copy(path, std::begin(address.sun_path));
    FileDescriptor socket{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)};
    if (socket && ::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) {
        const int reason = errno;
        socket = {};
        errno = reason;
    }
    return socket;
}

} // namespace

bool isListenedTo(const std::string& path) {
    // If other clients wait already, there is a listener that will accept them (connect(2)).
    return connection(path) || errno == EAGAIN;
}

FileDescriptor connectTo(const std::string& path) {
    return connection(path);
}

} // namespace platform::linux
