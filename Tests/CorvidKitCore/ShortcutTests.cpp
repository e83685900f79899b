#include "CorvidKitCore/KeyCode.h"
#include "CorvidKitCore/Shortcut.h"
#include "Tests/CorvidKitCore/Printing.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace {

using corvid::PropertyListValue;
using corvid::Shortcut;
using Dictionary = PropertyListValue::Dictionary;
namespace KeyCode = corvid::KeyCode;

constexpr std::uint32_t largest = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint32_t controlOption = Shortcut::control | Shortcut::option;

std::optional<Shortcut> stored(const PropertyListValue& value) {
    return Shortcut::fromPropertyListValue(value);
}

TEST(KeyCode, NamesTheKeysByTheirPlace) {
    EXPECT_EQ(KeyCode::escape, 53U);
    EXPECT_EQ(KeyCode::deleteKey, 51U);
    EXPECT_EQ(KeyCode::leftArrow, 123U);
    EXPECT_EQ(KeyCode::rightArrow, 124U);
    EXPECT_EQ(KeyCode::downArrow, 125U);
    EXPECT_EQ(KeyCode::upArrow, 126U);
    EXPECT_EQ(KeyCode::c, 8U);
    EXPECT_EQ(KeyCode::d, 2U);
}

TEST(Shortcut, HasTheModifierBitsOfTheHotKeyInterface) {
    EXPECT_EQ(Shortcut::command, 256U);
    EXPECT_EQ(Shortcut::shift, 512U);
    EXPECT_EQ(Shortcut::option, 2048U);
    EXPECT_EQ(Shortcut::control, 4096U);
}

TEST(Shortcut, NoneIsNotValidAndShowsAsTheKeyOfItsCode) {
    EXPECT_EQ(Shortcut::none, (Shortcut{.keyCode = 0, .modifiers = 0}));
    EXPECT_FALSE(Shortcut::none.isValid());
    EXPECT_EQ(Shortcut::none.displayString(), "A");
}

TEST(Shortcut, IsValidWithCommandOptionOrControl) {
    for (const std::uint32_t modifier : {Shortcut::command, Shortcut::option, Shortcut::control}) {
        EXPECT_TRUE((Shortcut{.keyCode = KeyCode::leftArrow, .modifiers = modifier}.isValid())) << modifier;
        EXPECT_TRUE((Shortcut{.keyCode = 0, .modifiers = modifier | Shortcut::shift}.isValid())) << modifier;
    }
}

TEST(Shortcut, IsNotValidAsABareKeyOrWithShiftAlone) {
    EXPECT_FALSE((Shortcut{.keyCode = KeyCode::leftArrow, .modifiers = 0}.isValid()));
    EXPECT_FALSE((Shortcut{.keyCode = KeyCode::leftArrow, .modifiers = Shortcut::shift}.isValid()));
    EXPECT_FALSE((Shortcut{.keyCode = KeyCode::leftArrow, .modifiers = ~0x1900U}.isValid()));
}

TEST(Shortcut, ModifierMaskIsTheUnionOfTheKeysThatAreDown) {
    EXPECT_EQ(Shortcut::modifierMask({.command = true, .shift = true, .option = true, .control = true}), 6912U);
    EXPECT_EQ(Shortcut::modifierMask({}), 0U);
    EXPECT_EQ(Shortcut::modifierMask({.command = true}), Shortcut::command);
    EXPECT_EQ(Shortcut::modifierMask({.shift = true}), Shortcut::shift);
    EXPECT_EQ(Shortcut::modifierMask({.option = true}), Shortcut::option);
    EXPECT_EQ(Shortcut::modifierMask({.control = true}), Shortcut::control);
}

TEST(Shortcut, ShowsItsKeyCapsInAFixedOrderWithTheKeyLast) {
    EXPECT_EQ((Shortcut{.keyCode = KeyCode::upArrow, .modifiers = 6912}.symbols()),
              (std::vector<std::string>{"\u2303", "\u2325", "\u21E7", "\u2318", "\u2191"}));
    EXPECT_EQ((Shortcut{.keyCode = KeyCode::c, .modifiers = Shortcut::shift}.symbols()),
              (std::vector<std::string>{"\u21E7", "C"}));
    EXPECT_EQ((Shortcut{.keyCode = KeyCode::c, .modifiers = 0}.symbols()), (std::vector<std::string>{"C"}));
}

