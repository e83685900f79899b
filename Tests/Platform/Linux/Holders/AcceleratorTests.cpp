#include "CorvidKitCore/Keys.h"
#include "Platform/Linux/Holders/Accelerator.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace platform::linux {
namespace {

using corvid::Shortcut;

constexpr std::uint32_t controlOption = Shortcut::control | Shortcut::option;
constexpr Shortcut ctrlAltLeft{.keyCode = 123, .modifiers = controlOption};
constexpr Shortcut ctrlAltD{.keyCode = 2, .modifiers = controlOption};

TEST(Accelerator, IsTheSameInAllItsSpellings) {
    struct Row {
        std::string text;
        Shortcut shortcut;
        bool isSame;
    };
    const std::vector<Row> rows{
        {"<Primary><Alt>Left", ctrlAltLeft, true},
        {"<Control><Mod1>Left", ctrlAltLeft, true},
        {"<alt><ctrl>LEFT", ctrlAltLeft, true},
        {"<Ctl><Alt>left", ctrlAltLeft, true},
        {"<Alt><Primary>d", ctrlAltD, true},
        {"<Alt><Primary>D", ctrlAltD, true},
        {"<Control><Alt>0x71", ctrlAltLeft, true},
        {"<Control><Alt>0x28", ctrlAltD, true},
        {"<Control><Alt>0x72", ctrlAltLeft, false},
        {"<Control><Alt>Right", ctrlAltLeft, false},
        {"<Control><Alt>KP_Left", ctrlAltLeft, false},
        {"<Control>Left", ctrlAltLeft, false},
        {"<Alt>Left", ctrlAltLeft, false},
        {"Left", ctrlAltLeft, false},
        {"<Control><Shift><Alt>Left", ctrlAltLeft, false},
        {"<Super><Control><Alt>Left", ctrlAltLeft, false},
        {"<Super>Page_Up", ctrlAltLeft, false},
        {"<Shift><Super>d", {.keyCode = 2, .modifiers = Shortcut::shift | Shortcut::command}, true},
        {"<Control>at", {.keyCode = 19, .modifiers = Shortcut::control}, true},
    };
    for (const Row& row : rows) {
        const auto accelerator = readAccelerator(row.text);
        ASSERT_TRUE(accelerator) << row.text;
        EXPECT_EQ(isSame(*accelerator, row.shortcut), row.isSame) << row.text;
    }
}

TEST(Accelerator, IsNothingWithoutAKeyOrWithAModifierThatNoHotKeyHas) {
    for (const char* text :
         {"", "<Control>", "<Control", "<>Left", "<Hyper><Alt>Left", "<Mod5>Left", "<Control><Alt"}) {
        EXPECT_EQ(readAccelerator(text), std::nullopt) << text;
    }
}

TEST(Accelerator, OfOpenboxIsTheSameInAllItsSpellings) {
    struct Row {
        std::string text;
        Shortcut shortcut;
        bool isSame;
    };
    const std::vector<Row> rows{
        {"C-A-Left", ctrlAltLeft, true},
        {"A-C-left", ctrlAltLeft, true},
        {"Control-Mod1-Left", ctrlAltLeft, true},
        {"C-A-d", ctrlAltD, true},
        {"C-A-0x71", ctrlAltLeft, true},
        {"C-A-S-Left", ctrlAltLeft, false},
        {"W-d", {.keyCode = 2, .modifiers = Shortcut::command}, true},
        {"C-minus", {.keyCode = 27, .modifiers = Shortcut::control}, true},
    };
    for (const Row& row : rows) {
        const auto accelerator = readOpenboxKey(row.text);
        ASSERT_TRUE(accelerator) << row.text;
        EXPECT_EQ(isSame(*accelerator, row.shortcut), row.isSame) << row.text;
    }
    EXPECT_EQ(readOpenboxKey(""), std::nullopt);
    EXPECT_EQ(readOpenboxKey("X-Left"), std::nullopt);
}

/// With a key of the keyboard.
Shortcut anyShortcut() {
    const auto keys = corvid::allKeys();
    Shortcut shortcut{.keyCode = keys[*rc::gen::inRange(std::size_t{0}, keys.size())].code, .modifiers = 0};
    for (const corvid::Modifier& modifier : corvid::allModifiers) {
        shortcut.modifiers |= *rc::gen::arbitrary<bool>() ? modifier.bit : 0U;
    }
    return shortcut;
}

RC_GTEST_PROP(Accelerator, OfAShortcutIsItsOwnAndNoOthers, ()) {
    const Shortcut shortcut = anyShortcut();
    const Shortcut other = anyShortcut();
    const corvid::Key& key = *corvid::keyOf(shortcut.keyCode);
    std::vector symbols{key.symbol};
    if (!key.shiftedSymbol.empty()) {
        symbols.push_back(key.shiftedSymbol);
    }
    std::vector<std::string> modifiers;
    for (const auto& [mask, names] : {std::pair{Shortcut::command, std::vector{"<Super>", "<Mod4>"}},
                                      {Shortcut::shift, {"<Shift>", "<SHFT>"}},
                                      {Shortcut::option, {"<Alt>", "<Mod1>"}},
                                      {Shortcut::control, {"<Primary>", "<Control>", "<Ctrl>", "<ctl>"}}}) {
        if ((shortcut.modifiers & mask) != 0) {
            modifiers.emplace_back(*rc::gen::elementOf(names));
        }
    }
    std::string text;
    while (!modifiers.empty()) {
        const auto place = *rc::gen::inRange(std::size_t{0}, modifiers.size());
        text += modifiers[place];
        modifiers.erase(modifiers.begin() + static_cast<std::ptrdiff_t>(place));
    }
    text += *rc::gen::elementOf(symbols);
    const auto accelerator = readAccelerator(text);
    RC_ASSERT(accelerator.has_value());
    RC_ASSERT(isSame(*accelerator, shortcut));
    RC_ASSERT(isSame(*accelerator, other) == (other == shortcut));
}

TEST(Accelerator, IsWrittenWithTheNumberOfTheKeyAndTheNamesOfTheModifiers) {
    struct Row {
        Shortcut shortcut;
        std::optional<std::string> text;
    };
    // The numbers are those that xev shows on a PC keyboard.
    for (const auto& [shortcut, text] : {
             Row{ctrlAltLeft, "<Control><Alt>0x71"},
             Row{{124, controlOption}, "<Control><Alt>0x72"},
             Row{{126, controlOption}, "<Control><Alt>0x6f"},
             Row{{125, controlOption}, "<Control><Alt>0x74"},
             Row{{8, controlOption}, "<Control><Alt>0x36"},
             Row{ctrlAltD, "<Control><Alt>0x28"},
             Row{{0, 0x1b00}, "<Control><Alt><Shift><Super>0x26"},
             Row{{53, 0}, "0x9"},
             Row{{0xffff, controlOption}, std::nullopt},
             Row{{8, 0x400}, std::nullopt},
         }) {
        EXPECT_EQ(acceleratorText(shortcut), text) << shortcut.keyCode;
    }
}

RC_GTEST_PROP(Accelerator, AsWrittenIsReadAsTheSameShortcutAndNoOther, ()) {
    const Shortcut shortcut = anyShortcut();
    const Shortcut other = anyShortcut();
    const auto read = readAccelerator(acceleratorText(shortcut).value());
    RC_ASSERT(read.has_value());
    RC_ASSERT(isSame(*read, shortcut));
    RC_ASSERT(isSame(*read, other) == (other == shortcut));
}

TEST(Accelerator, TheOtherKeysOfABindingHaveTheirNames) {
    const std::vector<Shortcut> shortcuts{ctrlAltLeft, ctrlAltD};
    struct Row {
        std::vector<std::string> accelerators;
        std::optional<ShortcutHolder::Keys> wanted;
    };
    constexpr auto all = controlOption | Shortcut::shift | Shortcut::command;
    const std::vector<Row> rows{
        {{}, {}},
        {{"<Control><Alt>Left"}, {}},
        {{"<Primary><Alt>d", "<Alt><Control>Left"}, {}},
        {{"<Control><Alt>Left", "<Super>Page_Up", "<Super>Home"}, {{Shortcut::command, "Page Up"}}},
        {{"<Super>KP_Prior", "", "disabled", "<Hyper>a", "0x71", "<Super>d"}, {{Shortcut::command, "D"}}},
        {{"<Shift><Super><Control><Alt>Left"}, {{all, "←"}}},
        {{"XF86Launch1", "Above_Tab", "F5"}, {{0, "F5"}}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(otherKeys(row.accelerators, shortcuts), row.wanted) << testing::PrintToString(row.accelerators);
    }
}

RC_GTEST_PROP(Accelerator, AnyTextIsReadOrRefused, (const std::string& text)) {
    for (const auto& read : {readAccelerator(text), readOpenboxKey(text)}) {
        RC_ASSERT(!read || !read->key.empty());
    }
}

} // namespace
} // namespace platform::linux
