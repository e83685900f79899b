#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tessel {

/// Further places for a window, requested by name. None of these has a shortcut, a symbol or a rule. An enumeration:
/// its values are `WindowPlacement::topHalf` and so on.
class WindowPlacement {
public:
    enum class Case : std::uint8_t {
        topHalf,
        bottomHalf,
        topLeft,
        topRight,
        bottomLeft,
        bottomRight,
        firstThird,
        centerThird,
        lastThird,
        firstTwoThirds,
        lastTwoThirds,
        /// The same place on another display. Displays are ordered from left to right, then from top to bottom; after
        /// the last comes the first.
        nextDisplay,
        previousDisplay,
        /// The frame that the window had before its last placement.
        restore,
    };
    using enum Case;

    constexpr WindowPlacement(Case value)
        : value{value} {}

    constexpr operator Case() const { return value; }

    /// The placement of a raw value; empty for any other text. Exact, letter case included.
    [[nodiscard]] static std::optional<WindowPlacement> fromRawValue(std::string_view rawValue);

    /// The text for the placement in requests of other programs.
    [[nodiscard]] std::string_view rawValue() const;

    /// Every placement, in declaration order.
    static const std::array<WindowPlacement, 14> allCases;

private:
    Case value;
};

inline constexpr std::array<WindowPlacement, 14> WindowPlacement::allCases{
    topHalf,     bottomHalf, topLeft,        topRight,      bottomLeft,  bottomRight,     firstThird,
    centerThird, lastThird,  firstTwoThirds, lastTwoThirds, nextDisplay, previousDisplay, restore};

} // namespace tessel
