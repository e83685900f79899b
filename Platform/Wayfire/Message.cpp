#include "Platform/Wayfire/Message.h"

#include <array>
#include <cstdint>

namespace platform::wayfire {

namespace {

constexpr std::size_t headerLength = 4;
constexpr unsigned byteWidth = 8;

std::size_t lengthAt(std::string_view bytes) {
    std::size_t length = 0;
    for (std::size_t place = 0; place < headerLength; ++place) {
        length |= std::size_t{static_cast<unsigned char>(bytes[place])} << (byteWidth * place);
    }
    return length;
}

} // namespace

std::string encodedMessage(std::string_view text) {
    std::string bytes;
    bytes.reserve(headerLength + text.size());
    for (std::size_t place = 0; place < headerLength; ++place) {
        constexpr std::size_t lowest = 0xff;
        bytes += static_cast<char>((text.size() >> (byteWidth * place)) & lowest);
    }
    return bytes.append(text);
}

std::string textOf(const Request& request) {
    return Json{{"method", request.method}, {"data", request.data}}.dump(-1, ' ', false,
                                                                         Json::error_handler_t::replace);
}

std::optional<std::string> MessageReader::next() {
    const std::string_view rest = std::string_view(unread).substr(used);
    const std::size_t length = rest.size() < headerLength ? 0 : lengthAt(rest);
    if (broken || length > compositor::longestJson) {
        broken = true;
        return std::nullopt;
    }
    if (rest.size() < headerLength || rest.size() - headerLength < length) {
        unread.erase(0, used);
        used = 0;
        return std::nullopt;
    }
    used += headerLength + length;
    return std::string(rest.substr(headerLength, length));
}

} // namespace platform::wayfire
