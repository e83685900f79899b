#pragma once

#include "Platform/I3Ipc/Message.h"
#include "Platform/Linux/Files/LocalStream.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace platform::i3ipc {

/// One connection to the compositor's socket, with the limits of `linux::LocalStream`.
class Connection {
public:
    /// Empty if nothing listens there, or the listen queue is full.
    [[nodiscard]] static std::optional<Connection> open(const std::string& path, const MainActor& clock) {
        auto stream = linux::LocalStream::open(path, clock);
        return stream ? std::optional(Connection(*std::move(stream))) : std::nullopt;
    }

    explicit Connection(linux::LocalStream stream)
        : stream(std::move(stream)) {}

    [[nodiscard]] int descriptor() const { return stream.descriptor(); }

    [[nodiscard]] bool isBroken() const { return stream.isBroken(); }

    /// Whether the whole message was sent. A partial message breaks the connection.
    bool send(MessageType type, std::string_view payload, Instant deadline) {
        return stream.send(encodedMessage(type, payload), deadline);
    }

    /// The next message; empty if there is none until the deadline, or the connection broke. With a deadline in the
    /// past it returns a message that has arrived.
    [[nodiscard]] std::optional<Message> receive(Instant deadline) { return stream.receive(reader, deadline); }

private:
    linux::LocalStream stream;
    MessageReader reader;
};

} // namespace platform::i3ipc
