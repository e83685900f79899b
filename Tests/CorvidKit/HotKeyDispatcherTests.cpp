#include "CorvidKit/HotKeys.h"
#include "CorvidKitCore/Shortcut.h"
#include "Platform/Simulated/Desktop.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvid {
namespace {

using Lines = std::vector<std::string>;
using platform::simulated::HotKeyEvents;

constexpr std::uint32_t ourSignature = 0x43576B79;
constexpr std::uint32_t controlOption = Shortcut::control | Shortcut::option;
constexpr Shortcut leftArrow{.keyCode = 123, .modifiers = controlOption};
constexpr Shortcut rightArrow{.keyCode = 124, .modifiers = controlOption};

class Dispatcher : public testing::Test {
protected:
    std::optional<std::uint32_t> add(const Shortcut& shortcut) {
        return dispatcher.registerHotKey(shortcut, [this] { ++presses; });
    }

    platform::simulated::Desktop desktop;
    HotKeyEvents& events = desktop.hotKeyEvents;
    HotKeyDispatcher dispatcher;
    int presses = 0;
};

TEST_F(Dispatcher, InstallsItsHandlerOnceAndRegistersTheShortcutUnchanged) {
    EXPECT_EQ(add(leftArrow), 1U);
    EXPECT_EQ(add({.keyCode = 8, .modifiers = 0x123456}), 2U);
    EXPECT_EQ(desktop.trace.take(), (Lines{"install hot key handler", "register hot key 123 6144 as CWky 1",
                                           "register hot key 8 1193046 as CWky 2"}));
}

TEST_F(Dispatcher, TriesAgainToInstallItsHandlerAndRegistersAllTheSame) {
    events.installStatus = -50;
    EXPECT_EQ(add(leftArrow), 1U);
    EXPECT_EQ(events.press(leftArrow.keyCode, leftArrow.modifiers), std::nullopt);
    events.installStatus = platform::noErr;
    EXPECT_EQ(add(rightArrow), 2U);
    EXPECT_EQ(desktop.trace.take(), (Lines{"install hot key handler", "register hot key 123 6144 as CWky 1",
                                           "install hot key handler", "register hot key 124 6144 as CWky 2"}));
    EXPECT_EQ(events.press(leftArrow.keyCode, leftArrow.modifiers), platform::noErr);
    EXPECT_EQ(presses, 1);
}

TEST_F(Dispatcher, EveryStatusButZeroIsAFailureAndSoIsAMissingReference) {
    for (const platform::OSStatus status : {-9878, -9879, 1, -1, platform::noErr}) {
        events.refuse(leftArrow.keyCode, leftArrow.modifiers, status);
        EXPECT_EQ(add(leftArrow), std::nullopt) << status;
    }
}

TEST_F(Dispatcher, AFailureIsOneAlsoWhenItComesWithAReference) {
    events.refusesWithReference = true;
    for (const platform::OSStatus status : {-9878, -9879, 1, -1}) {
        events.refuse(leftArrow.keyCode, leftArrow.modifiers, status);
        EXPECT_EQ(add(leftArrow), std::nullopt) << status;
    }
}

TEST_F(Dispatcher, AFailureTakesAnIdThatIsNotGivenBack) {
    events.refuse(leftArrow.keyCode, leftArrow.modifiers);
    EXPECT_EQ(add(leftArrow), std::nullopt);
    EXPECT_EQ(add(rightArrow), 2U);
    dispatcher.unregister(2);
    EXPECT_EQ(add(rightArrow), 3U);
}

TEST_F(Dispatcher, ReleasesTheHandlerOfARefusedHotKey) {
    const auto held = std::make_shared<int>();
    events.refuse(leftArrow.keyCode, leftArrow.modifiers);
    EXPECT_EQ(dispatcher.registerHotKey(leftArrow, [held] {}), std::nullopt);
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(Dispatcher, APressRunsTheHandlerOfItsIdOnly) {
    Lines pressed;
    EXPECT_EQ(dispatcher.registerHotKey(leftArrow, [&] { pressed.emplace_back("left"); }), 1U);
    EXPECT_EQ(dispatcher.registerHotKey(rightArrow, [&] { pressed.emplace_back("right"); }), 2U);
    EXPECT_EQ(events.press(rightArrow.keyCode, rightArrow.modifiers), platform::noErr);
    EXPECT_EQ(pressed, (Lines{"right"}));
}

TEST_F(Dispatcher, UnregisteringGivesTheKeyBackAndReleasesTheHandler) {
    const auto held = std::make_shared<int>();
    const auto id = dispatcher.registerHotKey(leftArrow, [held] {});
    ASSERT_TRUE(id);
    dispatcher.unregister(*id);
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_TRUE(events.registered().empty());
    dispatcher.unregister(*id);
    dispatcher.unregister(77);
    EXPECT_EQ(desktop.trace.take("unregister"), Lines{"unregister hot key CWky 1"}) << "unknown ids are ignored";
}

TEST_F(Dispatcher, APressOfAnUnregisteredIdIsHandledAndRunsNothing) {
    EXPECT_EQ(add(leftArrow), 1U);
    dispatcher.unregister(1);
    EXPECT_EQ(events.deliver({.signature = ourSignature, .id = 1}), platform::noErr);
    EXPECT_EQ(events.deliver({.signature = ourSignature, .id = 5}), platform::noErr);
    EXPECT_EQ(presses, 0);
}

TEST_F(Dispatcher, EventsThatAreNotOursAreNotHandled) {
    EXPECT_EQ(add(leftArrow), 1U);
    EXPECT_EQ(events.deliverWithoutEvent(), -9874);
    EXPECT_EQ(events.deliverWithoutParameter(-9870), -9874);
    EXPECT_EQ(events.deliverWithoutParameter(-50), -9874);
    EXPECT_EQ(events.deliver({.signature = ourSignature + 1, .id = 1}), -9874);
    EXPECT_EQ(events.deliver({.signature = 0, .id = 1}), -9874);
    EXPECT_EQ(presses, 0);
    EXPECT_EQ(events.deliver({.signature = ourSignature, .id = 1}), platform::noErr);
    EXPECT_EQ(presses, 1);
}

TEST_F(Dispatcher, AHandlerMayUnregisterItselfWhileItRuns) {
    std::string seen;
    const auto id =
        dispatcher.registerHotKey(leftArrow, [&, text = std::string("a text too long to be kept in place")] {
            dispatcher.unregister(1);
            seen = text;
        });
    ASSERT_EQ(id, 1U);
    EXPECT_EQ(events.press(leftArrow.keyCode, leftArrow.modifiers), platform::noErr);
    EXPECT_EQ(seen, "a text too long to be kept in place");
    EXPECT_EQ(events.press(leftArrow.keyCode, leftArrow.modifiers), std::nullopt);
}

TEST_F(Dispatcher, AHandlerMayRegisterOthersWhileItRuns) {
    const auto id = dispatcher.registerHotKey(leftArrow, [&] {
        for (std::uint32_t key = 0; key < 50; ++key) {
            EXPECT_TRUE(add({.keyCode = key, .modifiers = controlOption}));
        }
    });
    ASSERT_EQ(id, 1U);
    EXPECT_EQ(events.press(leftArrow.keyCode, leftArrow.modifiers), platform::noErr);
    EXPECT_EQ(events.press(0, controlOption), platform::noErr);
    EXPECT_EQ(presses, 1);
}

TEST_F(Dispatcher, FindsItsWayWithoutAnyHelpOfThePlatform) {
    EXPECT_EQ(add(leftArrow), 1U);
    EXPECT_EQ(events.handlerData(), nullptr);
    EXPECT_EQ(events.press(leftArrow.keyCode, leftArrow.modifiers), platform::noErr);
    EXPECT_EQ(presses, 1);
}

TEST_F(Dispatcher, IsTheSharedOneForAsLongAsItLives) {
    EXPECT_EQ(&HotKeyDispatcher::shared(), &dispatcher);
    {
        const HotKeyDispatcher other;
        EXPECT_EQ(&HotKeyDispatcher::shared(), &other);
    }
    EXPECT_EQ(&HotKeyDispatcher::shared(), &dispatcher);
}

TEST(SharedDispatcher, IsOne) {
    HotKeyDispatcher& one = HotKeyDispatcher::shared();
    EXPECT_EQ(&HotKeyDispatcher::shared(), &one);
}

TEST(DispatcherDeathTest, RunningOutOfIdsStopsTheProcess) {
    platform::simulated::Desktop desktop;
    HotKeyDispatcher dispatcher(0xFFFFFFFE);
    EXPECT_EQ(dispatcher.registerHotKey(leftArrow, [] {}), 0xFFFFFFFE);
    EXPECT_DEATH((void)dispatcher.registerHotKey(rightArrow, [] {}),
                 "^CorvidKit/HotKeys:[0-9]+: Fatal error: Arithmetic overflow: no hot key ids are left\n$");
}

} // namespace
} // namespace corvid
