#include "FollowedDesktop.h"
#include "Platform/X11/Element.h"
#include "PlayedWindowManager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <optional>
#include <ostream>
#include <string>
#include <tuple>
#include <vector>

namespace platform::x11 {
namespace {

using corvid::CGPoint;
using corvid::CGRect;
using corvid::CGSize;
using std::chrono::milliseconds;
using Manners = PlayedWindowManager::Manners;
using Reference = PlayedWindowManager::Reference;

constexpr std::uint32_t hasGravity = 1U << 9U;

/// A desktop whose window manager announces nothing.
class SilentWindowManagerTest : public testing::Test {
protected:
    void begin(const Manners& manners = {}) { manager.emplace(followed.server.display(), manners); }

    /// The program's next window, shown. Waits until the window manager has finished with it.
    xcb_window_t show(const std::string& className, std::uint32_t gravity = XCB_GRAVITY_NORTH_WEST) {
        const xcb_window_t window = followed.makeWindow(client, className);
        std::vector<std::uint32_t> hints(18);
        hints.front() = hasGravity;
        hints.back() = gravity;
        followed.testClient.setWords(window, "WM_NORMAL_HINTS", "WM_SIZE_HINTS", hints);
        xcb_map_window(followed.testClient.connection().raw(), window);
        followed.testClient.finish();
        EXPECT_TRUE(followed.runUntil([&] { return hasFocus(window); }));
        followed.drain();
        return window;
    }

    [[nodiscard]] bool hasFocus(xcb_window_t window) {
        Connection& connection = followed.testClient.connection();
        connection.deadline().begin();
        const auto focus = connection.reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(connection.raw()));
        return focus && focus->focus == window;
    }

    [[nodiscard]] platform::Accessibility& accessibility() { return followed.desktop->parts().accessibility; }

    [[nodiscard]] std::optional<CGRect> frame(xcb_window_t window) {
        const auto position = accessibility().copyAttributeValue(linux::windowElement(window), AXAttribute::position);
        const auto size = accessibility().copyAttributeValue(linux::windowElement(window), AXAttribute::size);
        if (!position || !size) {
            return std::nullopt;
        }
        return CGRect{std::get<CGPoint>(*position), std::get<CGSize>(*size)};
    }

    /// The outer rectangle of the root's child that contains the window, as the server tells it.
    [[nodiscard]] CGRect seen(xcb_window_t window) {
        Connection& connection = followed.testClient.connection();
        connection.deadline().begin();
        for (;;) {
            const auto tree = connection.reply<xcb_query_tree_reply_t>(xcb_query_tree(connection.raw(), window));
            if (tree->parent == connection.root()) {
                break;
            }
            window = tree->parent;
        }
        const auto outer = connection.reply<xcb_get_geometry_reply_t>(xcb_get_geometry(connection.raw(), window));
        const double borders = 2.0 * outer->border_width;
        return {{static_cast<double>(outer->x), static_cast<double>(outer->y)},
                {outer->width + borders, outer->height + borders}};
    }

    void write(xcb_window_t window, const CGRect& wanted) {
        const AXUIElement element = linux::windowElement(window);
        accessibility().setAttributeValue(element, AXAttribute::size, wanted.size);
        accessibility().setAttributeValue(element, AXAttribute::position, wanted.origin);
        accessibility().setAttributeValue(element, AXAttribute::size, wanted.size);
    }

    /// Runs a function in a turn of the event loop, as a key press would.
    template <typename Function>
    void inATurn(Function work) {
        bool isDone = false;
        followed.mainLoop.post([&] {
            work();
            isDone = true;
        });
        ASSERT_TRUE(followed.runUntil([&] { return isDone; }));
    }

    /// The frame that a window reports after it was written. On a busy machine a turn's time may pass before the
    /// answer, and then the program does the same again.
    [[nodiscard]] std::optional<CGRect> placed(xcb_window_t window, const CGRect& wanted) {
        std::optional<CGRect> reported;
        for (int tries = 0; !reported && tries < 5; ++tries) {
            inATurn([&] {
                write(window, wanted);
                reported = frame(window);
            });
        }
        return reported;
    }

