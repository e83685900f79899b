#include "ClientProcess.h"
#include "FollowedDesktop.h"
#include "Hand.h"
#include "Openbox.h"
#include "Platform/Simulated/MainActor.h"
#include "Platform/X11/Fence.h"
#include "Platform/X11/OwnWindows.h"
#include "Platform/X11/WindowManager.h"
#include "XServer.h"

#include <gtest/gtest.h>
#include <xcb/randr.h>
#include <xcb/xcbext.h>

#include <poll.h>
#include <sys/uio.h>

#include <array>
#include <chrono>
#include <functional>
#include <optional>
#include <stdexcept>
#include <utility>

namespace platform::x11 {
namespace {

using corvid::CGPoint;

constexpr std::chrono::seconds patience{20};

Connection connect(const std::string& display) {
    auto opened = Connection::open(display);
    if (!opened) {
        throw std::runtime_error(opened.error());
    }
    return *std::move(opened);
}

/// A server, a toolkit with windows, and what is under test, with a clock turned by hand.
class OwnWindowsTest : public testing::Test {
protected:
    XServer server;
    Hand hand{server.display()};
    ClientProcess toolkit{server.display()};
    Connection connection = connect(server.display());
    EventSelection selection{connection};
    Turn turn{connection};
    simulated::MainActor mainActor;
    OwnWindows windows{connection, selection, turn, mainActor};

    /// A window that no window manager minds.
    xcb_window_t makeWindow() {
        const xcb_window_t window = toolkit.makeWindow();
        const std::uint32_t yes = 1;
        xcb_change_window_attributes(raw(), window, XCB_CW_OVERRIDE_REDIRECT, &yes);
        finish();
        return window;
    }

    xcb_window_t makeShownWindow() {
        const xcb_window_t window = makeWindow();
        show(window);
        return window;
    }

    void show(xcb_window_t window) {
        xcb_map_window(raw(), window);
        finish();
    }

    void hide(xcb_window_t window) {
        xcb_unmap_window(raw(), window);
        finish();
    }

    /// Gives it the focus as a window manager does.
    void focus(xcb_window_t window) {
        xcb_set_input_focus(raw(), XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
        finish();
    }

    /// Waits until the server's clock, which counts milliseconds, has gone on: people are not faster.
    void awaitTick() {
        ServerClock clock(connection);
        turn.begin();
        const xcb_timestamp_t begin = clock.now();
        while (clock.now() == begin) {
            turn.begin();
        }
    }

    xcb_window_t focused() {
        hand.connection().beginTurn();
        const auto reply = hand.connection().reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(raw()));
        return reply ? reply->focus : xcb_window_t{XCB_WINDOW_NONE};
    }

    CGPoint origin(xcb_window_t window) {
        hand.connection().beginTurn();
        const auto reply = hand.connection().reply<xcb_get_geometry_reply_t>(xcb_get_geometry(raw(), window));
        return reply ? CGPoint{static_cast<double>(reply->x), static_cast<double>(reply->y)} : CGPoint{-1, -1};
    }

    void movePointer(std::int16_t x, std::int16_t y) {
        xcb_warp_pointer(raw(), XCB_WINDOW_NONE, hand.connection().root(), 0, 0, 0, 0, x, y);
        finish();
    }

    /// Two monitors side by side, of which the right one is the primary one.
    void splitScreen() {
        for (const bool isPrimary : {false, true}) {
            xcb_randr_monitor_info_t monitor{.name = hand.atom(isPrimary ? "RIGHT" : "LEFT"),
                                             .primary = isPrimary,
                                             .automatic = 0,
                                             .nOutput = 0,
                                             .x = static_cast<std::int16_t>(isPrimary ? 640 : 0),
                                             .y = static_cast<std::int16_t>(isPrimary ? 200 : 0),
                                             .width = 640,
                                             .height = static_cast<std::uint16_t>(isPrimary ? 600 : 800),
                                             .width_in_millimeters = 160,
                                             .height_in_millimeters = 200};
            sendMonitor(monitor);
        }
        finish();
    }

