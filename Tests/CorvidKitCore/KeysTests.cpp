#include "CorvidKitCore/Keys.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <linux/input-event-codes.h>

#include <cctype>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>

namespace {

using corvid::Key;
using corvid::Modifier;
using corvid::Shortcut;

template <typename Row, typename Column>
void expectUnique(const auto& rows, Column Row::* column) {
    std::set<Column> values;
    for (const Row& row : rows) {
        EXPECT_TRUE(values.insert(row.*column).second) << row.*column;
    }
}

TEST(Keys, EachHasItsOwnNameInEveryNumbering) {
    EXPECT_EQ(corvid::allKeys().size(), 68U);
    expectUnique(corvid::allKeys(), &Key::code);
    expectUnique(corvid::allKeys(), &Key::cap);
    expectUnique(corvid::allKeys(), &Key::kernelCode);
    expectUnique(corvid::allKeys(), &Key::xkbName);
    expectUnique(corvid::allKeys(), &Key::qtKey);
}

TEST(Keys, NoSymbolMeansTwoKeys) {
    std::set<std::string_view> symbols;
    for (const Key& key : corvid::allKeys()) {
        EXPECT_FALSE(key.symbol.empty()) << key.cap;
        EXPECT_TRUE(symbols.insert(key.symbol).second) << key.symbol;
        EXPECT_TRUE(key.shiftedSymbol.empty() || symbols.insert(key.shiftedSymbol).second) << key.shiftedSymbol;
    }
}

TEST(Keys, AreFoundByTheirCodeAlone) {
    for (const Key& key : corvid::allKeys()) {
        EXPECT_EQ(corvid::keyOf(key.code), &key) << key.cap;
    }
    for (const std::uint32_t unknown : {10U, 127U, 128U, 200U, 0xffffU, 0xffffffffU}) {
        EXPECT_EQ(corvid::keyOf(unknown), nullptr) << unknown;
    }
}

TEST(Keys, HaveTheKernelsNumbers) {
    struct Row {
        std::uint32_t code;
        std::uint32_t kernelCode;
    };
    // The keys of the shortcuts, and the ends of the rows.
    for (const auto& [code, kernelCode] :
         {Row{123, KEY_LEFT},     Row{124, KEY_RIGHT}, Row{125, KEY_DOWN},      Row{126, KEY_UP},
          Row{8, KEY_C},          Row{2, KEY_D},       Row{53, KEY_ESC},        Row{109, KEY_F10},
          Row{103, KEY_F11},      Row{111, KEY_F12},   Row{50, KEY_GRAVE},      Row{51, KEY_BACKSPACE},
          Row{24, KEY_EQUAL},     Row{48, KEY_TAB},    Row{12, KEY_Q},          Row{30, KEY_RIGHTBRACE},
          Row{42, KEY_BACKSLASH}, Row{0, KEY_A},       Row{39, KEY_APOSTROPHE}, Row{36, KEY_ENTER},
          Row{6, KEY_Z},          Row{44, KEY_SLASH},  Row{49, KEY_SPACE}}) {
        EXPECT_EQ(corvid::keyOf(code)->kernelCode, kernelCode) << code;
    }
}

TEST(Keys, HaveTheNamesOfTheirPlaces) {
    EXPECT_EQ(corvid::keyOf(123)->xkbName, "LEFT");
    EXPECT_EQ(corvid::keyOf(124)->xkbName, "RGHT");
    EXPECT_EQ(corvid::keyOf(125)->xkbName, "DOWN");
    EXPECT_EQ(corvid::keyOf(126)->xkbName, "UP");
    // The third key of the bottom row of letters, and the third of the row above it.
    EXPECT_EQ(corvid::keyOf(8)->xkbName, "AB03");
    EXPECT_EQ(corvid::keyOf(2)->xkbName, "AC03");
}

TEST(Keys, OfACharacterHaveItOnTheCapAndInQtsNumber) {
    for (const Key& key : corvid::allKeys()) {
        const bool isLetter = key.symbol.size() == 1 && std::isalpha(static_cast<unsigned char>(key.symbol[0])) != 0;
        if (key.cap.size() == 1) {
            EXPECT_EQ(key.qtKey, key.cap[0]) << key.cap;
        }
        if (isLetter) {
            EXPECT_EQ(key.cap, std::string(1, static_cast<char>(std::toupper(key.symbol[0]))));
        }
        EXPECT_EQ(isLetter, key.cap.size() == 1 && std::isupper(static_cast<unsigned char>(key.cap[0])) != 0);
    }
}

TEST(Keys, HaveNoSymbolWithoutAName) {
    EXPECT_TRUE(corvid::keyOf(19)->hasSymbol("2"));
    EXPECT_TRUE(corvid::keyOf(19)->hasSymbol("at"));
    EXPECT_FALSE(corvid::keyOf(19)->hasSymbol("3"));
    EXPECT_FALSE(corvid::keyOf(0)->hasSymbol(""));
}

TEST(Modifiers, EachHasItsOwnNameInEveryNotation) {
    expectUnique(corvid::allModifiers, &Modifier::bit);
    expectUnique(corvid::allModifiers, &Modifier::cap);
    expectUnique(corvid::allModifiers, &Modifier::label);
    expectUnique(corvid::allModifiers, &Modifier::accelerator);
    expectUnique(corvid::allModifiers, &Modifier::coreMask);
    expectUnique(corvid::allModifiers, &Modifier::qtModifier);
}

TEST(Modifiers, HaveTheBitsOfTheXProtocol) {
    EXPECT_EQ(corvid::coreModifiers(Shortcut::shift), 1U);
    EXPECT_EQ(corvid::coreModifiers(Shortcut::control), 4U);
    EXPECT_EQ(corvid::coreModifiers(Shortcut::option), 8U);
    EXPECT_EQ(corvid::coreModifiers(Shortcut::command), 64U);
    EXPECT_EQ(corvid::coreModifiers(0), 0U);
}

RC_GTEST_PROP(Modifiers, OfAMaskAreThoseWhoseBitsAreSet, (std::uint32_t mask)) {
    std::uint32_t found = 0;
    for (const Modifier& modifier : corvid::modifiersIn(mask)) {
        RC_ASSERT((found & modifier.bit) == 0U);
        found |= modifier.bit;
    }
    RC_ASSERT(found == (mask & 0x1b00U));
    RC_ASSERT(corvid::hasUnknownModifier(mask) == (mask != found));
    RC_ASSERT(!corvid::hasUnknownModifier(found));
}

} // namespace
