#include "Platform/X11/SizeHints.h"

#include "Platform/X11/PropertyValue.h"

#include <algorithm>
#include <utility>

namespace platform::x11 {

namespace {

constexpr std::uint32_t hasMinimum = 1U << 4U;
constexpr std::uint32_t hasMaximum = 1U << 5U;
constexpr std::uint32_t hasIncrement = 1U << 6U;
constexpr std::uint32_t hasBase = 1U << 8U;
constexpr std::uint32_t hasGravity = 1U << 9U;
constexpr std::uint32_t propertyLength = 18;
constexpr std::uint32_t largest = 32767;

bool isSensible(std::uint32_t value) {
    return value > 0 && value <= largest;
}

bool isSensibleBase(std::uint32_t width, std::uint32_t height) {
    return width <= largest && height <= largest && (width > 0 || height > 0);
}

std::uint32_t constrained(std::uint32_t wanted, std::uint32_t minimum, std::uint32_t maximum, std::uint32_t base,
                          std::uint32_t increment) {
    const std::uint32_t inRange = std::min(std::max(wanted, minimum), std::max(minimum, maximum));
    if (inRange < base) {
        return inRange;
    }
    return base + (inRange - base) / increment * increment;
}

} // namespace

SizeHints sizeHintsFromValues(const std::vector<std::uint32_t>& values) {
    SizeHints hints;
    const std::uint32_t flags = values.empty() ? 0 : values.front();
    const auto isGiven = [&](std::uint32_t flag, std::size_t index) {
        return (flags & flag) != 0 && values.size() > index + 1;
    };
    const auto take = [&](std::uint32_t flag, std::size_t index, std::uint32_t& width, std::uint32_t& height) {
        if (isGiven(flag, index) && isSensible(values[index]) && isSensible(values[index + 1])) {
            width = values[index];
            height = values[index + 1];
            return true;
        }
        return false;
    };
    const bool minimumIsGiven = take(hasMinimum, 5, hints.minimumWidth, hints.minimumHeight);
    take(hasMaximum, 7, hints.maximumWidth, hints.maximumHeight);
    take(hasIncrement, 9, hints.widthIncrement, hints.heightIncrement);
    // A client may have only steps in one dimension, and a minimum as well in the other.
    const bool baseIsGiven = isGiven(hasBase, 15) && isSensibleBase(values[15], values[16]);
    constexpr std::size_t gravityIndex = 17;
    if ((flags & hasGravity) != 0 && values.size() > gravityIndex) {
        hints.gravity = values[gravityIndex];
    }
    // Each of base and minimum replaces the other if only one is set (ICCCM 4.1.2.3).
    if (baseIsGiven) {
        hints.baseWidth = values[15];
        hints.baseHeight = values[16];
        if (!minimumIsGiven) {
            hints.minimumWidth = std::max(hints.baseWidth, 1U);
            hints.minimumHeight = std::max(hints.baseHeight, 1U);
        }
    } else if (minimumIsGiven) {
        hints.baseWidth = hints.minimumWidth;
        hints.baseHeight = hints.minimumHeight;
    }
    return hints;
}

xcb_get_property_cookie_t requestSizeHints(Connection& connection, xcb_window_t window) {
    return requestProperty(connection, window, XCB_ATOM_WM_NORMAL_HINTS, propertyLength);
}

ClientSize constrainedSize(const SizeHints& hints, ClientSize wanted) {
    return {
        constrained(wanted.width, hints.minimumWidth, hints.maximumWidth, hints.baseWidth, hints.widthIncrement),
        constrained(wanted.height, hints.minimumHeight, hints.maximumHeight, hints.baseHeight, hints.heightIncrement)};
}

} // namespace platform::x11
