#include "CorvidKit/KeyDownEvent.h"
#include "CorvidKitCore/KeyCode.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace corvid {
namespace {

struct FlagAndBit {
    std::uint64_t flag;
    std::uint32_t bit;
};

// By number: these values are fixed by the toolkit and the hot-key interface, whatever their names here.
constexpr std::array<FlagAndBit, 4> flagsAndBits{{
    {0x100000, 0x100},
    {0x20000, 0x200},
    {0x80000, 0x800},
    {0x40000, 0x1000},
}};

TEST(KeyDownEvent, EverySetOfModifiersBecomesTheSameSetOfShortcutBits) {
    for (std::uint32_t set = 0; set < 1U << flagsAndBits.size(); ++set) {
        KeyDownEvent event{.keyCode = 123};
        std::uint32_t wanted = 0;
        for (std::size_t index = 0; index < flagsAndBits.size(); ++index) {
            if ((set >> index & 1U) != 0) {
                event.modifierFlags |= flagsAndBits.at(index).flag;
                wanted |= flagsAndBits.at(index).bit;
            }
        }
        EXPECT_EQ(shortcutOf(event), (Shortcut{.keyCode = 123, .modifiers = wanted})) << set;
    }
}

TEST(KeyDownEvent, FlagsThatNoShortcutHasAreDropped) {
    constexpr std::uint64_t ours = 0x1E0000;
    const KeyDownEvent others{.keyCode = 8, .modifierFlags = ~ours};
    EXPECT_EQ(shortcutOf(others), (Shortcut{.keyCode = 8, .modifiers = 0}));
    const KeyDownEvent all{.keyCode = 8, .modifierFlags = ~std::uint64_t{0}};
    EXPECT_EQ(shortcutOf(all), (Shortcut{.keyCode = 8, .modifiers = 0x1B00}));
}

TEST(KeyDownEvent, TheKeyStaysTheHardwareKey) {
    EXPECT_EQ(shortcutOf({.keyCode = 126, .modifierFlags = 0xC0000}),
              (Shortcut{.keyCode = KeyCode::upArrow, .modifiers = Shortcut::control | Shortcut::option}));
    constexpr std::uint16_t last = std::numeric_limits<std::uint16_t>::max();
    EXPECT_EQ(shortcutOf({.keyCode = last}), (Shortcut{.keyCode = last, .modifiers = 0}));
    EXPECT_FALSE(shortcutOf({.keyCode = 126, .modifierFlags = KeyDownEvent::shiftFlag}).isValid());
}

} // namespace
} // namespace corvid