    /// libxcb 1.15 counts the bytes of this request wrongly.
    void sendMonitor(xcb_randr_monitor_info_t monitor) {
        xcb_randr_set_monitor_request_t request{};
        request.window = hand.connection().root();
        // The library wants room for its own in front.
        std::array<iovec, 4> parts{};
        parts[2] = {.iov_base = &request, .iov_len = sizeof request};
        parts[3] = {.iov_base = &monitor, .iov_len = sizeof monitor};
        const xcb_protocol_request_t protocol{
            .count = 2, .ext = &xcb_randr_id, .opcode = XCB_RANDR_SET_MONITOR, .isvoid = 1};
        xcb_send_request(raw(), 0, &parts[2], &protocol);
    }

    /// Hands on what the server has told, until the condition holds; false if it does not within some seconds.
    [[nodiscard]] bool handleUntil(const std::function<bool()>& condition) {
        const auto end = std::chrono::steady_clock::now() + patience;
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end) {
                return false;
            }
            pollfd readable{.fd = connection.descriptor(), .events = POLLIN, .revents = 0};
            poll(&readable, 1, 10);
            handleAll();
        }
        return true;
    }

    /// Hands on all that the server has told so far.
    void handleAll() {
        turn.begin();
        static_cast<void>(connection.reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(connection.raw())));
        while (const auto event = connection.nextEvent()) {
            turn.begin();
            windows.handle(*event);
        }
        // What was asked for meanwhile has been done as well.
        turn.begin();
        static_cast<void>(connection.reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(connection.raw())));
    }

    xcb_connection_t* raw() { return hand.connection().raw(); }

    void finish() { static_cast<void>(focused()); }
};

TEST_F(OwnWindowsTest, ThePointerIsToldInTheScreenSpace) {
    const std::vector<std::pair<CGPoint, CGPoint>> cases{
        {{0, 0}, {0, 800}}, {{1279, 799}, {1279, 1}}, {{300, 200}, {300, 600}}};
    for (const auto& [root, screen] : cases) {
        movePointer(static_cast<std::int16_t>(root.x), static_cast<std::int16_t>(root.y));
        turn.begin();
        EXPECT_EQ(windows.pointer(), screen);
    }
}

TEST_F(OwnWindowsTest, ThePointerIsCountedFromThePrimaryScreen) {
    splitScreen();
    movePointer(100, 50);
    EXPECT_EQ(windows.pointer(), (CGPoint{-540, 750}));
}

TEST_F(OwnWindowsTest, AWindowIsPlacedByItsTopLeftCorner) {
    const xcb_window_t window = makeShownWindow();
    windows.place(window, {300.4, 199.6});
    handleAll();
    EXPECT_EQ(origin(window), (CGPoint{300, 200}));
}

TEST_F(OwnWindowsTest, AWindowIsPlacedFromThePrimaryScreensCorner) {
    splitScreen();
    const xcb_window_t window = makeWindow();
    windows.place(window, {-40, -150});
    handleAll();
    EXPECT_EQ(origin(window), (CGPoint{600, 50}));
}

TEST_F(OwnWindowsTest, AWindowThatIsShownGetsTheKeyboardAtOnce) {
    const xcb_window_t editor = makeShownWindow();
    const xcb_window_t window = makeShownWindow();
    focus(editor);
    windows.takeKeyboard(window);
    EXPECT_EQ(focused(), window);
}

TEST_F(OwnWindowsTest, AWindowThatIsAboutToBeShownGetsTheKeyboardThen) {
    const xcb_window_t editor = makeShownWindow();
    const xcb_window_t window = makeWindow();
    focus(editor);
    windows.takeKeyboard(window);
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
    windows.takeKeyboard(window);
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
        turn.begin();
        return readWindowManager(connection).supportsPlacement;
    }));
    // It announces itself before it listens.
    Fence fence(connection);
    ASSERT_TRUE(handleUntil([&] {
        turn.begin();
        return fence.wait();
    }));
    const xcb_window_t window = toolkit.makeWindow();
    windows.takeKeyboard(window);
    show(window);
    EXPECT_TRUE(handleUntil([&] { return focused() == window; }));
}

TEST_F(OwnWindowsTest, AWindowThatIsShownTooLateDoesNotGetTheKeyboard) {
    const xcb_window_t editor = makeShownWindow();
    const xcb_window_t window = makeWindow();
    focus(editor);
    windows.takeKeyboard(window);
    mainActor.advance(OwnWindows::patience);
    handleAll();
    show(window);
    handleAll();
    EXPECT_EQ(focused(), editor);
}

