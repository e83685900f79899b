#pragma once

#include "Platform/I3Ipc/Message.h"
#include "Platform/Linux/Files/FileDescriptor.h"
#include "Platform/Seam/Desktop/MainActor.h"

#include <expected>
#include <optional>
#include <string>

namespace platform::i3ipc {

/// One connection to the compositor's socket. It blocks only in `send` and `receive`, and only until their deadline.
/// Any error breaks it permanently.
class Connection {
public:
    /// Empty if nothing listens there, or the listen queue is full.
    [[nodiscard]] static std::optional<Connection> open(const std::string& path, const MainActor& clock);

    Connection(linux::FileDescriptor socket, const MainActor& clock)
        : socket(std::move(socket))
        , clock(&clock) {}

    [[nodiscard]] int descriptor() const { return socket.get(); }

    [[nodiscard]] bool isBroken() const { return broken; }

    /// Whether the whole message was sent. A partial message breaks the connection.
    bool send(MessageType type, std::string_view payload, Instant deadline);

    /// The next message; empty if there is none until the deadline, or the connection broke. With a deadline in the
    /// past it returns a message that has arrived.
    [[nodiscard]] std::optional<Message> receive(Instant deadline);

private:
    /// Reads the data that has arrived; false without any.
    [[nodiscard]] bool read();

    linux::FileDescriptor socket;
    const MainActor* clock;
    MessageReader reader;
    bool broken = false;
};

} // namespace platform::i3ipc
