#include "CorvidKitCore/Keys.h"
#include "FollowedDesktop.h"
#include "SlowDisplay.h"
#include "Tests/Platform/Linux/HotKeys/HotKeyLosses.h"
#include "Tests/Platform/Linux/Stopwatch.h"
#include "TrayOwner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <optional>

namespace platform::x11 {
namespace {

using std::chrono::milliseconds;

constexpr std::uint32_t leftArrow = 123;
constexpr std::uint32_t controlAndOption = 0x1000 | 0x800;

/// The keys that a person presses for the same.
xcb_key_press_event_t pressOf(TestClient& testClient) {
    testClient.connection().deadline().begin();
    static_cast<void>(prepareKeyboard(testClient.connection()));
    const auto map = readKeyboardMap(testClient.connection()).value();
    xcb_key_press_event_t press{};
    press.response_type = XCB_KEY_PRESS;
    press.detail = map.keyCode(corvid::keyOf(leftArrow)->xkbName).value();
    press.root = press.event = testClient.connection().root();
    press.same_screen = 1;
    press.state = coreModifiers(map, controlAndOption);
    return press;
}

/// The windows on the root that are not this client's.
std::vector<xcb_window_t> windowsOfOthers(Connection& connection) {
    connection.deadline().begin();
    const auto tree = connection.reply<xcb_query_tree_reply_t>(xcb_query_tree(connection.raw(), connection.root()));
    const xcb_setup_t& setup = *xcb_get_setup(connection.raw());
    std::vector<xcb_window_t> windows;
    for (int index = 0; index < xcb_query_tree_children_length(tree.get()); ++index) {
        const xcb_window_t window = xcb_query_tree_children(tree.get())[index];
        if ((window & ~setup.resource_id_mask) != setup.resource_id_base) {
            windows.push_back(window);
        }
    }
    return windows;
}

TEST(X11Desktop, AKeyPressThatAnotherClientMakesUpIsNone) {
    FollowedDesktop followed;
    followed.start();
    int presses = 0;
    HotKeyEvents& keys = followed.desktop->parts().hotKeyEvents;
    keys.installHandler(
        [](EventHandlerCall* /*next*/, const HotKeyEvent* /*event*/, void* count) {
            ++*static_cast<int*>(count);
            return noErr;
        },
        &presses);
    ASSERT_EQ(keys.registerHotKey(leftArrow, controlAndOption, {}).status, noErr);
    const xcb_key_press_event_t press = pressOf(followed.testClient);
    const std::vector<xcb_window_t> windows = windowsOfOthers(followed.testClient.connection());
    ASSERT_FALSE(windows.empty());
    for (const xcb_window_t window : windows) {
        // Without a mask the server sends an event to the client that created the window (X11 protocol, SendEvent).
        xcb_send_event(followed.testClient.connection().raw(), 0, window, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&press));
    }
    followed.testClient.connection().flush();
    followed.settle();
    EXPECT_EQ(presses, 0);
}

TEST(X11Desktop, WithoutRandrTheScreenIsTheRootWindow) {
    FollowedDesktop followed({"RANDR"});
    followed.start();
    followed.settle();
    const auto screens = followed.desktop->parts().screens.screens();
    ASSERT_EQ(screens.size(), 1U);
    EXPECT_EQ(screens[0].frame, (corvid::CGRect{{0, 0}, {1280, 800}}));
}

TEST(X11Desktop, WithoutXResourceAWindowsOwnerIsTheOneThatItNames) {
    FollowedDesktop followed({"X-Resource"});
    followed.start();
    const ClientProcess editor{followed.server.display()};
    const xcb_window_t window = followed.makeWindow(editor, "Editor");
    followed.testClient.setWords(window, "_NET_WM_PID", "CARDINAL", {static_cast<std::uint32_t>(editor.process())});
    followed.managed.push_back(window);
    followed.list();
    ASSERT_TRUE(followed.runUntil([&] { return !followed.reported.empty(); }));
    EXPECT_EQ(followed.reported, std::vector<std::string>{"launch editor"});
    EXPECT_EQ(followed.reportedApplications.front()->processIdentifier(), editor.process());
}

TEST(X11Desktop, AllThatOneTurnWaitsForEndsAtOneDeadline) {
    FollowedDesktop followed;
    followed.start();
    followed.drain();
    // Two reasons to ask the server come at once, the second of them at the end of the turn.
    const ClientProcess editor{followed.server.display()};
    followed.openWindow(editor, "Editor");
    TrayOwner panel(followed.server.display());
    EXPECT_TRUE(panel.asked().empty());
    xcb_grab_server(followed.testClient.connection().raw());
    followed.testClient.finish();
    // The loop serves its sources in turn: this is how long any other source waits.
    std::chrono::nanoseconds longest{};
    linux::Stopwatch sinceLast;
    std::function<void()> again = [&] {
        longest = std::max(longest, sinceLast.elapsed());
        sinceLast.start();
        followed.mainLoop.post([&] { again(); });
    };
    again();
    ASSERT_TRUE(followed.runUntil([&] { return longest >= linux::TurnDeadline::turnLimit / 2; }));
    EXPECT_LT(longest, FollowedDesktop::longestAllowedTurn);
    xcb_ungrab_server(followed.testClient.connection().raw());
    followed.testClient.finish();
    EXPECT_TRUE(followed.runUntil([&] { return !followed.reported.empty(); })) << "what was put off is never read";
    EXPECT_EQ(followed.reported, std::vector<std::string>{"launch editor"});
}

/// A desktop whose server takes that long for each answer.
class SlowX11Desktop : public testing::Test {
protected:
    void start(milliseconds delay) {
        slow.setDelay(delay);
        ::setenv("DISPLAY", slow.display().c_str(), 1);
        followed.start();
    }

