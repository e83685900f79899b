#include "Tests/Platform/Sway/OpenDoor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace platform::sway {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t workspaceEvent = 0x80000000;
constexpr std::uint32_t bindingEvent = 0x80000005;
constexpr std::uint32_t controlOption = 0x1000 | 0x800;
constexpr std::uint32_t leftKey = 123;
constexpr std::uint32_t cKey = 8;
constexpr std::uint32_t signature = 0x43576b79;

class SwayHotKeys : public testing::Test {
protected:
    void open(const std::string& configuration = "") {
        desktop.sway.setConfiguration(configuration);
        keys = std::make_unique<HotKeys>(desktop.session,
                                         [](const auto&, const auto&) { return std::vector<ConfigurationFile>(); });
        keys->installHandler(
            [](EventHandlerCall*, const HotKeyEvent* event, void* data) {
                static_cast<std::vector<std::uint32_t>*>(data)->push_back(event->directObject()->id);
                return noErr;
            },
            &pressed);
        desktop.session.start();
        ASSERT_TRUE(desktop.session.isOpen());
    }

    HotKeyEvents::Registration add(std::uint32_t keyCode, std::uint32_t id) {
        return keys->registerHotKey(keyCode, controlOption, {.signature = signature, .id = id});
    }

    void press(const std::string& command) {
        desktop.sway.tell(bindingEvent, R"({"change":"run","binding":{"command":")" + command +
                                            R"(","event_state_mask":["Control","Mod1"],"input_code":113}})");
    }

    void reload() { desktop.sway.tell(workspaceEvent, R"({"change":"reload","current":null})"); }

    OpenDoor desktop;
    std::unique_ptr<HotKeys> keys;
    std::vector<std::uint32_t> pressed;
};

TEST_F(SwayHotKeys, AreBoundByTheNumbersOfKeysAndTakenBackByThem) {
    open();
    const auto registration = add(leftKey, 1);
    EXPECT_EQ(registration.status, noErr);
    ASSERT_TRUE(registration.reference.has_value());
    EXPECT_THAT(desktop.sway.takeCommands(), ElementsAre("bindcode --no-warn --no-repeat Ctrl+Mod1+113 nop tessel 1"));
    keys->unregisterHotKey(*registration.reference);
    keys->unregisterHotKey(*registration.reference);
    EXPECT_THAT(desktop.sway.takeCommands(), ElementsAre("unbindcode Ctrl+Mod1+113"));
}

TEST_F(SwayHotKeys, AreTakenBackAtTheEnd) {
    open();
    add(leftKey, 1);
    add(cKey, 2);
    static_cast<void>(desktop.sway.takeCommands());
    keys.reset();
    EXPECT_THAT(desktop.sway.takeCommands(), ElementsAre("unbindcode Ctrl+Mod1+113", "unbindcode Ctrl+Mod1+54"));
}

TEST_F(SwayHotKeys, ArePressedOnceForEachEventOfTheirs) {
    open();
    add(leftKey, 1);
    add(cKey, 2);
    press("nop tessel 2");
    press("nop tessel 1");
    press("nop tessel 3");
    press("nop tessel 1x");
    press("nop of the user");
    press("nop tessel 2");
    ASSERT_TRUE(desktop.runUntil([&] { return pressed.size() == 3; }));
    EXPECT_THAT(pressed, ElementsAre(2U, 1U, 2U));
}

TEST_F(SwayHotKeys, WhatTheUserHasBoundIsRefused) {
    open("set $mod Mod1\nbindsym Control+$mod+Left workspace prev\n");
    EXPECT_EQ(add(leftKey, 1).status, eventHotKeyExistsErr);
    EXPECT_THAT(desktop.sway.takeCommands(), IsEmpty());
    EXPECT_EQ(add(cKey, 2).status, noErr);
}

TEST_F(SwayHotKeys, TheSameCombinationIsNotBoundTwice) {
    open();
    EXPECT_EQ(add(leftKey, 1).status, noErr);
    EXPECT_EQ(add(leftKey, 2).status, eventHotKeyExistsErr);
}

TEST_F(SwayHotKeys, AKeyThatNoKeyboardHasIsInvalid) {
    open();
    EXPECT_EQ(add(200, 1).status, eventHotKeyInvalidErr);
}

TEST_F(SwayHotKeys, WhatSwayRefusesIsInvalid) {
    open();
    desktop.sway.refuse("bindcode");
    EXPECT_EQ(add(leftKey, 1).status, eventHotKeyInvalidErr);
}

