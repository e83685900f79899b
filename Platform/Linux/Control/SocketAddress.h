#pragma once

#include "Platform/Linux/Control/Session.h"
#include "Platform/Linux/Files/FileDescriptor.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace platform::linux {

/// The treatment of a folder that is not there.
enum class Missing : std::uint8_t { isLeft, isMade };

/// The path of the folder of a session's sockets, "tessel" in its runtime folder; empty without one.
[[nodiscard]] std::string socketFolder(const Session& session);

/// That folder, open (O_PATH). None if the runtime folder is missing, is not this user's, or is open to others, who
/// could replace the socket.
[[nodiscard]] FileDescriptor openSocketFolder(const Session& session, Missing missing);

/// The end of the name of a session's socket.
inline constexpr std::string_view socketEnding = ".socket";

/// The name of a file that belongs to a session, in the folder of sockets.
[[nodiscard]] std::string socketFileName(const Session& session, std::string_view ending);

/// The sessions of this user that have a socket in that runtime folder, with or without a listener.
[[nodiscard]] std::vector<Session> sessionsWithSockets(const std::string& runtimeFolder);

/// The address of a Unix socket (unix(7)).
class SocketAddress {
public:
    /// A file in an open folder, however long the folder's path is. Holds while the folder is open.
    [[nodiscard]] static SocketAddress inFolder(const FileDescriptor& folder, const std::string& file);

    /// The abstract name of a session, made of this user and the display.
    [[nodiscard]] static SocketAddress abstract(const Session& session);

    /// As bind(2) and connect(2) take it.
    [[nodiscard]] const sockaddr* get() const { return reinterpret_cast<const sockaddr*>(&name); }

    [[nodiscard]] socklen_t size() const { return length; }

private:
    SocketAddress(std::string_view path, bool isAbstract);

    sockaddr_un name{};
    socklen_t length;
};

} // namespace platform::linux
