#include "ClientProcess.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/X11/WindowTree.h"
#include "TestClient.h"
#include "XServer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace platform::x11 {
namespace {

using Windows = std::vector<xcb_window_t>;

class X11WindowTree : public testing::Test {
protected:
    void setState(xcb_window_t window, std::uint32_t state) {
        testClient.setWords(window, "WM_STATE", "WM_STATE", {state, 0});
    }

    void putInto(xcb_window_t parent, xcb_window_t window) {
        xcb_reparent_window(testClient.connection().raw(), window, parent, 0, 0);
        testClient.finish();
    }

    [[nodiscard]] Windows withState(const Windows& former = {}) {
        connection.deadline().begin();
        return readWindowsWithState(connection, former).value_or(Windows{});
    }

    XServer server;
    linux::MainLoop loop;
    Connection connection{*Connection::open(server.display(), loop.turnDeadline())};
    TestClient testClient{server.display()};
    ClientProcess client{server.display()};
};

TEST_F(X11WindowTree, WindowsWithAStateAreManagedUnlessTheyAreWithdrawn) {
    constexpr std::uint32_t withdrawnState = 0;
    constexpr std::uint32_t normal = 1;
    constexpr std::uint32_t iconic = 3;
    const xcb_window_t shown = client.makeWindow();
    const xcb_window_t minimized = client.makeWindow();
    const xcb_window_t gone = client.makeWindow();
    const xcb_window_t never = client.makeWindow();
    setState(shown, normal);
    setState(minimized, iconic);
    setState(gone, withdrawnState);
    Windows managed = withState();
    std::ranges::sort(managed);
    EXPECT_EQ(managed, (Windows{shown, minimized}));
    connection.deadline().begin();
    EXPECT_TRUE(hasState(connection, shown));
    EXPECT_FALSE(hasState(connection, gone));
    EXPECT_FALSE(hasState(connection, never));
}

TEST_F(X11WindowTree, FramesInFramesAreSearched) {
    const xcb_window_t window = client.makeWindow();
    setState(window, 1);
    xcb_window_t outermost = window;
    for (int frames = 1; frames <= 4; ++frames) {
        const xcb_window_t frame = client.makeWindow();
        putInto(frame, outermost);
        outermost = frame;
        EXPECT_EQ(withState(), Windows{window}) << frames << " frames";
        connection.deadline().begin();
        EXPECT_EQ(readFrame(connection, window), frame);
    }
    connection.deadline().begin();
    EXPECT_EQ(readFrame(connection, outermost), xcb_window_t{XCB_WINDOW_NONE});
}

TEST_F(X11WindowTree, ARestackedWindowKeepsItsPlaceInTheList) {
    const xcb_window_t first = client.makeWindow();
    const xcb_window_t second = client.makeWindow();
    const xcb_window_t third = client.makeWindow();
    for (const xcb_window_t window : {first, second, third}) {
        setState(window, 1);
    }
    EXPECT_EQ(withState({second, third, first}), (Windows{second, third, first}));
    EXPECT_EQ(withState({third, first}), (Windows{third, first, second})) << "a new one comes last";
    EXPECT_EQ(withState({third, 0x123, second, first}), (Windows{third, second, first})) << "one is gone";
}

TEST_F(X11WindowTree, UnmanagedWindowsAreThoseThatAreShownWithoutAWindowManager) {
    const xcb_window_t bar = client.makeWindow();
    const xcb_window_t menu = client.makeWindow();
    const xcb_window_t ordinary = client.makeWindow();
    xcb_connection_t* raw = testClient.connection().raw();
    const std::uint32_t isUnmanaged = 1;
    xcb_change_window_attributes(raw, bar, XCB_CW_OVERRIDE_REDIRECT, &isUnmanaged);
    xcb_change_window_attributes(raw, menu, XCB_CW_OVERRIDE_REDIRECT, &isUnmanaged);
    xcb_map_window(raw, bar);
    xcb_map_window(raw, ordinary);
    testClient.finish();
    connection.deadline().begin();
    EXPECT_EQ(readShownUnmanagedWindows(connection), Windows{bar});
}

} // namespace
} // namespace platform::x11
