#include "Platform/X11/KeyPositions.h"
#include "Platform/X11/Keyboard.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace platform::x11 {
namespace {

constexpr std::uint32_t command = 0x100;
constexpr std::uint32_t shift = 0x200;
constexpr std::uint32_t option = 0x800;
constexpr std::uint32_t control = 0x1000;

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

TEST(Keyboard, ModifiersAreThoseOfTheKeyboard) {
    const KeyboardMap map{.positions = {}, .lockModifiers = 0, .altModifier = 8, .superModifier = 64};
    EXPECT_EQ(coreModifiers(map, control | option), XCB_MOD_MASK_CONTROL | 8);
    EXPECT_EQ(coreModifiers(map, command | shift), 64 | XCB_MOD_MASK_SHIFT);
    EXPECT_EQ(coreModifiers(map, 0), 0);
}

TEST(Keyboard, KeysAreFoundByTheirWholeName) {
    const KeyboardMap map{.positions = {{{'L', 'E', 'F', 'T'}, 113}, {{'U', 'P'}, 111}}};
    EXPECT_EQ(map.keyCode("LEFT"), 113);
    EXPECT_EQ(map.keyCode("UP"), 111);
    EXPECT_EQ(map.keyCode("U"), std::nullopt);
    EXPECT_EQ(map.keyCode("DOWN"), std::nullopt);
    EXPECT_EQ(KeyboardMap().keyCode("UP"), std::nullopt);
}

TEST(Keyboard, LockVariantsAreAllCombinationsNoneFirst) {
    const auto sorted = [](std::vector<std::uint16_t> variants) {
        std::ranges::sort(variants);
        return variants;
    };
    EXPECT_EQ(lockVariants(0), (std::vector<std::uint16_t>{0}));
    EXPECT_EQ(lockVariants(2).front(), 0);
    EXPECT_EQ(sorted(lockVariants(2)), (std::vector<std::uint16_t>{0, 2}));
    EXPECT_EQ(sorted(lockVariants(2 | 16)), (std::vector<std::uint16_t>{0, 2, 16, 18}));
    EXPECT_EQ(lockVariants(2 | 16 | 32).size(), 8U);
}

} // namespace
} // namespace platform::x11
