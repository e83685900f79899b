#include "Platform/Simulated/Trace.h"

#include <array>
#include <charconv>

namespace platform::simulated {

std::string text(double number) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    return {digits.data(), end};
}

std::string text(corvid::CGPoint point) {
    return "(" + text(point.x) + ", " + text(point.y) + ")";
}

std::string text(corvid::CGSize size) {
    return "(" + text(size.width) + ", " + text(size.height) + ")";
}

} // namespace platform::simulated
