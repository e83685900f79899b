#include "Platform/Linux/KeyPositions.h"

#include <gtest/gtest.h>

#include <linux/input-event-codes.h>

#include <set>

namespace platform::linux {
namespace {

TEST(KeyPositions, TheKeysOfTheShortcutsAreFoundByPosition) {
    EXPECT_EQ(xkbKeyName(123), "LEFT");
    EXPECT_EQ(xkbKeyName(124), "RGHT");
    EXPECT_EQ(xkbKeyName(125), "DOWN");
    EXPECT_EQ(xkbKeyName(126), "UP");
    // The third key of the bottom row of letters, and the third of the row above it.
    EXPECT_EQ(xkbKeyName(8), "AB03");
    EXPECT_EQ(xkbKeyName(2), "AC03");
}

TEST(KeyPositions, EveryNamedKeyHasAPositionOfItsOwn) {
    std::set<std::string_view> names;
    std::size_t known = 0;
    for (std::uint32_t code = 0; code < 256; ++code) {
        if (const auto name = xkbKeyName(code)) {
            names.insert(*name);
            ++known;
        }
    }
    EXPECT_EQ(known, 68U);
    EXPECT_EQ(names.size(), known);
}

TEST(KeyPositions, AnUnknownCodeHasNoPosition) {
    EXPECT_EQ(xkbKeyName(200), std::nullopt);
    EXPECT_EQ(xkbKeyName(0xffffffff), std::nullopt);
}

TEST(KeyPositions, TheKernelsNumbersBelongToTheSameKeys) {
    EXPECT_EQ(kernelKeyCode(123), KEY_LEFT);
    EXPECT_EQ(kernelKeyCode(124), KEY_RIGHT);
    EXPECT_EQ(kernelKeyCode(125), KEY_DOWN);
    EXPECT_EQ(kernelKeyCode(126), KEY_UP);
    EXPECT_EQ(kernelKeyCode(8), KEY_C);
    EXPECT_EQ(kernelKeyCode(2), KEY_D);
    // The ends of the rows.
    EXPECT_EQ(kernelKeyCode(53), KEY_ESC);
    EXPECT_EQ(kernelKeyCode(103), KEY_F11);
    EXPECT_EQ(kernelKeyCode(50), KEY_GRAVE);
    EXPECT_EQ(kernelKeyCode(24), KEY_EQUAL);
    EXPECT_EQ(kernelKeyCode(12), KEY_Q);
    EXPECT_EQ(kernelKeyCode(42), KEY_BACKSLASH);
    EXPECT_EQ(kernelKeyCode(0), KEY_A);
    EXPECT_EQ(kernelKeyCode(39), KEY_APOSTROPHE);
    EXPECT_EQ(kernelKeyCode(6), KEY_Z);
    EXPECT_EQ(kernelKeyCode(44), KEY_SLASH);
    EXPECT_EQ(kernelKeyCode(49), KEY_SPACE);
    EXPECT_EQ(kernelKeyCode(200), std::nullopt);
}

TEST(KeyPositions, NoTwoKeysShareANumberOfTheKernel) {
    std::set<std::uint32_t> numbers;
    std::size_t known = 0;
    for (std::uint32_t code = 0; code < 256; ++code) {
        if (const auto number = kernelKeyCode(code)) {
            numbers.insert(*number);
            ++known;
        }
    }
    EXPECT_EQ(numbers.size(), known);
}

} // namespace
} // namespace platform::linux