TEST_F(SwayHotKeys, AreBoundInTheDefaultModeWhateverModeIsEntered) {
    open();
    desktop.sway.setMode("resize");
    add(leftKey, 1);
    EXPECT_THAT(desktop.sway.takeCommands(),
                ElementsAre("mode \"default\"; bindcode --no-warn --no-repeat Ctrl+Mod1+113 nop tessel 1; "
                            "mode \"resize\""));
}

TEST_F(SwayHotKeys, AreBoundAnewAfterTheConfigurationWasReadAgain) {
    open();
    add(leftKey, 1);
    add(cKey, 2);
    static_cast<void>(desktop.sway.takeCommands());
    reload();
    std::vector<std::string> commands;
    ASSERT_TRUE(desktop.runUntil([&] {
        const auto more = desktop.sway.takeCommands();
        commands.insert(commands.end(), more.begin(), more.end());
        return commands.size() == 2;
    }));
    EXPECT_THAT(commands, ElementsAre("bindcode --no-warn --no-repeat Ctrl+Mod1+113 nop tessel 1",
                                      "bindcode --no-warn --no-repeat Ctrl+Mod1+54 nop tessel 2"));
    EXPECT_FALSE(keys->takeChange());
}

TEST_F(SwayHotKeys, OneThatTheUserBindsIsLostAndToldOnce) {
    open();
    const auto lost = add(leftKey, 1);
    add(cKey, 2);
    static_cast<void>(desktop.sway.takeCommands());
    desktop.sway.setConfiguration("bindcode Ctrl+Mod1+113 nop\n");
    reload();
    std::vector<std::string> commands;
    ASSERT_TRUE(desktop.runUntil([&] { return !(commands = desktop.sway.takeCommands()).empty(); }));
    EXPECT_THAT(commands, ElementsAre("bindcode --no-warn --no-repeat Ctrl+Mod1+54 nop tessel 2"));
    EXPECT_TRUE(keys->takeChange());
    EXPECT_FALSE(keys->takeChange());
    // What is the user's now is not taken from him.
    keys->unregisterHotKey(*lost.reference);
    EXPECT_THAT(desktop.sway.takeCommands(), IsEmpty());
}

TEST_F(SwayHotKeys, OneThatTheUserGivesBackIsToldOnce) {
    open("bindsym Ctrl+Mod1+Left nop\n");
    EXPECT_EQ(add(leftKey, 1).status, eventHotKeyExistsErr);
    EXPECT_FALSE(keys->takeChange());
    desktop.sway.setConfiguration("");
    reload();
    ASSERT_TRUE(desktop.runUntil([&] { return keys->takeChange(); }));
    EXPECT_EQ(add(leftKey, 1).status, noErr);
}

TEST_F(SwayHotKeys, AreBoundAnewByACompositorThatStartsAnew) {
    open();
    add(leftKey, 1);
    desktop.sway.stop();
    ASSERT_TRUE(desktop.runUntil([&] { return !desktop.session.isOpen(); }));
    static_cast<void>(desktop.sway.takeCommands());
    desktop.sway.start();
    std::vector<std::string> commands;
    ASSERT_TRUE(desktop.runUntil([&] { return !(commands = desktop.sway.takeCommands()).empty(); }));
    EXPECT_THAT(commands, ElementsAre("bindcode --no-warn --no-repeat Ctrl+Mod1+113 nop tessel 1"));
}

TEST_F(SwayHotKeys, WithoutAnAnswerNothingIsTakenForFree) {
    open();
    desktop.sway.behave(FakeSway::Manners::silent);
    EXPECT_EQ(add(leftKey, 1).status, eventHotKeyExistsErr);
    // It is to be tried again.
    EXPECT_TRUE(keys->takeChange());
}

TEST_F(SwayHotKeys, MalformedEventsPressNothing) {
    open();
    add(leftKey, 1);
    for (const char* text : {R"({"change":"run"})", R"({"change":"run","binding":17})",
                             R"({"change":"run","binding":{"command":["nop tessel 1"]}})",
                             R"({"change":"run","binding":{"command":"nop tessel 99999999999999999999999"}})",
                             R"({"change":["run"],"binding":{"command":"nop tessel 1"}})", R"("run")", "null"}) {
        desktop.sway.tell(bindingEvent, text);
    }
    press("nop tessel 1");
    ASSERT_TRUE(desktop.runUntil([&] { return !pressed.empty(); }));
    EXPECT_THAT(pressed, ElementsAre(1U));
}

} // namespace
} // namespace platform::sway
