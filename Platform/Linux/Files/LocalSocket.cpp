#include "Platform/Linux/Files/LocalSocket.h"

#include "Platform/Linux/Files/FileDescriptor.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <cerrno>
#include <iterator>

namespace platform::linux {

bool isListenedTo(const std::string& path) {
    sockaddr_un address{};
    if (path.empty() || path.size() >= sizeof(address.sun_path)) {
        return false;
    }
    address.sun_family = AF_UNIX;
    std::ranges::copy(path, std::begin(address.sun_path));
    const FileDescriptor socket{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)};
    // If other clients wait already, there is a listener that will accept them (connect(2)).
    return socket && (::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0 ||
                      errno == EAGAIN);
}

} // namespace platform::linux
