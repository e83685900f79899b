#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform::i3ipc {

/// What a message asks for, or answers (sway-ipc(7), "Messages and replies"; i3's "IPC interface" has the same).
enum class MessageType : std::uint32_t {
    runCommand = 0,
    subscribe = 2,
    getTree = 4,
    getVersion = 7,
    getConfig = 9,
    getBindingState = 12,
};

/// What the compositor tells of its own accord ("Events").
enum class EventType : std::uint32_t {
    workspace = 0x80000000,
    output = 0x80000001,
    window = 0x80000003,
    binding = 0x80000005,
    shutdown = 0x80000006,
};

/// A message as it came in.
struct Message {
    std::uint32_t type = 0;
    std::string payload;

    friend bool operator==(const Message&, const Message&) = default;
};

/// The bytes of a message: the six letters "i3-ipc", then length and type in this machine's byte order, then the
/// payload ("Message format").
[[nodiscard]] std::string encodedMessage(MessageType type, std::string_view payload);

/// Cuts a stream of bytes into messages. Whatever comes, it holds no more than one message and what was read with it.
class MessageReader {
public:
    /// A tree of a thousand windows has about one MiB.
    static constexpr std::size_t longestPayload = std::size_t{4} << 20U;

    void add(std::string_view bytes) { unread.append(bytes); }

    /// The next message; nothing while it is incomplete, or once the stream is broken.
    [[nodiscard]] std::optional<Message> next();

    /// Whether there was something that is no message, or one that is too long. What follows cannot be read.
    [[nodiscard]] bool isBroken() const { return broken; }

private:
    std::string unread;
    /// How much of it has been given out.
    std::size_t used = 0;
    bool broken = false;
};

} // namespace platform::i3ipc
