#include "OwnWindowsFixture.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>
#include <vector>

namespace platform::x11 {
namespace {

using corvid::CGPoint;

TEST_F(OwnWindowsTest, ThePointerIsInTheScreenSpace) {
    const std::vector<std::pair<CGPoint, CGPoint>> cases{
        {{0, 0}, {0, 800}}, {{1279, 799}, {1279, 1}}, {{300, 200}, {300, 600}}};
    for (const auto& [root, screen] : cases) {
        movePointer(static_cast<std::int16_t>(root.x), static_cast<std::int16_t>(root.y));
        beginTurn();
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
    windows.place(window, "", {300.4, 199.6});
    handleAll();
    EXPECT_EQ(origin(window), (CGPoint{300, 200}));
}

TEST_F(OwnWindowsTest, AWindowIsPlacedFromThePrimaryScreensCorner) {
    splitScreen();
    const xcb_window_t window = makeWindow();
    windows.place(window, "", {-40, -150});
    handleAll();
    EXPECT_EQ(origin(window), (CGPoint{600, 50}));
}

TEST_F(OwnWindowsTest, TransparencyNeedsACompositor) {
    EXPECT_FALSE(windows.areBlended());
    const xcb_window_t compositor = toolkit.makeWindow();
    const xcb_atom_t name = testClient.atom("_NET_WM_CM_S0");
    xcb_set_selection_owner(raw(), compositor, name, XCB_CURRENT_TIME);
    finish();
    EXPECT_TRUE(windows.areBlended());
    testClient.destroy(compositor);
    EXPECT_FALSE(windows.areBlended());
}

} // namespace
} // namespace platform::x11
