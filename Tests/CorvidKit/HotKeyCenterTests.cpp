#include "CorvidKit/HotKeys.h"
#include "CorvidKitCore/Shortcut.h"
#include "Platform/Simulated/Desktop.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace corvid {
namespace {

using Lines = std::vector<std::string>;
using Table = std::map<char, Shortcut>;
using platform::simulated::HotKeyEvents;

constexpr std::uint32_t modifiers = Shortcut::control | Shortcut::option;
constexpr Shortcut left{.keyCode = 123, .modifiers = modifiers};
constexpr Shortcut right{.keyCode = 124, .modifiers = modifiers};
constexpr Shortcut up{.keyCode = 126, .modifiers = modifiers};

const Table three{{'l', left}, {'r', right}, {'u', up}};

class Center : public testing::Test {
protected:
    std::optional<platform::OSStatus> press(const Shortcut& shortcut) {
        return events.press(shortcut.keyCode, shortcut.modifiers);
    }

    std::vector<std::uint32_t> registeredIds() const {
        std::vector<std::uint32_t> ids;
        for (const HotKeyEvents::Registered& hotKey : events.registered()) {
            ids.push_back(hotKey.name.id);
        }
        return ids;
    }

    platform::simulated::Desktop desktop;
    HotKeyEvents& events = desktop.hotKeyEvents;
    HotKeyDispatcher dispatcher;
    HotKeyCenter<char> center{dispatcher};
    std::string pressed;
};

/// An action without an order: HotKeyCenter must not need one.
struct HashedAction {
    std::string name;

    friend bool operator==(const HashedAction&, const HashedAction&) = default;
};

} // namespace
} // namespace corvid

template <>
struct std::hash<corvid::HashedAction> {
    std::size_t operator()(const corvid::HashedAction& action) const noexcept {
        return std::hash<std::string>{}(action.name);
    }
};

