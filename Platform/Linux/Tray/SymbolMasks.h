#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace platform::linux {

/// The shape of a symbol at one size: how much of each pixel it covers, row by row from the top.
struct SymbolMask {
    std::string_view symbol;
    /// Pixels each way.
    std::uint16_t size = 0;
    const std::uint8_t* alpha = nullptr;

    [[nodiscard]] std::span<const std::uint8_t> pixels() const { return {alpha, std::size_t{size} * size}; }
};

/// All of them, a symbol's by rising size; made from the drawings when the program is built. Any thread.
[[nodiscard]] std::span<const SymbolMask> symbolMasks();

} // namespace platform::linux