    FollowedDesktop followed;
    ClientProcess client{followed.server.display()};
    std::optional<PlayedWindowManager> manager;
};

TEST_F(SilentWindowManagerTest, IsThereFromTheBeginning) {
    begin();
    followed.start();
    EXPECT_TRUE(accessibility().isProcessTrusted());
}

TEST_F(SilentWindowManagerTest, IsNoticedWhenAWindowComesAndWhenItEnds) {
    followed.start();
    followed.drain();
    EXPECT_FALSE(accessibility().isProcessTrusted());
    followed.drain();
    begin();
    show("Editor");
    EXPECT_TRUE(accessibility().isProcessTrusted());
    manager->end();
    EXPECT_TRUE(followed.runUntil([&] { return !accessibility().isProcessTrusted(); }));
}

TEST_F(SilentWindowManagerTest, IsNoticedWithoutWindowsAfterTheNextQuestion) {
    followed.start();
    followed.drain();
    begin();
    EXPECT_FALSE(accessibility().isProcessTrusted());
    followed.drain();
    EXPECT_TRUE(accessibility().isProcessTrusted());
    manager->end();
    EXPECT_TRUE(followed.runUntil([&] { return !accessibility().isProcessTrusted(); }));
}

TEST_F(SilentWindowManagerTest, TheEndOfTheSelectionsOwnerIsSeenWithoutAQuestion) {
    begin({.ownsSelection = true});
    followed.start();
    followed.drain();
    ASSERT_TRUE(accessibility().isProcessTrusted());
    int notices = 0;
    static_cast<void>(accessibility().notificationCenter()->addObserver(AccessNotification::didChange,
                                                                        [&](const Notification&) { ++notices; }));
    manager->end();
    ASSERT_TRUE(followed.runUntil([&] { return notices > 0; }));
    EXPECT_FALSE(accessibility().isProcessTrusted());
}

TEST_F(SilentWindowManagerTest, WhatADeadWindowManagerAnnouncedDoesNotCount) {
    begin();
    const xcb_window_t stranger = client.makeWindow();
    TestClient& testClient = followed.testClient;
    const xcb_window_t root = testClient.connection().root();
    testClient.setWords(root, "_NET_SUPPORTED", "ATOM",
                        {testClient.atom("_NET_ACTIVE_WINDOW"), testClient.atom("_NET_CLIENT_LIST"),
                         testClient.atom("_NET_MOVERESIZE_WINDOW"), testClient.atom("_NET_FRAME_EXTENTS")});
    testClient.setWords(root, "_NET_SUPPORTING_WM_CHECK", "WINDOW", {stranger});
    testClient.setWords(root, "_NET_ACTIVE_WINDOW", "WINDOW", {stranger});
    testClient.setWords(root, "_NET_WORKAREA", "CARDINAL", {0, 0, 500, 400});
    testClient.list({stranger});
    followed.start();
    const xcb_window_t window = show("Editor");
    EXPECT_EQ(followed.desktop->parts().workspace.frontmostApplication(), client.process());
    inATurn([&] { write(window, {{30, 40}, {500, 400}}); });
    EXPECT_TRUE(followed.runUntil([&] { return seen(window) == CGRect{{30, 40}, {500, 400}}; }));
    inATurn([&] { EXPECT_GT(followed.desktop->parts().screens.screens().front().visibleFrame.size.width, 500); });
}

TEST_F(SilentWindowManagerTest, ANewWindowIsALaunchAndItsEndIsOne) {
    begin();
    followed.start();
    show("Editor");
    ASSERT_TRUE(followed.runUntil([&] { return followed.reported.size() == 1; }));
    client.end();
    ASSERT_TRUE(followed.runUntil([&] { return followed.reported.size() == 2; }));
    EXPECT_EQ(followed.reported, (std::vector<std::string>{"launch editor", "terminate editor"}));
}

TEST_F(SilentWindowManagerTest, AWindowThatIsThereAtTheStartIsNoLaunch) {
    begin();
    const xcb_window_t window = followed.makeWindow(client, "Editor");
    xcb_map_window(followed.testClient.connection().raw(), window);
    followed.testClient.finish();
    ASSERT_TRUE(followed.runUntil([&] { return hasFocus(window); }));
    followed.start();
    show("Editor");
    EXPECT_EQ(followed.reported, std::vector<std::string>{});
}

TEST_F(SilentWindowManagerTest, TheActiveWindowHasTheKeyboardWhicheverWindowAroundOrInsideItHasTheFocus) {
    begin({.frames = 2});
    followed.start();
    ClientProcess other(followed.server.display());
    const xcb_window_t window = show("Editor");
    Connection& connection = followed.testClient.connection();
    const auto focus = [&](xcb_window_t focused) {
        xcb_set_input_focus(connection.raw(), XCB_INPUT_FOCUS_POINTER_ROOT, focused, XCB_CURRENT_TIME);
        followed.testClient.finish();
        std::optional<ProcessIdentifier> front;
        inATurn([&] { front = followed.desktop->parts().workspace.frontmostApplication(); });
        return front;
    };
    connection.deadline().begin();
    const auto tree = connection.reply<xcb_query_tree_reply_t>(xcb_query_tree(connection.raw(), window));
    EXPECT_EQ(focus(tree->parent), client.process()) << "the inner frame";
    const xcb_window_t inside = xcb_generate_id(connection.raw());
    xcb_create_window(connection.raw(), XCB_COPY_FROM_PARENT, inside, window, 0, 0, 5, 5, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_map_window(connection.raw(), inside);
    EXPECT_EQ(focus(inside), client.process()) << "a window inside";
    EXPECT_EQ(focus(XCB_WINDOW_NONE), std::nullopt);

    // Where the focus follows the pointer.
    xcb_warp_pointer(connection.raw(), XCB_WINDOW_NONE, window, 0, 0, 0, 0, 3, 3);
    EXPECT_EQ(focus(XCB_INPUT_FOCUS_POINTER_ROOT), client.process());
    xcb_warp_pointer(connection.raw(), XCB_WINDOW_NONE, connection.root(), 0, 0, 0, 0, 1, 1);
    EXPECT_EQ(focus(XCB_INPUT_FOCUS_POINTER_ROOT), std::nullopt);
}

TEST_F(SilentWindowManagerTest, AWindowThatStaysWhereItIsCostsNoMoreThanATurn) {
    begin({.refuses = true});
    followed.start();
    const xcb_window_t window = show("Editor");
    const CGRect before = seen(window);
    followed.forgetLongestTurn();
    inATurn([&] {
        write(window, {{30, 40}, {500, 400}});
        static_cast<void>(frame(window));
    });
    EXPECT_LT(followed.longestTurn(), FollowedDesktop::longestAllowedTurn);
    EXPECT_EQ(placed(window, {{30, 40}, {500, 400}}), before);
}

TEST_F(SilentWindowManagerTest, AWindowThatStaysWhereItIsIsAskedOnceInATurnAndTheStatusSaysWhy) {
    begin({.refuses = true});
    followed.start();
    const xcb_window_t window = show("Editor");
    const auto writesPosition = [&] {
        return accessibility().setAttributeValue(linux::windowElement(window), AXAttribute::position, CGPoint{5, 5});
    };
    EXPECT_EQ(followed.desktop->caution(), "");
    for (int press = 0; press < 2; ++press) {
        // On a busy machine a turn's time may pass before the answer.
        bool isAnswered = false;
        AXError answer = AXError::success;
        for (int tries = 0; !isAnswered && tries < 5; ++tries) {
            inATurn([&] {
                write(window, {{30, 40}, {500, 400}});
                isAnswered = frame(window).has_value();
                answer = writesPosition();
            });
        }
        EXPECT_TRUE(isAnswered);
        EXPECT_EQ(answer, AXError::cannotComplete) << "nothing else is asked in this turn";
        EXPECT_THAT(followed.desktop->caution(), testing::HasSubstr("is laid out by its window manager"));
    }
    inATurn([&] { EXPECT_EQ(writesPosition(), AXError::success) << "it may float by now"; });
    followed.testClient.destroy(window);
    followed.drain();
    EXPECT_EQ(followed.desktop->caution(), "");
}

TEST_F(SilentWindowManagerTest, AWindowThatIsPlacedIsNotCalledLaidOut) {
    begin();
    followed.start();
    const xcb_window_t window = show("Editor");
    for (const CGRect wanted : {CGRect{{30, 40}, {500, 400}}, CGRect{{30, 40}, {500, 400}}}) {
        inATurn([&] {
            write(window, wanted);
            EXPECT_EQ(frame(window), wanted);
        });
        EXPECT_EQ(followed.desktop->caution(), "");
    }
}

TEST_F(SilentWindowManagerTest, AWindowThatIsMovedBeforeItIsResizedIsAwaited) {
    begin({.pause = milliseconds(20), .movesAtOnce = true});
    followed.start();
    const xcb_window_t window = show("Editor");
    for (const CGRect wanted : {CGRect{{30, 40}, {500, 400}}, CGRect{{0, 0}, {640, 480}}}) {
        EXPECT_EQ(placed(window, wanted), wanted);
        EXPECT_EQ(seen(window), wanted);
    }
}

TEST_F(SilentWindowManagerTest, AWindowManagerThatRemovesBordersIsWaitedFor) {
    begin({.reference = Reference::client, .removesBorders = true});
    followed.start();
    const xcb_window_t window = show("Editor");
    for (const CGRect wanted : {CGRect{{30, 40}, {500, 400}}, CGRect{{0, 0}, {640, 480}}}) {
        EXPECT_EQ(placed(window, wanted), wanted);
        EXPECT_EQ(seen(window), wanted);
    }
}

TEST_F(SilentWindowManagerTest, AFrameThatIsKeptAtTheEdgeOfTheScreenStillGetsThere) {
    begin({.reference = Reference::client, .keepsCorner = true});
    followed.start();
    const xcb_window_t window = show("Editor");
    EXPECT_EQ(placed(window, {{0, 0}, {640, 480}}), (CGRect{{0, 0}, {640, 480}}));
    EXPECT_EQ(seen(window), (CGRect{{0, 0}, {640, 480}}));
}

TEST_F(SilentWindowManagerTest, ItsOwnBarKeepsItsSpaceAndABarOfAnotherProgramDoesNot) {
    begin({.bar = 30});
    followed.start();
    show("Editor");
    TestClient& stranger = followed.testClient;
    const xcb_window_t banner = client.makeWindow();
    const std::uint32_t isUnmanaged = 1;
    xcb_change_window_attributes(stranger.connection().raw(), banner, XCB_CW_OVERRIDE_REDIRECT, &isUnmanaged);
    const std::array<std::uint32_t, 4> place{0, 0, 8192, 60};
    xcb_configure_window(stranger.connection().raw(), banner,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                         place.data());
    xcb_map_window(stranger.connection().raw(), banner);
    stranger.finish();
    inATurn([&] {
        const auto screen = followed.desktop->parts().screens.screens().front();
        EXPECT_EQ(screen.visibleFrame.size.height, screen.frame.size.height - 30);
    });
}

using Variety = std::tuple<Reference, int, int, std::uint32_t>;

/// Every convention for positions, with and without frames, at once and late.
class ConfiguredWindowTest : public SilentWindowManagerTest, public testing::WithParamInterface<Variety> {};

TEST_P(ConfiguredWindowTest, StandsWhereItIsPutToThePixel) {
    const auto [reference, frames, pause, gravity] = GetParam();
    begin({.reference = reference, .frames = frames, .pause = milliseconds(pause)});
    followed.start();
    const xcb_window_t window = show("Editor", gravity);
    EXPECT_EQ(frame(window), seen(window)) << "with what is around it";
    for (const CGRect wanted :
         {CGRect{{0, 0}, {640, 480}}, CGRect{{311, 173}, {500, 401}}, CGRect{{0, 0}, {640, 480}}}) {
        EXPECT_EQ(placed(window, wanted), wanted);
        EXPECT_EQ(seen(window), wanted);
    }
    // No caller reads it, and there is no reading afterwards.
    inATurn([&] { write(window, {{20, 30}, {400, 300}}); });
    EXPECT_TRUE(followed.runUntil([&] { return seen(window) == CGRect{{20, 30}, {400, 300}}; }));
}

INSTANTIATE_TEST_SUITE_P(Conventions, ConfiguredWindowTest,
                         testing::Combine(testing::Values(Reference::frame, Reference::frameWithoutBorder,
                                                          Reference::client, Reference::gravity),
                                          testing::Values(0, 1, 2), testing::Values(0, 20),
                                          testing::Values(std::uint32_t{XCB_GRAVITY_NORTH_WEST},
                                                          std::uint32_t{XCB_GRAVITY_STATIC})));

} // namespace
} // namespace platform::x11