namespace corvid {
namespace {

TEST_F(Center, TakesActionsThatCanOnlyBeHashed) {
    HotKeyCenter<HashedAction> hashed(dispatcher);
    hashed.onPress = [&](const HashedAction& action) { pressed += action.name; };
    events.refuse(right.keyCode, right.modifiers);
    const std::unordered_map<HashedAction, Shortcut> table{{{"left"}, left}, {{"right"}, right}};
    hashed.registerShortcuts(table);
    EXPECT_EQ(press(left), platform::noErr);
    EXPECT_EQ(pressed, "left");
    EXPECT_EQ(hashed.failed(), (std::unordered_set<HashedAction>{{"right"}}));
    hashed.unregister();
    EXPECT_TRUE(events.registered().empty());
}

TEST_F(Center, BeginsWithNothing) {
    EXPECT_FALSE(center.isRegistered());
    EXPECT_TRUE(center.failed().empty());
    center.onPress('x');
    EXPECT_EQ(desktop.trace.take(), Lines{});
}

TEST_F(Center, CallsItsPressHandlerWithTheActionOfThePressedKey) {
    center.onPress = [&](char action) { pressed += action; };
    center.registerShortcuts(three);
    EXPECT_TRUE(center.isRegistered());
    EXPECT_EQ(press(up), platform::noErr);
    EXPECT_EQ(press(left), platform::noErr);
    EXPECT_EQ(pressed, "ul");
}

TEST_F(Center, CallsThePressHandlerThatItHasAtTheTime) {
    center.registerShortcuts(three);
    EXPECT_EQ(press(left), platform::noErr);
    center.onPress = [&](char action) { pressed += action; };
    EXPECT_EQ(press(left), platform::noErr);
    EXPECT_EQ(pressed, "l");
}

TEST_F(Center, AnEmptyTableRemovesAllThatWasRegistered) {
    events.refuse(right.keyCode, right.modifiers);
    center.registerShortcuts(three);
    center.registerShortcuts({});
    EXPECT_FALSE(center.isRegistered());
    EXPECT_TRUE(center.failed().empty());
    EXPECT_TRUE(events.registered().empty());
}

TEST_F(Center, LeavesShortcutsThatAreNotValidOutAndDoesNotCallThemFailed) {
    center.registerShortcuts({{'l', left}, {'s', {.keyCode = 1, .modifiers = Shortcut::shift}}, {'n', Shortcut::none}});
    EXPECT_EQ(registeredIds(), (std::vector<std::uint32_t>{1}));
    EXPECT_TRUE(center.failed().empty());
    EXPECT_TRUE(center.isRegistered());
}

TEST_F(Center, WithNothingButInvalidShortcutsIsNotRegistered) {
    center.registerShortcuts({{'s', {.keyCode = 1, .modifiers = Shortcut::shift}}});
    EXPECT_FALSE(center.isRegistered());
    EXPECT_TRUE(center.failed().empty());
}

TEST_F(Center, RemembersWhatWasRefusedAndRegistersTheRest) {
    events.refuse(right.keyCode, right.modifiers);
    center.registerShortcuts(three);
    EXPECT_EQ(center.failed(), (std::unordered_set{'r'}));
    EXPECT_TRUE(center.isRegistered());
    EXPECT_EQ(registeredIds(), (std::vector<std::uint32_t>{1, 3}));
}

TEST_F(Center, WithEverythingRefusedIsNotRegistered) {
    for (const Shortcut& shortcut : {left, right, up}) {
        events.refuse(shortcut.keyCode, shortcut.modifiers);
    }
    center.registerShortcuts(three);
    EXPECT_EQ(center.failed(), (std::unordered_set{'l', 'r', 'u'}));
    EXPECT_FALSE(center.isRegistered());
}

TEST_F(Center, IdsKeepIncreasingAlsoAfterFailures) {
    events.refuse(right.keyCode, right.modifiers);
    center.registerShortcuts(three);
    EXPECT_EQ(registeredIds(), (std::vector<std::uint32_t>{1, 3}));
    events.release(right.keyCode, right.modifiers);
    center.registerShortcuts(three);
    EXPECT_EQ(registeredIds(), (std::vector<std::uint32_t>{4, 5, 6}));
    EXPECT_TRUE(center.failed().empty());
}

TEST_F(Center, RegisteringAgainStartsFromNothing) {
    center.registerShortcuts({{'l', left}, {'r', right}});
    desktop.trace.clear();
    center.registerShortcuts({{'u', left}});
    EXPECT_EQ(desktop.trace.take(),
              (Lines{"unregister hot key CWky 1", "unregister hot key CWky 2", "register hot key 123 6144 as CWky 3"}));
}

TEST_F(Center, UnregisteringRemovesEverythingAndForgetsTheFailures) {
    events.refuse(right.keyCode, right.modifiers);
    center.registerShortcuts(three);
    center.unregister();
    EXPECT_FALSE(center.isRegistered());
    EXPECT_TRUE(center.failed().empty());
    EXPECT_TRUE(events.registered().empty());
}

TEST_F(Center, UnregisteringLeavesTheHotKeysOfOtherCentersAlone) {
    HotKeyCenter<char> other(dispatcher);
    center.registerShortcuts({{'l', left}});
    other.registerShortcuts({{'r', right}});
    center.unregister();
    EXPECT_EQ(registeredIds(), (std::vector<std::uint32_t>{2}));
    other.unregister();
}

TEST_F(Center, ThePressHandlerMayRegisterItsOwnCenterAnewDuringAPress) {
    center.onPress = [&](char action) {
        pressed += action;
        center.registerShortcuts(three);
    };
    center.registerShortcuts(three);
    EXPECT_EQ(press(left), platform::noErr);
    EXPECT_EQ(registeredIds(), (std::vector<std::uint32_t>{4, 5, 6}));
    EXPECT_EQ(press(left), platform::noErr);
    EXPECT_EQ(pressed, "ll");
    EXPECT_EQ(registeredIds(), (std::vector<std::uint32_t>{7, 8, 9}));
}

TEST_F(Center, ThePressHandlerMayReplaceItselfDuringAPress) {
    center.onPress = [&, text = std::string("a text too long to be kept in place")](char) {
        center.onPress = [](char) {};
        pressed += text;
    };
    center.registerShortcuts(three);
    EXPECT_EQ(press(left), platform::noErr);
    EXPECT_EQ(pressed, "a text too long to be kept in place");
}

TEST_F(Center, DroppedKeepsItsHotKeysButTheirPressesDoNothing) {
    std::optional<HotKeyCenter<char>> dropped(std::in_place, dispatcher);
    dropped->onPress = [&](char action) { pressed += action; };
    dropped->registerShortcuts(three);
    dropped.reset();
    EXPECT_EQ(events.registered().size(), 3U);
    EXPECT_EQ(press(left), platform::noErr);
    EXPECT_EQ(pressed, "");
}

TEST_F(Center, MayBeDroppedByItsOwnPressHandler) {
    std::optional<HotKeyCenter<char>> dropped(std::in_place, dispatcher);
    dropped->onPress = [&, text = std::string("a text too long to be kept in place")](char) {
        dropped.reset();
        pressed += text;
    };
    dropped->registerShortcuts(three);
    EXPECT_EQ(press(left), platform::noErr);
    EXPECT_EQ(press(left), platform::noErr);
    EXPECT_EQ(pressed, "a text too long to be kept in place");
}

} // namespace
} // namespace corvid
