#include "FollowedDesktop.h"
#include "Platform/Linux/KeyPositions.h"
#include "SlowDisplay.h"
#include "Tests/Platform/Linux/HotKeyLosses.h"
#include "TrayOwner.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>

namespace platform::x11 {
namespace {

using std::chrono::milliseconds;

constexpr std::uint32_t leftArrow = 123;
constexpr std::uint32_t controlAndOption = 0x1000 | 0x800;

/// What a person presses for the same.
xcb_key_press_event_t pressOf(Hand& hand) {
    hand.connection().beginTurn();
    static_cast<void>(prepareKeyboard(hand.connection()));
    const auto map = readKeyboardMap(hand.connection()).value();
    xcb_key_press_event_t press{};
    press.response_type = XCB_KEY_PRESS;
    press.detail = map.keyCode(linux::xkbKeyName(leftArrow).value()).value();
    press.root = press.event = hand.connection().root();
    press.same_screen = 1;
    press.state = coreModifiers(map, controlAndOption);
    return press;
}

/// The windows on the root that are not this client's.
std::vector<xcb_window_t> windowsOfOthers(Connection& connection) {
    connection.beginTurn();
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
    HotKeys& keys = followed.desktop->hotKeyEvents();
    keys.installHandler(
        [](EventHandlerCall* /*next*/, const HotKeyEvent* /*event*/, void* count) {
            ++*static_cast<int*>(count);
            return noErr;
        },
        &presses);
    ASSERT_EQ(keys.registerHotKey(leftArrow, controlAndOption, {}).status, noErr);
    const xcb_key_press_event_t press = pressOf(followed.hand);
    const std::vector<xcb_window_t> windows = windowsOfOthers(followed.hand.connection());
    ASSERT_FALSE(windows.empty());
    for (const xcb_window_t window : windows) {
        // Without a mask an event goes to whoever has made the window (X11 protocol, SendEvent).
        xcb_send_event(followed.hand.connection().raw(), 0, window, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&press));
    }
    followed.hand.connection().flush();
    followed.settle();
    EXPECT_EQ(presses, 0);
}

TEST(X11Desktop, WithoutRandrTheScreenIsTheRootWindow) {
    FollowedDesktop followed({"RANDR"});
    followed.start();
    followed.settle();
    const auto screens = followed.desktop->screens().screens();
    ASSERT_EQ(screens.size(), 1U);
    EXPECT_EQ(screens[0].frame, (corvid::CGRect{{0, 0}, {1280, 800}}));
}

TEST(X11Desktop, WithoutXResourceAWindowsOwnerIsTheOneThatItNames) {
    FollowedDesktop followed({"X-Resource"});
    followed.start();
    const ClientProcess editor{followed.server.display()};
    const xcb_window_t window = followed.makeWindow(editor, "Editor");
    followed.hand.setWords(window, "_NET_WM_PID", "CARDINAL", {static_cast<std::uint32_t>(editor.process())});
    followed.managed.push_back(window);
    followed.list();
    ASSERT_TRUE(followed.runUntil([&] { return !followed.told.empty(); }));
    EXPECT_EQ(followed.told, std::vector<std::string>{"launch editor"});
    EXPECT_EQ(followed.toldApplications.front()->processIdentifier(), editor.process());
}

/// A desktop whose server takes that long for each answer.
class SlowX11Desktop : public testing::Test {
protected:
    void start(milliseconds delay) {
        slow.setDelay(delay);
        ::setenv("DISPLAY", slow.display().c_str(), 1);
        followed.start();
    }

    [[nodiscard]] OSStatus registerKey(HotKeys& keys) {
        return keys.registerHotKey(leftArrow, controlAndOption, {}).status;
    }

    FollowedDesktop followed;
    SlowDisplay slow{followed.server.remoteDisplay(), {}};
};

TEST_F(SlowX11Desktop, StartsHoweverManyAnswersItTakes) {
    const TrayOwner panel(followed.server.display());
    // Three of them are more than a turn of the loop has.
    start(milliseconds(100));
    linux::HotKeyLosses losses(followed.desktop->hotKeyEvents());
    EXPECT_TRUE(followed.desktop->trayPlace()->isOffered());
    EXPECT_EQ(registerKey(followed.desktop->hotKeyEvents()), noErr);
    EXPECT_FALSE(losses.take());
}

TEST_F(SlowX11Desktop, StartsAfterAStall) {
    start(milliseconds(400));
    EXPECT_EQ(registerKey(followed.desktop->hotKeyEvents()), noErr);
}

TEST_F(SlowX11Desktop, AKeyboardThatComesTooLateIsAskedForAgain) {
    auto connection = Connection::open(slow.display());
    ASSERT_TRUE(connection);
    ASSERT_TRUE(prepareKeyboard(*connection));
    HotKeys keys(*connection);
    linux::HotKeyLosses losses(keys);
    slow.setDelay(milliseconds(350));
    connection->beginTurn();
    EXPECT_NE(registerKey(keys), noErr);
    EXPECT_TRUE(losses.take()) << "whoever registers keys is not told to do so once more";
    slow.setDelay({});
    connection->beginTurn();
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
    ASSERT_TRUE(followed.runUntil([&] { return followed.longestTurn() >= turnBudget; }));
    EXPECT_FALSE(followed.desktop->trayPlace()->isOffered());
    slow.setDelay({});
    EXPECT_TRUE(followed.runUntil([&] { return followed.desktop->trayPlace()->isOffered(); }));
}

} // namespace
} // namespace platform::x11
