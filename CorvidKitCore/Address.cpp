#include "CorvidKitCore/Address.h"

#include <algorithm>
#include <cstddef>

namespace corvid {

namespace {

// Written here, because the definition of a letter must not depend on the user's locale.
bool isLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

bool isHexadecimal(char character) {
    return isDigit(character) || (character >= 'a' && character <= 'f') || (character >= 'A' && character <= 'F');
}

bool isScheme(std::string_view text) {
    return !text.empty() && isLetter(text.front()) && std::ranges::all_of(text, [](char character) {
        return isLetter(character) || isDigit(character) || std::string_view("+-.").contains(character);
    });
}

} // namespace

bool isAddress(std::string_view text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos || !isScheme(text.substr(0, colon)) || colon + 1 == text.size()) {
        return false;
    }
    const std::string_view rest = text.substr(colon + 1);
    for (std::size_t index = 0; index < rest.size(); ++index) {
        const char character = rest[index];
        if (character == '%') {
            if (index + 2 >= rest.size() || !isHexadecimal(rest[index + 1]) || !isHexadecimal(rest[index + 2])) {
                return false;
            }
        } else if (!isLetter(character) && !isDigit(character) &&
                   !std::string_view("-._~:/?#[]@!$&'()*+,;=").contains(character)) {
            return false;
        }
    }
    return true;
}

} // namespace corvid
