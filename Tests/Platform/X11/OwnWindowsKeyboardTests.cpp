#include "FollowedDesktop.h"
#include "Openbox.h"
#include "OwnWindowsFixture.h"
#include "Platform/X11/Fence.h"
#include "Platform/X11/WindowManager.h"

#include <gtest/gtest.h>

namespace platform::x11 {
namespace {

TEST_F(OwnWindowsTest, AWindowThatIsShownGetsTheKeyboardAtOnce) {
    const xcb_window_t editor = makeShownWindow();
    const xcb_window_t window = makeShownWindow();
    focus(editor);
    takeKeyboard(window);
    EXPECT_EQ(focused(), window);
}

TEST_F(OwnWindowsTest, AWindowThatIsAboutToBeShownGetsTheKeyboardThen) {
    const xcb_window_t editor = makeShownWindow();
    const xcb_window_t window = makeWindow();
    focus(editor);
    takeKeyboard(window);
    handleAll();
    EXPECT_EQ(focused(), editor);
    show(window);
    EXPECT_TRUE(handleUntil([&] { return focused() == window; }));
    EXPECT_TRUE(mainActor.waiting().empty());
}

TEST_F(OwnWindowsTest, AWindowInAFrameGetsTheKeyboardWhenItsFrameIsShown) {
    const xcb_window_t editor = makeShownWindow();
    const xcb_window_t frame = makeWindow();
    const xcb_window_t window = makeWindow();
    focus(editor);
    takeKeyboard(window);
    xcb_reparent_window(raw(), window, frame, 0, 0);
    show(window);
    handleAll();
    EXPECT_EQ(focused(), editor);
    show(frame);
    EXPECT_TRUE(handleUntil([&] { return focused() == window; }));
}

TEST_F(OwnWindowsTest, AWindowOfARealWindowManagerGetsTheKeyboard) {
    if (!Openbox::isInstalled()) {
        GTEST_SKIP() << "openbox is not installed";
    }
    const Openbox openbox("--sm-disable");
    ASSERT_TRUE(handleUntil([&] {
        beginTurn();
        return readWindowManager(connection).isPresent;
    }));
    // It announces itself before it listens.
    Fence fence(connection);
    ASSERT_TRUE(handleUntil([&] {
        beginTurn();
        return fence.wait();
    }));
    const xcb_window_t window = toolkit.makeWindow();
    takeKeyboard(window);
    show(window);
    EXPECT_TRUE(handleUntil([&] { return focused() == window; }));
}

TEST_F(OwnWindowsTest, AWindowThatIsShownTooLateDoesNotGetTheKeyboard) {
    const xcb_window_t editor = makeShownWindow();
    const xcb_window_t window = makeWindow();
    focus(editor);
    takeKeyboard(window);
    mainActor.advance(OwnWindows::patience);
    handleAll();
    show(window);
    handleAll();
    EXPECT_EQ(focused(), editor);
}

TEST_F(OwnWindowsTest, OnlyTheLastOfSeveralGetsTheKeyboard) {
    const xcb_window_t first = makeWindow();
    const xcb_window_t second = makeWindow();
    takeKeyboard(first);
    takeKeyboard(second);
    show(second);
    show(first);
    EXPECT_TRUE(handleUntil([&] { return focused() == second; }));
    handleAll();
    EXPECT_EQ(focused(), second);
}

TEST_F(OwnWindowsTest, AWindowThatIsGoneIsLeftAlone) {
    const xcb_window_t editor = makeShownWindow();
    const xcb_window_t gone = makeShownWindow();
    const xcb_window_t vanishing = makeWindow();
    focus(editor);
    testClient.destroy(gone);
    windows.place(gone, "", {1, 2});
    takeKeyboard(gone);
    takeKeyboard(vanishing);
    handleAll();
    testClient.destroy(vanishing);
    ASSERT_TRUE(handleUntil([&] { return mainActor.waiting().empty(); }));
    EXPECT_EQ(focused(), editor);
}

TEST_F(OwnWindowsTest, AHiddenWindowGivesTheKeyboardBack) {
    const xcb_window_t editor = makeShownWindow();
    focus(editor);
    for (const bool isDestroyed : {false, true}) {
        const xcb_window_t window = makeShownWindow();
        takeKeyboard(window);
        takeKeyboard(window);
        ASSERT_EQ(focused(), window);
        isDestroyed ? testClient.destroy(window) : hide(window);
        EXPECT_TRUE(handleUntil([&] { return focused() == editor; })) << isDestroyed;
    }
}

TEST_F(OwnWindowsTest, AWindowThatTheUserHasFocusedMeanwhileKeepsTheKeyboard) {
    const xcb_window_t editor = makeShownWindow();
    const xcb_window_t browser = makeShownWindow();
    const xcb_window_t window = makeShownWindow();
    focus(editor);
    takeKeyboard(window);
    awaitTick();
    focus(browser);
    hide(window);
    handleAll();
    EXPECT_EQ(focused(), browser);
}

TEST_F(OwnWindowsTest, AWindowTakesTheKeyboardAgainFromWhoHasItThen) {
    const xcb_window_t editor = makeShownWindow();
    const xcb_window_t browser = makeShownWindow();
    const xcb_window_t window = makeShownWindow();
    focus(editor);
    takeKeyboard(window);
    focus(browser);
    takeKeyboard(window);
    ASSERT_EQ(focused(), window);
    hide(window);
    EXPECT_TRUE(handleUntil([&] { return focused() == browser; }));
}

TEST_F(OwnWindowsTest, WindowsThatTakeItFromEachOtherGiveItBackInAnyOrder) {
    for (const bool isLastFirst : {true, false}) {
        const xcb_window_t editor = makeShownWindow();
        const xcb_window_t popover = makeShownWindow();
        const xcb_window_t dialog = makeShownWindow();
        focus(editor);
        takeKeyboard(popover);
        takeKeyboard(dialog);
        hide(isLastFirst ? dialog : popover);
        const xcb_window_t left = isLastFirst ? popover : dialog;
        EXPECT_TRUE(handleUntil([&] { return focused() == left; })) << isLastFirst;
        handleAll();
        hide(left);
        EXPECT_TRUE(handleUntil([&] { return focused() == editor; })) << isLastFirst;
    }
}

TEST_F(OwnWindowsTest, OtherSubscriptionsToAWindowKeepWorking) {
    const xcb_window_t window = makeShownWindow();
    selection.select(window, XCB_EVENT_MASK_PROPERTY_CHANGE);
    takeKeyboard(window);
    selection.select(window, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_FOCUS_CHANGE);
    handleAll();
    const auto mask = [&] {
        beginTurn();
        const auto reply =
            connection.reply<xcb_get_window_attributes_reply_t>(xcb_get_window_attributes(connection.raw(), window));
        return reply ? reply->your_event_mask : 0;
    };
    EXPECT_EQ(mask(), XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    hide(window);
    EXPECT_TRUE(handleUntil([&] { return mask() == (XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_FOCUS_CHANGE); }));
}

TEST(OwnWindowsOfTheDesktop, GetTheKeyboardWhenTheyAreShown) {
    FollowedDesktop followed;
    followed.start();
    const ClientProcess toolkit(followed.server.display());
    const xcb_window_t window = toolkit.makeWindow();
    followed.desktop->ownWindows().takeKeyboard(window);
    Connection& testClient = followed.testClient.connection();
    xcb_map_window(testClient.raw(), window);
    testClient.flush();
    EXPECT_TRUE(followed.runUntil([&] {
        testClient.deadline().begin();
        const auto focus = testClient.reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(testClient.raw()));
        return focus && focus->focus == window;
    }));
}

} // namespace
} // namespace platform::x11
