#include "Tessel/FilledText.h"

#include <cstddef>

namespace tessel {

std::string filled(std::string_view text, std::span<const std::string> values) {
    constexpr std::string_view inTurn = "%lld";
    std::string result;
    std::size_t next = 0;
    while (!text.empty()) {
        const bool isNumbered = text.size() > 1 && text[0] == '%' && text[1] >= '1' && text[1] <= '9';
        const bool isNext = text.starts_with(inTurn);
        const std::size_t place = isNumbered ? static_cast<std::size_t>(text[1] - '1') : next;
        if ((isNumbered || isNext) && place < values.size()) {
            result += values[place];
            text.remove_prefix(isNumbered ? 2 : inTurn.size());
            next += isNext ? 1 : 0;
        } else {
            result += text.front();
            text.remove_prefix(1);
        }
    }
    return result;
}

} // namespace tessel
