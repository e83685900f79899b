#include "OwnWindowsFixture.h"

namespace platform::x11 {
namespace {

TEST_F(OwnWindowsTest, AShownWindowGetsTheKeyboardAfterATurnThatLeftNoTimeToAsk) {
    const xcb_window_t editor = makeShownWindow();
    const xcb_window_t window = makeShownWindow();
    focus(editor);
    beginTurn();
    const Instant end = connection.deadline().end();
    while (connection.deadline().now() < end) {
        // As long as it takes to load a toolkit.
    }
    windows.takeKeyboard(window);
    EXPECT_TRUE(windows.hasKeyboard(window)) << "it is about to get it";
    beginTurn();
    mainActor.advance(std::chrono::milliseconds(1));
    // A request on another connection, which the server may handle first.
    awaitServer();
    EXPECT_EQ(focused(), window);
    EXPECT_TRUE(mainActor.waiting().empty());
}

TEST_F(OwnWindowsTest, TheFocusIsTheServersOwn) {
    const xcb_window_t editor = makeShownWindow();
    const xcb_window_t window = makeShownWindow();
    focus(editor);
    beginTurn();
    EXPECT_FALSE(windows.hasKeyboard(window));
    windows.takeKeyboard(window);
    EXPECT_TRUE(windows.hasKeyboard(window));
    focus(editor);
    EXPECT_FALSE(windows.hasKeyboard(window));
}

TEST_F(OwnWindowsTest, AWindowThatIsShownAgainBeforeItsUnmapEventKeepsTheKeyboard) {
    const xcb_window_t editor = makeShownWindow();
    const xcb_window_t window = makeShownWindow();
    focus(editor);
    beginTurn();
    windows.takeKeyboard(window);
    for (int time = 0; time < 3; ++time) {
        hide(window);
        show(window);
        beginTurn();
        windows.takeKeyboard(window);
        handleAll();
        EXPECT_EQ(focused(), window);
    }
    hide(window);
    EXPECT_TRUE(handleUntil([&] { return focused() == editor; })) << "its owner was forgotten";
}

} // namespace
} // namespace platform::x11