TEST(Shortcut, ShowsNothingForBitsThatAreNoModifier) {
    EXPECT_EQ((Shortcut{.keyCode = KeyCode::d, .modifiers = ~0x1B00U}.displayString()), "D");
}

TEST(Shortcut, DisplayStringIsTheKeyCapsWithoutSeparators) {
    EXPECT_EQ((Shortcut{.keyCode = 123, .modifiers = controlOption}.displayString()), "⌃⌥←");
    EXPECT_EQ((Shortcut{.keyCode = 49, .modifiers = Shortcut::command}.displayString()), "⌘Space");
}

TEST(Shortcut, KeyNameIsWhatTheCapSays) {
    const std::map<std::uint32_t, std::string> names{
        {0, "A"},        {11, "B"},       {8, "C"},        {2, "D"},        {14, "E"},     {3, "F"},
        {5, "G"},        {4, "H"},        {34, "I"},       {38, "J"},       {40, "K"},     {37, "L"},
        {46, "M"},       {45, "N"},       {31, "O"},       {35, "P"},       {12, "Q"},     {15, "R"},
        {1, "S"},        {17, "T"},       {32, "U"},       {9, "V"},        {13, "W"},     {7, "X"},
        {16, "Y"},       {6, "Z"},        {29, "0"},       {18, "1"},       {19, "2"},     {20, "3"},
        {21, "4"},       {23, "5"},       {22, "6"},       {26, "7"},       {28, "8"},     {25, "9"},
        {122, "F1"},     {120, "F2"},     {99, "F3"},      {118, "F4"},     {96, "F5"},    {97, "F6"},
        {98, "F7"},      {100, "F8"},     {101, "F9"},     {109, "F10"},    {103, "F11"},  {111, "F12"},
        {123, "\u2190"}, {124, "\u2192"}, {125, "\u2193"}, {126, "\u2191"}, {49, "Space"}, {36, "\u21A9"},
        {48, "\u21E5"},  {51, "\u232B"},  {53, "\u238B"},  {27, "-"},       {24, "="},     {33, "["},
        {30, "]"},       {41, ";"},       {39, "'"},       {43, ","},       {47, "."},     {44, "/"},
        {42, "\\"},      {50, "`"},
    };
    ASSERT_EQ(names.size(), 68U);
    for (std::uint32_t code = 0; code < 300; ++code) {
        if (const auto name = names.find(code); name != names.end()) {
            EXPECT_EQ(Shortcut::keyName(code), name->second);
        } else {
            EXPECT_TRUE(Shortcut::keyName(code).starts_with('#')) << code;
        }
    }
}

TEST(Shortcut, KeyNameOfAnUnknownKeyIsItsNumber) {
    EXPECT_EQ(Shortcut::keyName(200), "#200");
    EXPECT_EQ(Shortcut::keyName(127), "#127");
    EXPECT_EQ(Shortcut::keyName(128), "#128");
    EXPECT_EQ(Shortcut::keyName(largest), "#4294967295");
}

TEST(Shortcut, StoresADictionaryOfTwoIntegers) {
    EXPECT_EQ((Shortcut{.keyCode = 123, .modifiers = 6144}.propertyListValue()),
              (PropertyListValue{Dictionary{{"keyCode", 123}, {"modifiers", 6144}}}));
}

TEST(Shortcut, ReadsItsStoredForm) {
    EXPECT_EQ(stored(Dictionary{{"keyCode", 123}, {"modifiers", 6144}}),
              (Shortcut{.keyCode = KeyCode::leftArrow, .modifiers = controlOption}));
}

TEST(Shortcut, IgnoresFurtherEntriesOfTheStoredForm) {
    EXPECT_EQ(stored(Dictionary{{"keyCode", 123}, {"modifiers", 6144}, {"note", "mine"}}),
              (Shortcut{.keyCode = 123, .modifiers = 6144}));
}

