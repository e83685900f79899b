#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform::i3ipc {

/// The type of a request and of its reply (sway-ipc(7), "Messages and replies"; i3's "IPC interface" has the same).
enum class MessageType : std::uint32_t {
    runCommand = 0,
    subscribe = 2,
    getTree = 4,
    getVersion = 7,
    getConfig = 9,
    getBindingState = 12,
};

/// The compositor's events ("Events").
enum class EventType : std::uint32_t {
    workspace = 0x80000000,
    output = 0x80000001,
    window = 0x80000003,
    binding = 0x80000005,
    shutdown = 0x80000006,
};

/// A received message.
struct Message {
    std::uint32_t type = 0;
    std::string payload;

    friend bool operator==(const Message&, const Message&) = default;
};

/// The bytes of a message: the six letters "i3-ipc", then length and type in this machine's byte order, then the
/// payload ("Message format").
[[nodiscard]] std::string encodedMessage(MessageType type, std::string_view payload);

/// Cuts a stream of bytes into messages. For any input, it keeps no more than one message and the data that was read
/// with it.
class MessageReader {
public:
    /// A tree of a thousand windows has about one MiB.
    static constexpr std::size_t longestPayload = std::size_t{4} << 20U;

    void add(std::string_view bytes) { unread.append(bytes); }

    /// The next message; empty while it is incomplete, or once the stream is broken.
    [[nodiscard]] std::optional<Message> next();

    /// Whether the stream contained bytes that are no message, or a message that is too long. The data after it cannot
    /// be read.
    [[nodiscard]] bool isBroken() const { return broken; }

private:
    std::string unread;
    /// The length that has been returned already.
    std::size_t used = 0;
    bool broken = false;
};

} // namespace platform::i3ipc