TEST_F(OwnWindowsTest, OnlyTheLastOfSeveralGetsTheKeyboard) {
    const xcb_window_t first = makeWindow();
    const xcb_window_t second = makeWindow();
    windows.takeKeyboard(first);
    windows.takeKeyboard(second);
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
    hand.destroy(gone);
    windows.place(gone, {1, 2});
    windows.takeKeyboard(gone);
    windows.takeKeyboard(vanishing);
    handleAll();
    hand.destroy(vanishing);
    ASSERT_TRUE(handleUntil([&] { return mainActor.waiting().empty(); }));
    EXPECT_EQ(focused(), editor);
}

TEST_F(OwnWindowsTest, AHiddenWindowGivesTheKeyboardBack) {
    const xcb_window_t editor = makeShownWindow();
    focus(editor);
    for (const bool isDestroyed : {false, true}) {
        const xcb_window_t window = makeShownWindow();
        windows.takeKeyboard(window);
        windows.takeKeyboard(window);
        ASSERT_EQ(focused(), window);
        isDestroyed ? hand.destroy(window) : hide(window);
        EXPECT_TRUE(handleUntil([&] { return focused() == editor; })) << isDestroyed;
    }
}

TEST_F(OwnWindowsTest, WhatTheUserHasFocusedMeanwhileKeepsTheKeyboard) {
    const xcb_window_t editor = makeShownWindow();
    const xcb_window_t browser = makeShownWindow();
    const xcb_window_t window = makeShownWindow();
    focus(editor);
    windows.takeKeyboard(window);
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
    windows.takeKeyboard(window);
    focus(browser);
    windows.takeKeyboard(window);
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
        windows.takeKeyboard(popover);
        windows.takeKeyboard(dialog);
        hide(isLastFirst ? dialog : popover);
        const xcb_window_t left = isLastFirst ? popover : dialog;
        EXPECT_TRUE(handleUntil([&] { return focused() == left; })) << isLastFirst;
        handleAll();
        hide(left);
        EXPECT_TRUE(handleUntil([&] { return focused() == editor; })) << isLastFirst;
    }
}

TEST_F(OwnWindowsTest, WhatOthersWantToKnowOfAWindowIsToldAsWell) {
    const xcb_window_t window = makeShownWindow();
    selection.select(window, XCB_EVENT_MASK_PROPERTY_CHANGE);
    windows.takeKeyboard(window);
    selection.select(window, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_FOCUS_CHANGE);
    handleAll();
    const auto mask = [&] {
        turn.begin();
        const auto reply =
            connection.reply<xcb_get_window_attributes_reply_t>(xcb_get_window_attributes(connection.raw(), window));
        return reply ? reply->your_event_mask : 0;
    };
    EXPECT_EQ(mask(), XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    hide(window);
    EXPECT_TRUE(handleUntil([&] { return mask() == (XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_FOCUS_CHANGE); }));
}

TEST_F(OwnWindowsTest, TransparencyNeedsACompositor) {
    EXPECT_FALSE(windows.areBlended());
    const xcb_window_t compositor = toolkit.makeWindow();
    const xcb_atom_t name = hand.atom("_NET_WM_CM_S0");
    xcb_set_selection_owner(raw(), compositor, name, XCB_CURRENT_TIME);
    finish();
    EXPECT_TRUE(windows.areBlended());
    hand.destroy(compositor);
    EXPECT_FALSE(windows.areBlended());
}

TEST(OwnWindowsOfTheDesktop, GetTheKeyboardWhenTheyAreShown) {
    FollowedDesktop followed;
    followed.start();
    const ClientProcess toolkit(followed.server.display());
    const xcb_window_t window = toolkit.makeWindow();
    followed.desktop->ownWindows().takeKeyboard(window);
    Connection& hand = followed.hand.connection();
    xcb_map_window(hand.raw(), window);
    hand.flush();
    EXPECT_TRUE(followed.runUntil([&] {
        hand.beginTurn();
        const auto focus = hand.reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(hand.raw()));
        return focus && focus->focus == window;
    }));
}

} // namespace
} // namespace platform::x11
