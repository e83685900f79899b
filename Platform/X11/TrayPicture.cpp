#include "Platform/X11/TrayPicture.h"

#include <cstddef>

namespace platform::x11 {

namespace {

constexpr unsigned full = 255;

unsigned mixed(unsigned colour, unsigned background, unsigned alpha) {
    return (colour * alpha + background * (full - alpha) + full / 2) / full;
}

std::uint32_t pixel(unsigned alpha, unsigned red, unsigned green, unsigned blue) {
    return alpha << 24U | red << 16U | green << 8U | blue;
}

} // namespace

TrayColour symbolColour(const std::vector<std::uint32_t>& trayColours) {
    constexpr std::uint8_t middleGrey = 0x75;
    constexpr std::size_t needed = 3;
    if (trayColours.size() < needed) {
        return {middleGrey, middleGrey, middleGrey};
    }
    const auto highByte = [&](std::size_t index) { return static_cast<std::uint8_t>(trayColours[index] >> 8U); };
    return {.red = highByte(0), .green = highByte(1), .blue = highByte(2)};
}

std::vector<std::uint32_t> premultipliedPixels(const linux::SymbolPicture& picture, TrayColour colour) {
    std::vector<std::uint32_t> pixels;
    pixels.reserve(picture.alpha.size());
    for (const std::uint8_t alpha : picture.alpha) {
        pixels.push_back(
            pixel(alpha, mixed(colour.red, 0, alpha), mixed(colour.green, 0, alpha), mixed(colour.blue, 0, alpha)));
    }
    return pixels;
}

std::vector<std::uint32_t> blendedPixels(const linux::SymbolPicture& picture, TrayColour colour,
                                         std::span<const std::uint32_t> background) {
    std::vector<std::uint32_t> pixels;
    pixels.reserve(picture.alpha.size());
    for (std::size_t index = 0; index < picture.alpha.size() && index < background.size(); ++index) {
        const std::uint32_t behind = background[index];
        const std::uint8_t alpha = picture.alpha[index];
        pixels.push_back(pixel(0, mixed(colour.red, behind >> 16U & full, alpha),
                               mixed(colour.green, behind >> 8U & full, alpha),
                               mixed(colour.blue, behind & full, alpha)));
    }
    return pixels;
}

} // namespace platform::x11
