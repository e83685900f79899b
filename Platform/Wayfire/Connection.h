#pragma once

#include "Platform/Linux/Files/LocalStream.h"
#include "Platform/Wayfire/Message.h"

#include <optional>
#include <string>
#include <utility>

namespace platform::wayfire {

/// One connection to Wayfire's socket, with the limits of `linux::LocalStream`. A message that is no JSON breaks it.
class Connection {
public:
    /// Empty if nothing listens there, or the listen queue is full.
    [[nodiscard]] static std::optional<Connection> open(const std::string& path, const MainActor& clock) {
        auto stream = linux::LocalStream::open(path, clock);
        return stream ? std::optional(Connection(*std::move(stream))) : std::nullopt;
    }

    [[nodiscard]] int descriptor() const { return stream.descriptor(); }

    [[nodiscard]] bool isBroken() const { return broken || stream.isBroken(); }

    /// Whether the whole request was sent. A partial one breaks the connection.
    bool send(const Request& request, Instant deadline) {
        return stream.send(encodedMessage(textOf(request)), deadline);
    }

    /// The next message, an event or an answer; empty if there is none until the deadline, or the connection broke.
    /// With a deadline in the past it returns a message that has arrived.
    [[nodiscard]] std::optional<Json> receive(Instant deadline) {
        const auto text = isBroken() ? std::nullopt : stream.receive(reader, deadline);
        auto message = text ? compositor::parsedJson(*text) : std::nullopt;
        broken = broken || (text && !message);
        return message;
    }

    /// The next answer; events before it are passed over. See `receive`.
    [[nodiscard]] std::optional<Json> receiveAnswer(Instant deadline) {
        auto message = receive(deadline);
        while (message && isEvent(*message)) {
            message = receive(deadline);
        }
        return message;
    }

    /// Events and answers come mixed; only events say what they are.
    [[nodiscard]] static bool isEvent(const Json& message) { return compositor::member(message, "event") != nullptr; }

private:
    explicit Connection(linux::LocalStream stream)
        : stream(std::move(stream)) {}

    linux::LocalStream stream;
    MessageReader reader;
    bool broken = false;
};

} // namespace platform::wayfire
