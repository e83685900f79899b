#include "Platform/Linux/Tray/SymbolPicture.h"

#include <algorithm>
#include <cmath>

namespace platform::linux {

namespace {

std::string_view symbolOf(const ImageDescription& image) {
    const auto* symbol = std::get_if<SystemSymbol>(&image.source);
    return symbol != nullptr && isSymbol(symbol->name) ? std::string_view(symbol->name) : std::string_view();
}

SymbolPicture pictureOf(const SymbolMask& mask, bool isBadged) {
    const std::span<const std::uint8_t> pixels = mask.pixels();
    return {.size = mask.size,
            .alpha = isBadged ? badged(pixels, mask.size) : std::vector<std::uint8_t>(pixels.begin(), pixels.end())};
}

} // namespace

bool isSymbol(std::string_view name) {
    return !name.empty() && std::ranges::find(symbolMasks(), name, &SymbolMask::symbol) != symbolMasks().end();
}

std::vector<std::uint8_t> badged(std::span<const std::uint8_t> alpha, std::uint16_t size) {
    const double scale = size / symbolPoints;
    const double dotRadius = badgeDot * scale / 2;
    const double gapRadius = dotRadius + badgeGap * scale;
    // From the top-right corner.
    const double centerX = size - dotRadius;
    const double centerY = dotRadius;
    // The part of a pixel within a circle, taken from the distance of its middle: exact to a few per cent, and smooth.
    const auto coverage = [&](std::size_t column, std::size_t row, double radius) {
        const double distance =
            std::hypot(static_cast<double>(column) + 0.5 - centerX, static_cast<double>(row) + 0.5 - centerY);
        return std::clamp(radius - distance + 0.5, 0.0, 1.0);
    };
    std::vector<std::uint8_t> result(alpha.begin(), alpha.end());
    for (std::size_t row = 0; row < size; ++row) {
        for (std::size_t column = 0; column < size; ++column) {
            std::uint8_t& pixel = result[row * size + column];
            const double kept = pixel * (1 - coverage(column, row, gapRadius));
            const double dot = coverage(column, row, dotRadius);
            constexpr double full = 255;
            pixel = static_cast<std::uint8_t>(std::lround(kept * (1 - dot) + full * dot));
        }
    }
    return result;
}

std::vector<SymbolPicture> pictures(const ImageDescription& image) {
    std::vector<SymbolPicture> result;
    for (const SymbolMask& mask : symbolMasks()) {
        if (mask.symbol == symbolOf(image)) {
            result.push_back(pictureOf(mask, image.isBadged));
        }
    }
    return result;
}

std::optional<SymbolPicture> pictureFor(const ImageDescription& image, std::uint16_t size) {
    const SymbolMask* best = nullptr;
    for (const SymbolMask& mask : symbolMasks()) {
        if (mask.symbol == symbolOf(image) && (best == nullptr || mask.size <= size)) {
            best = &mask;
        }
    }
    return best == nullptr ? std::nullopt : std::optional(pictureOf(*best, image.isBadged));
}

std::string symbolicIconName(const ImageDescription& image) {
    const std::string_view symbol = symbolOf(image);
    if (symbol.empty()) {
        return {};
    }
    return "org.corvid.Tessel." + std::string(symbol) + (image.isBadged ? ".badged" : "") + "-symbolic";
}

} // namespace platform::linux
