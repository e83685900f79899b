#include "OwnWindowsFixture.h"

namespace platform::x11 {
namespace {

TEST_F(OwnWindowsTest, AShownWindowGetsTheKeyboardAfterATurnThatLeftNoTimeToAsk) {
    const xcb_window_t editor = makeShownWindow();
    const xcb_window_t window = makeShownWindow();
    focus(editor);
    turn.begin();
    while (!connection.isExhausted()) {
        // The time for loading a toolkit.
    }
    windows.takeKeyboard(window);
    EXPECT_TRUE(windows.hasKeyboard(window)) << "it is about to get it";
    turn.begin();
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
    turn.begin();
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
    turn.begin();
    windows.takeKeyboard(window);
    for (int time = 0; time < 3; ++time) {
        hide(window);
        show(window);
        turn.begin();
        windows.takeKeyboard(window);
        handleAll();
        EXPECT_EQ(focused(), window);
    }
    hide(window);
    EXPECT_TRUE(handleUntil([&] { return focused() == editor; })) << "its owner was forgotten";
}

} // namespace
} // namespace platform::x11
