#include "Platform/Linux/Control/SingleInstance.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <utility>

namespace platform::linux {

namespace {

struct Address {
    sockaddr_un name{};
    socklen_t size = 0;

    explicit Address(const std::string& session) {
        name.sun_family = AF_UNIX;
        // A first character of zero makes the name abstract; its length is part of it.
        const std::string owner = "org.corvid.Tessel/" + std::to_string(getuid()) + "/";
        // Of a session's name that is too long, such as a path, the end tells more than the beginning.
        const std::size_t room = sizeof(name.sun_path) - 1 - owner.size();
        const std::string text = owner + session.substr(session.size() - std::min(session.size(), room));
        std::ranges::copy(text, std::begin(name.sun_path) + 1);
        size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + text.size());
    }

    [[nodiscard]] const sockaddr* get() const { return reinterpret_cast<const sockaddr*>(&name); }
};

FileDescriptor newSocket() {
    return FileDescriptor{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)};
}

} // namespace

std::optional<SingleInstance> SingleInstance::acquire(const std::string& session) {
    FileDescriptor socket = newSocket();
    const Address address(session);
    constexpr int mostWaiting = 16;
    if (!socket || ::bind(socket.get(), address.get(), address.size) != 0 || ::listen(socket.get(), mostWaiting) != 0) {
        return std::nullopt;
    }
    return SingleInstance(std::move(socket));
}

std::expected<FileDescriptor, int> SingleInstance::connect(const std::string& session) {
    FileDescriptor socket = newSocket();
    const Address address(session);
    if (!socket || ::connect(socket.get(), address.get(), address.size) != 0) {
        return std::unexpected(errno);
    }
    if (!isPeerOfSameUser(socket.get())) {
        return std::unexpected(ECONNREFUSED);
    }
    return socket;
}

bool isPeerOfSameUser(int descriptor) {
    ucred peer{};
    socklen_t size = sizeof(peer);
    return getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && size == sizeof(peer) &&
           peer.uid == getuid();
}

} // namespace platform::linux
