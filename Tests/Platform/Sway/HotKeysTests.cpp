#include "Tests/Platform/Sway/HotKeysFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace platform::sway {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

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

TEST_F(SwayHotKeys, AKeyThatTheUserHasBoundIsRefused) {
    open("set $mod Mod1\nbindsym Control+$mod+Left workspace prev\n");
    EXPECT_EQ(add(leftKey, 1).status, eventHotKeyExistsErr);
    EXPECT_THAT(desktop.sway.takeCommands(), Not(Contains(StartsWith("bind"))));
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

TEST_F(SwayHotKeys, ABindingThatSwayRefusesIsInvalid) {
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
    EXPECT_FALSE(losses->take());
}

TEST_F(SwayHotKeys, OneThatTheUserBindsIsLostAndReportedOnce) {
    open();
    const auto lost = add(leftKey, 1);
    add(cKey, 2);
    static_cast<void>(desktop.sway.takeCommands());
    desktop.sway.setConfiguration("bindcode Ctrl+Mod1+113 nop\n");
    reload();
    std::vector<std::string> commands;
    ASSERT_TRUE(desktop.runUntil([&] { return !(commands = desktop.sway.takeCommands()).empty(); }));
    EXPECT_THAT(commands, ElementsAre("bindcode --no-warn --no-repeat Ctrl+Mod1+54 nop tessel 2"));
    EXPECT_TRUE(losses->take());
    EXPECT_FALSE(losses->take());
    // The user has the key now and keeps it.
    keys->unregisterHotKey(*lost.reference);
    EXPECT_THAT(desktop.sway.takeCommands(), IsEmpty());
}

TEST_F(SwayHotKeys, OneThatTheUserFreesIsReportedOnce) {
    open("bindsym Ctrl+Mod1+Left nop\n");
    EXPECT_EQ(add(leftKey, 1).status, eventHotKeyExistsErr);
    EXPECT_FALSE(losses->take());
    desktop.sway.setConfiguration("");
    reload();
    ASSERT_TRUE(desktop.runUntil([&] { return losses->take(); }));
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
    EXPECT_TRUE(losses->take());
}

TEST_F(SwayHotKeys, MalformedEventsPressNothing) {
    open();
    add(leftKey, 1);
    for (const char* text : {R"({"change":"run"})", R"({"change":"run","binding":17})",
                             R"({"change":"run","binding":{"command":["nop tessel 1"]}})",
                             R"({"change":"run","binding":{"command":"nop tessel 99999999999999999999999"}})",
                             R"({"change":["run"],"binding":{"command":"nop tessel 1"}})", R"("run")", "null"}) {
        desktop.sway.send(bindingEvent, text);
    }
    press("nop tessel 1");
    ASSERT_TRUE(desktop.runUntil([&] { return !pressed.empty(); }));
    EXPECT_THAT(pressed, ElementsAre(1U));
}

} // namespace
} // namespace platform::sway
