#pragma once

#include "Platform/Linux/Tray/SymbolMasks.h"
#include "Platform/Seam/Desktop/Image.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The pictures of a status item. Any thread.
namespace platform::linux {

/// The size of a symbol in the panel, in points.
inline constexpr double symbolPoints = 18;

/// How large the dot is and how much is cut out around it, in points.
inline constexpr double badgeDot = 5;
inline constexpr double badgeGap = 1.5;

/// A square picture of one colour.
struct SymbolPicture {
    /// Pixels each way.
    std::uint16_t size = 0;
    /// How much of each pixel is covered, row by row from the top.
    std::vector<std::uint8_t> alpha;

    friend bool operator==(const SymbolPicture&, const SymbolPicture&) = default;
};

/// Whether there is a symbol of that name.
[[nodiscard]] bool isSymbol(std::string_view name);

/// A shape of `size` by `size` pixels, which are `symbolPoints` points, with the dot in its top-right corner: first all
/// within the gap around it is cleared, then the dot is filled, both with smooth edges.
[[nodiscard]] std::vector<std::uint8_t> badged(std::span<const std::uint8_t> alpha, std::uint16_t size);

/// The picture of a symbol in every size that there is, by rising size; empty for an image that is no symbol.
[[nodiscard]] std::vector<SymbolPicture> pictures(const ImageDescription& image);

/// The largest of these that fits into `size` pixels, or else the smallest that there is; nothing for an image that is
/// no symbol.
[[nodiscard]] std::optional<SymbolPicture> pictureFor(const ImageDescription& image, std::uint16_t size);

/// The name of the icon file that shows the image, as the program installs it (Icon Naming Specification: the panel
/// colours "-symbolic" icons); empty for an image that is no symbol.
[[nodiscard]] std::string symbolicIconName(const ImageDescription& image);

} // namespace platform::linux