    [[nodiscard]] OSStatus registerKey(HotKeyEvents& keys) {
        return keys.registerHotKey(leftArrow, controlAndOption, {}).status;
    }

    FollowedDesktop followed;
    linux::MainLoop clock;
    SlowDisplay slow{followed.server.remoteDisplay(), {}};
};

TEST_F(SlowX11Desktop, StartsHoweverManyAnswersItTakes) {
    const TrayOwner panel(followed.server.display());
    // Three of them exceed the time of a turn of the loop.
    start(milliseconds(100));
    linux::HotKeyLosses losses(followed.desktop->parts().hotKeyEvents);
    EXPECT_TRUE(followed.desktop->trayPlace()->isOffered());
    EXPECT_EQ(registerKey(followed.desktop->parts().hotKeyEvents), noErr);
    EXPECT_FALSE(losses.take());
}

TEST_F(SlowX11Desktop, StartsAfterAStall) {
    start(milliseconds(400));
    EXPECT_EQ(registerKey(followed.desktop->parts().hotKeyEvents), noErr);
}

TEST_F(SlowX11Desktop, AKeyboardThatComesTooLateIsAskedForAgain) {
    auto connection = Connection::open(slow.display(), clock.turnDeadline());
    ASSERT_TRUE(connection);
    ASSERT_TRUE(prepareKeyboard(*connection));
    HotKeys keys(*connection);
    linux::HotKeyLosses losses(keys);
    slow.setDelay(milliseconds(350));
    connection->deadline().begin();
    EXPECT_NE(registerKey(keys), noErr);
    EXPECT_TRUE(losses.take()) << "the keys are not registered again";
    slow.setDelay({});
    connection->deadline().begin();
    EXPECT_EQ(registerKey(keys), noErr);
    EXPECT_FALSE(losses.take());
}

TEST_F(SlowX11Desktop, APanelThatDoesNotAnswerInTimeIsAskedForAgain) {
    start({});
    followed.drain();
    followed.forgetLongestTurn();
    slow.setDelay(milliseconds(400));
    const TrayOwner panel(followed.server.display());
    // It has waited in vain.
    ASSERT_TRUE(followed.runUntil([&] { return followed.longestTurn() >= linux::TurnDeadline::turnLimit; }));
    EXPECT_FALSE(followed.desktop->trayPlace()->isOffered());
    slow.setDelay({});
    EXPECT_TRUE(followed.runUntil([&] { return followed.desktop->trayPlace()->isOffered(); }));
}

} // namespace
} // namespace platform::x11