TEST(Shortcut, ReadsNothingFromNumbersOutside32Bits) {
    EXPECT_EQ(stored(Dictionary{{"keyCode", 123}, {"modifiers", -1}}), std::nullopt);
    EXPECT_EQ(stored(Dictionary{{"keyCode", 123}, {"modifiers", 4294967296}}), std::nullopt);
    EXPECT_EQ(stored(Dictionary{{"keyCode", -1}, {"modifiers", 6144}}), std::nullopt);
    EXPECT_EQ(stored(Dictionary{{"keyCode", 4294967296}, {"modifiers", 6144}}), std::nullopt);
}

TEST(Shortcut, ReadsNothingFromEntriesThatAreNoIntegers) {
    EXPECT_EQ(stored(Dictionary{{"keyCode", 123}, {"modifiers", "6144"}}), std::nullopt);
    EXPECT_EQ(stored(Dictionary{{"keyCode", true}, {"modifiers", 6144}}), std::nullopt);
    EXPECT_EQ(stored(Dictionary{{"keyCode", 123}, {"modifiers", Dictionary{}}}), std::nullopt);
}

TEST(Shortcut, ReadsNothingWhenAnEntryIsMissing) {
    EXPECT_EQ(stored(Dictionary{{"keyCode", 123}}), std::nullopt);
    EXPECT_EQ(stored(Dictionary{{"modifiers", 6144}}), std::nullopt);
    EXPECT_EQ(stored(Dictionary{}), std::nullopt);
}

TEST(Shortcut, ReadsNothingFromWhatIsNoDictionary) {
    EXPECT_EQ(stored(123), std::nullopt);
    EXPECT_EQ(stored(true), std::nullopt);
    EXPECT_EQ(stored("keyCode"), std::nullopt);
    EXPECT_EQ(stored(corvid::Data{}), std::nullopt);
}

TEST(Shortcut, EqualsWhenBothFieldsDo) {
    const Shortcut shortcut{.keyCode = 123, .modifiers = 6144};
    EXPECT_EQ(shortcut, (Shortcut{.keyCode = 123, .modifiers = 6144}));
    EXPECT_NE(shortcut, (Shortcut{.keyCode = 124, .modifiers = 6144}));
    EXPECT_NE(shortcut, (Shortcut{.keyCode = 123, .modifiers = 6145}));
}

TEST(Shortcut, HashesBothFieldsInTheirOrder) {
    const std::hash<Shortcut> hash;
    EXPECT_EQ(hash({.keyCode = 1, .modifiers = 2}), hash({.keyCode = 1, .modifiers = 2}));
    std::unordered_set<std::size_t> hashes;
    for (std::uint32_t keyCode = 0; keyCode < 128; ++keyCode) {
        for (std::uint32_t bits = 0; bits < 32; ++bits) {
            hashes.insert(hash({.keyCode = keyCode, .modifiers = bits << 8U}));
        }
    }
    EXPECT_EQ(hashes.size(), 128U * 32U);
    EXPECT_NE(hash({.keyCode = 1, .modifiers = 2}), hash({.keyCode = 2, .modifiers = 1}));
}

rc::Gen<std::uint32_t> any32Bits() {
    return rc::gen::weightedOneOf<std::uint32_t>(
        {{3, rc::gen::map(rc::gen::inRange<std::uint64_t>(0, 1ULL << 32U),
                          [](std::uint64_t value) { return static_cast<std::uint32_t>(value); })},
         {1, rc::gen::element<std::uint32_t>(0U, 1U, 0x7fffffffU, 0x80000000U, largest - 1, largest)}});
}

RC_GTEST_PROP(Shortcut, EveryPairOf32BitValuesSurvivesTheStoredForm, ()) {
    const Shortcut shortcut{.keyCode = *any32Bits(), .modifiers = *any32Bits()};
    RC_ASSERT(stored(shortcut.propertyListValue()) == shortcut);
}

RC_GTEST_PROP(Shortcut, EveryPairOf32BitValuesHasOneToFiveKeyCaps, ()) {
    const Shortcut shortcut{.keyCode = *any32Bits(), .modifiers = *any32Bits()};
    const std::vector<std::string> symbols = shortcut.symbols();
    RC_ASSERT(symbols.size() >= 1U && symbols.size() <= 5U);
    RC_ASSERT(symbols.back() == Shortcut::keyName(shortcut.keyCode));
}

} // namespace
