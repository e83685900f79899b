#pragma once

#include "Platform/Compositor/Json.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace platform::wayfire {

using compositor::Json;

/// A request of Wayfire's IPC: a method, and an object with its arguments.
struct Request {
    std::string method;
    Json data = Json::object();
};

/// The bytes of a message: the length of its text in four bytes, the lowest first, then the text (Wayfire 0.10,
/// plugins/ipc/ipc.cpp).
[[nodiscard]] std::string encodedMessage(std::string_view text);

/// The text of a request's message.
[[nodiscard]] std::string textOf(const Request& request);

/// Cuts a stream of bytes into the texts of messages. For any input, it keeps no more than one message and the data
/// that was read with it.
class MessageReader {
public:
    void add(std::string_view bytes) { unread.append(bytes); }

    /// The text of the next message; empty while it is incomplete, or once the stream is broken.
    [[nodiscard]] std::optional<std::string> next();

    /// Whether the stream announced a message that is longer than any of Wayfire's. The data after it cannot be read.
    [[nodiscard]] bool isBroken() const { return broken; }

private:
    std::string unread;
    /// The length that has been returned already.
    std::size_t used = 0;
    bool broken = false;
};

} // namespace platform::wayfire
