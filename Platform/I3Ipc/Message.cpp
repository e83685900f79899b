#include "Platform/I3Ipc/Message.h"

#include <array>
#include <bit>
#include <cstring>

namespace platform::i3ipc {

namespace {

constexpr std::string_view magic = "i3-ipc";
constexpr std::size_t headerLength = magic.size() + 2 * sizeof(std::uint32_t);

void append(std::string& bytes, std::uint32_t number) {
    const auto raw = std::bit_cast<std::array<char, sizeof number>>(number);
    bytes.append(raw.data(), raw.size());
}

std::uint32_t numberAt(std::string_view bytes, std::size_t place) {
    std::uint32_t number = 0;
    std::memcpy(&number, bytes.data() + place, sizeof number);
    return number;
}

} // namespace

std::string encodedMessage(MessageType type, std::string_view payload) {
    std::string bytes(magic);
    bytes.reserve(headerLength + payload.size());
    append(bytes, static_cast<std::uint32_t>(payload.size()));
    append(bytes, static_cast<std::uint32_t>(type));
    bytes.append(payload);
    return bytes;
}

std::optional<Message> MessageReader::next() {
    const std::string_view rest = std::string_view(unread).substr(used);
    // The first wrong letter shows this, before a whole header is there.
    if (broken || rest.substr(0, magic.size()) != magic.substr(0, rest.size())) {
        broken = true;
        return std::nullopt;
    }
    const std::size_t length = rest.size() < headerLength ? 0 : numberAt(rest, magic.size());
    if (length > longestPayload) {
        broken = true;
        return std::nullopt;
    }
    if (rest.size() < headerLength || rest.size() - headerLength < length) {
        unread.erase(0, used);
        used = 0;
        return std::nullopt;
    }
    used += headerLength + length;
    return Message{.type = numberAt(rest, magic.size() + sizeof(std::uint32_t)),
                   .payload = std::string(rest.substr(headerLength, length))};
}

} // namespace platform::i3ipc
