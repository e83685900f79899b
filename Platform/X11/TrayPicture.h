#pragma once

#include "Platform/Linux/Tray/SymbolPicture.h"

#include <cstdint>
#include <span>
#include <vector>

/// The pixels of a status item's picture in the X server's format. Any thread.
namespace platform::x11 {

/// A colour of 8 bits each, as in a pixel of 24 or 32 bits.
struct TrayColour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    friend bool operator==(const TrayColour&, const TrayColour&) = default;
};

/// The colour for symbols from `_NET_SYSTEM_TRAY_COLORS` (System Tray Protocol Specification: the first values are the
/// red, green and blue of symbols, 16 bits each). If the panel sets none, the grey with equal contrast to black and
/// white.
[[nodiscard]] TrayColour symbolColour(const std::vector<std::uint32_t>& trayColours);

/// For a transparent window: the colour times its coverage, and the coverage itself.
[[nodiscard]] std::vector<std::uint32_t> premultipliedPixels(const linux::SymbolPicture& picture, TrayColour colour);

/// For any other window: the picture on this background, which has as many pixels.
[[nodiscard]] std::vector<std::uint32_t> blendedPixels(const linux::SymbolPicture& picture, TrayColour colour,
                                                       std::span<const std::uint32_t> background);

} // namespace platform::x11
