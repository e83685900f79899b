#include "CorvidKitCore/InMemoryPreferenceStore.h"
#include "CorvidKitCore/PropertyListCoding.h"
#include "TesselCore/WindowAction.h"
#include "Tests/TesselCore/Printing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace {

using corvid::DecodingError;
using corvid::InMemoryPreferenceStore;
using corvid::Preference;
using corvid::PropertyListDecoder;
using corvid::PropertyListEncoder;
using corvid::PropertyListValue;
using corvid::Shortcut;
using tessel::WindowAction;

struct ActionRow {
    WindowAction action;
    const char* rawValue;
    const char* title;
    const char* symbol;
    std::uint32_t keyCode;
    const char* keyCaps;
};

const std::vector<ActionRow> table{
    {WindowAction::leftHalf, "leftHalf", "Left half", "rectangle.lefthalf.filled", 123, "⌃⌥←"},
    {WindowAction::rightHalf, "rightHalf", "Right half", "rectangle.righthalf.filled", 124, "⌃⌥→"},
    {WindowAction::center, "center", "Center", "rectangle.center.inset.filled", 8, "⌃⌥C"},
    {WindowAction::maximize, "maximize", "Maximize", "arrow.up.left.and.arrow.down.right", 126, "⌃⌥↑"},
    {WindowAction::almostMaximize, "almostMaximize", "Almost maximize", "rectangle.inset.filled", 2, "⌃⌥D"},
    {WindowAction::maximizeHeight, "maximizeHeight", "Maximize height", "rectangle.expand.vertical", 125, "⌃⌥↓"},
};

template <typename Actions>
std::vector<WindowAction> list(const Actions& actions) {
    return {actions.begin(), actions.end()};
}

TEST(WindowAction, HasARawValueATitleASymbolAndAShortcut) {
    ASSERT_EQ(table.size(), WindowAction::allCases.size());
    for (const ActionRow& row : table) {
        EXPECT_EQ(row.action.rawValue(), row.rawValue);
        EXPECT_EQ(row.action.title(), row.title);
        EXPECT_EQ(row.action.symbol(), row.symbol);
        EXPECT_EQ(row.action.shortcut(), (Shortcut{.keyCode = row.keyCode, .modifiers = 6144}));
        EXPECT_EQ(row.action.shortcut().displayString(), row.keyCaps);
        EXPECT_EQ(row.action.id(), row.action);
    }
}

TEST(WindowAction, IsBuiltFromItsRawValue) {
    for (const ActionRow& row : table) {
        EXPECT_EQ(WindowAction::fromRawValue(row.rawValue), row.action);
    }
}

TEST(WindowAction, IsNotBuiltFromAnotherLetterCaseOrAnyOtherText) {
    for (const char* text : {"LeftHalf", "lefthalf", "", "leftHalf ", "left", "Left half"}) {
        EXPECT_EQ(WindowAction::fromRawValue(text), std::nullopt) << text;
    }
}

TEST(WindowAction, AllCasesAreInDeclarationOrder) {
    EXPECT_EQ(list(WindowAction::allCases),
              (std::vector<WindowAction>{WindowAction::leftHalf, WindowAction::rightHalf, WindowAction::center,
                                         WindowAction::maximize, WindowAction::almostMaximize,
                                         WindowAction::maximizeHeight}));
    EXPECT_TRUE(std::ranges::is_sorted(WindowAction::allCases));
}

TEST(WindowAction, MenuOrderHasEveryActionAndEndsWithCenter) {
    EXPECT_EQ(
        list(WindowAction::menuOrder),
        (std::vector<WindowAction>{WindowAction::leftHalf, WindowAction::rightHalf, WindowAction::maximize,
                                   WindowAction::almostMaximize, WindowAction::maximizeHeight, WindowAction::center}));
    EXPECT_NE(list(WindowAction::menuOrder), list(WindowAction::allCases));
    EXPECT_TRUE(std::ranges::is_permutation(WindowAction::menuOrder, WindowAction::allCases));
}

TEST(WindowAction, RulesMayMaximizeOrCenter) {
    EXPECT_EQ(list(WindowAction::ruleActions),
              (std::vector<WindowAction>{WindowAction::maximize, WindowAction::center}));
}

TEST(WindowAction, ShortcutsHaveOneEntryPerActionAllWithControlAndOption) {
    const std::map<WindowAction, Shortcut> shortcuts = WindowAction::shortcuts();
    EXPECT_EQ(shortcuts.size(), 6U);
    for (const WindowAction action : WindowAction::allCases) {
        ASSERT_TRUE(shortcuts.contains(action));
        EXPECT_EQ(shortcuts.at(action), action.shortcut());
        EXPECT_EQ(shortcuts.at(action).modifiers, 6144U);
    }
}

TEST(WindowAction, IsCodedAsItsRawValueAlone) {
    PropertyListEncoder encoder;
    WindowAction{WindowAction::almostMaximize}.encode(encoder);
    ASSERT_TRUE(encoder.value());
    EXPECT_EQ(*encoder.value(), PropertyListValue{"almostMaximize"});
    EXPECT_EQ(WindowAction::decode(PropertyListDecoder{*encoder.value()}), WindowAction{WindowAction::almostMaximize});
}

TEST(WindowAction, DecodingAnUnknownTextOrAnotherKindIsAnError) {
    const PropertyListValue unknown{"quarter"};
    const auto fromUnknown = WindowAction::decode(PropertyListDecoder{unknown});
    ASSERT_FALSE(fromUnknown);
    EXPECT_EQ(fromUnknown.error().kind, DecodingError::Kind::dataCorrupted);

    const PropertyListValue number{1};
    const auto fromNumber = WindowAction::decode(PropertyListDecoder{number});
    ASSERT_FALSE(fromNumber);
    EXPECT_EQ(fromNumber.error().kind, DecodingError::Kind::typeMismatch);
}

TEST(WindowAction, IsStoredAsItsRawValueAndReadsBackOnlyFromOne) {
    InMemoryPreferenceStore store;
    const Preference<WindowAction> preference{"action", WindowAction::center};
    store[preference] = WindowAction::maximizeHeight;
    EXPECT_EQ(store.object("action"), PropertyListValue{"maximizeHeight"});
    EXPECT_EQ(store[preference].value(), WindowAction::maximizeHeight);
    for (const PropertyListValue& other : {PropertyListValue{"MaximizeHeight"}, PropertyListValue{5}}) {
        store.set(other, "action");
        EXPECT_EQ(store[preference].value(), WindowAction::center);
    }
}

TEST(WindowAction, RulesKeepTheirGoodEntriesBesideAnUnreadableOne) {
    using Rules = std::map<std::string, WindowAction, std::less<>>;
    using Dictionary = PropertyListValue::Dictionary;
    const InMemoryPreferenceStore store{
        {{"rules", Dictionary{{"org.example.good", "maximize"}, {"org.example.bad", "explode"}}}}};
    EXPECT_EQ((store[Preference<Rules>{"rules", {}}]), (Rules{{"org.example.good", WindowAction::maximize}}));
}

TEST(WindowAction, CanBeAMemberOfAHashedSet) {
    const std::unordered_set<WindowAction> actions(WindowAction::allCases.begin(), WindowAction::allCases.end());
    EXPECT_EQ(actions.size(), 6U);
    EXPECT_TRUE(actions.contains(WindowAction::maximize));
}

} // namespace
