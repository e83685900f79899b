#pragma once

#include "Platform/Linux/FileDescriptor.h"

#include <expected>
#include <optional>
#include <string>
#include <utility>

namespace platform::linux {

/// The right to be the only Tessel of a session, held for as long as the object lives.
///
/// It is an abstract Unix socket's name (unix(7)), made of the user and the session: the kernel frees it with the
/// process, however that ends, so that it cannot go stale. The socket listens: whoever finds the right taken can speak
/// to its holder.
class SingleInstance {
public:
    /// Takes the right for a session (its display's name); nothing where another process has it.
    [[nodiscard]] static std::optional<SingleInstance> acquire(const std::string& session);

    /// A connection to the holder of a session's right, not blocking. The error is an errno: ECONNREFUSED where nobody
    /// has the right (or one of another user, who is not to be spoken to), EAGAIN where the holder does not listen to
    /// those who wait already.
    [[nodiscard]] static std::expected<FileDescriptor, int> connect(const std::string& session);

    /// The listening socket, not blocking.
    [[nodiscard]] int listeningSocket() const { return socket.get(); }

private:
    explicit SingleInstance(FileDescriptor socket)
        : socket(std::move(socket)) {}

    FileDescriptor socket;
};

/// Whether the process at the other end of a connected Unix socket belongs to this user (SO_PEERCRED in unix(7)).
[[nodiscard]] bool isPeerOfSameUser(int descriptor);

} // namespace platform::linux
