#include "Platform/X11/Keyboard.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace platform::x11 {
namespace {

constexpr std::uint32_t command = 0x100;
constexpr std::uint32_t shift = 0x200;
constexpr std::uint32_t option = 0x800;
constexpr std::uint32_t control = 0x1000;

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
