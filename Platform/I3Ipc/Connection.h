#pragma once

#include "Platform/I3Ipc/Message.h"
#include "Platform/Linux/FileDescriptor.h"
#include "Platform/MainActor.h"

#include <expected>
#include <optional>
#include <string>

namespace platform::i3ipc {

/// One connection to the compositor's socket. Never blocks but in `send` and `receive`, and there only until their
/// deadline. What goes wrong leaves it broken for good.
class Connection {
public:
    /// Nothing where nobody listens, or too many wait to be listened to.
    [[nodiscard]] static std::optional<Connection> open(const std::string& path, const MainActor& clock);

    Connection(linux::FileDescriptor socket, const MainActor& clock)
        : socket(std::move(socket))
        , clock(&clock) {}

    [[nodiscard]] int descriptor() const { return socket.get(); }

    [[nodiscard]] bool isBroken() const { return broken; }

    /// Whether the whole message was sent. A part of one leaves the connection broken.
    bool send(MessageType type, std::string_view payload, Instant deadline);

    /// The next message; nothing if there is none until then, or the connection broke. With a deadline that has passed
    /// gives what has arrived.
    [[nodiscard]] std::optional<Message> receive(Instant deadline);

private:
    /// Waits for one of poll's events; no if the deadline comes first.
    [[nodiscard]] bool await(short event, Instant deadline) const;
    /// Takes what has arrived; no if that is nothing.
    [[nodiscard]] bool read();

    linux::FileDescriptor socket;
    const MainActor* clock;
    MessageReader reader;
    bool broken = false;
};

} // namespace platform::i3ipc
