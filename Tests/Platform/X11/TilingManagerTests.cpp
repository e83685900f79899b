#include "FollowedDesktop.h"
#include "Platform/X11/Element.h"
#include "Platform/X11/TilingManager.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace platform::x11 {
namespace {

using corvid::CGPoint;
using corvid::CGRect;
using corvid::CGSize;

struct Placed {
    xcb_window_t window = XCB_WINDOW_NONE;
    CGRect frame;

    friend bool operator==(const Placed&, const Placed&) = default;
};

/// A window manager with the test's settings. Its windows have a border of 2 and a title bar of 18, and float where
/// they are put.
class PlayedManager final : public TilingManager {
public:
    struct State {
        bool isReachable = true;
        bool roundsSizesUp = true;
        bool isIndispensable = true;
        std::optional<Layout> layout = Layout{};
        std::vector<Placed> placed;
        int readings = 0;
    };

    PlayedManager(TestClient& testClient, State& state)
        : testClient(testClient)
        , state(state) {}

    [[nodiscard]] std::string_view name() const override { return "tiler"; }

    [[nodiscard]] bool roundsSizesUp() const override { return state.roundsSizesUp; }

    [[nodiscard]] bool isIndispensable() const override { return state.isIndispensable; }

    [[nodiscard]] bool isReachable(Connection& /*connection*/) override { return state.isReachable; }

    [[nodiscard]] std::optional<Layout> readLayout(Connection& /*connection*/) override {
        ++state.readings;
        return state.layout;
    }

    bool place(Connection& /*connection*/, xcb_window_t window, const CGRect& frame) override {
        state.placed.push_back({.window = window, .frame = frame});
        show(testClient, state, window, {.frame = frame, .drawn = frame, .isTiled = false});
        return true;
    }

    /// Puts the window there, with its client inside.
    static void show(TestClient& testClient, State& state, xcb_window_t window, const Layout::Window& shown) {
        const auto [x, y] = shown.drawn.value().origin;
        const auto [width, height] = shown.drawn.value().size;
        const auto word = [](double value) { return static_cast<std::uint32_t>(static_cast<std::int32_t>(value)); };
        const std::array<std::uint32_t, 4> values{word(x + 2), word(y + 18), word(width - 4), word(height - 20)};
        xcb_configure_window(testClient.connection().raw(), window,
                             XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                                 XCB_CONFIG_WINDOW_HEIGHT,
                             values.data());
        testClient.connection().flush();
        state.layout->windows.insert_or_assign(window, shown);
    }

private:
    TestClient& testClient;
    State& state;
};

class TilingManagerTest : public testing::Test {
protected:
    TilingManagerTest() {
        identify("tiler");
        followed.start(std::make_unique<PlayedManager>(followed.testClient, state));
        window = followed.openWindow(client, "Editor");
        EXPECT_TRUE(accessibility().isProcessTrusted());
    }

    /// Makes a window manager of that name the current one.
    void identify(const std::string& name) {
        TestClient& testClient = followed.testClient;
        const xcb_window_t root = testClient.connection().root();
        if (check == XCB_WINDOW_NONE) {
            check = manager.makeWindow();
        }
        testClient.setText(check, "_NET_WM_NAME", name);
        testClient.setWords(check, "_NET_SUPPORTING_WM_CHECK", "WINDOW", {check});
        testClient.setWords(root, "_NET_SUPPORTING_WM_CHECK", "WINDOW", {check});
        testClient.setWords(root, "_NET_SUPPORTED", "ATOM",
                            {testClient.atom("_NET_ACTIVE_WINDOW"), testClient.atom("_NET_CLIENT_LIST"),
                             testClient.atom("_NET_MOVERESIZE_WINDOW")});
    }

    void show(const CGRect& frame, bool isTiled) {
        PlayedManager::show(followed.testClient, state, window, {.frame = frame, .drawn = frame, .isTiled = isTiled});
        settle();
    }

    /// Begins another turn.
    void settle() { followed.drain(); }

    [[nodiscard]] platform::Accessibility& accessibility() { return followed.desktop->parts().accessibility; }

    [[nodiscard]] AXUIElement element() const { return linux::windowElement(window); }

    [[nodiscard]] std::expected<AXValue, AXError> read(std::string_view attribute) {
        return accessibility().copyAttributeValue(element(), attribute);
    }

    /// The window's frame; empty if it cannot be found out.
    [[nodiscard]] std::optional<CGRect> frame() {
        const auto position = read(AXAttribute::position);
        const auto size = read(AXAttribute::size);
        if (!position || !size) {
            return std::nullopt;
        }
        return CGRect{std::get<CGPoint>(*position), std::get<CGSize>(*size)};
    }

    /// The window has a base size of 4 by 4, and steps of 10 by 20.
    void countInSteps() {
        followed.testClient.setWords(window, "WM_NORMAL_HINTS", "WM_SIZE_HINTS",
                                     {(1U << 6U) | (1U << 8U), 0, 0, 0, 0, 0, 0, 0, 0, 10, 20, 0, 0, 0, 0, 4, 4, 0});
    }

    void write(const CGRect& wanted) {
        accessibility().setAttributeValue(element(), AXAttribute::size, wanted.size);
        accessibility().setAttributeValue(element(), AXAttribute::position, wanted.origin);
        accessibility().setAttributeValue(element(), AXAttribute::size, wanted.size);
    }

    FollowedDesktop followed;
    PlayedManager::State state;
    ClientProcess client{followed.server.display()};
    ClientProcess manager{followed.server.display()};
    xcb_window_t window = XCB_WINDOW_NONE;
    xcb_window_t check = XCB_WINDOW_NONE;
};

TEST_F(TilingManagerTest, TheDesktopHasItsName) {
    EXPECT_EQ(followed.desktop->name(), "tiler");
    identify("another");
    settle();
    EXPECT_TRUE(accessibility().isProcessTrusted());
    EXPECT_EQ(followed.desktop->name(), "X11");
}

TEST_F(TilingManagerTest, IsTrustedWhileItCanBeAsked) {
    EXPECT_EQ(accessibility().obstacle(), std::nullopt);
    state.isReachable = false;
    EXPECT_EQ(accessibility().obstacle(),
              (AccessObstacle{.kind = AccessObstacle::Kind::silentWindowManager, .desktop = "tiler"}));
    // It is not asked while another one is in charge.
    identify("another");
    settle();
    EXPECT_EQ(accessibility().obstacle(), std::nullopt);
}

TEST_F(TilingManagerTest, TheDesktopIsAPlainOneWhileADispensableManagerIsNotReachable) {
    state.isIndispensable = false;
    state.isReachable = false;
    settle();
    EXPECT_EQ(accessibility().obstacle(), std::nullopt);
    EXPECT_EQ(followed.desktop->name(), "X11");
    EXPECT_NE(frame(), std::nullopt);
    write({{0, 0}, {800, 600}});
    settle();
    EXPECT_EQ(state.readings, 0);
    EXPECT_EQ(state.placed, std::vector<Placed>{});
    state.isReachable = true;
    settle();
    EXPECT_EQ(followed.desktop->name(), "tiler");
    show({{100, 200}, {700, 500}}, true);
    write({{0, 0}, {800, 600}});
    settle();
    EXPECT_EQ(state.placed, (std::vector<Placed>{{window, {{0, 0}, {800, 600}}}}));
}

TEST_F(TilingManagerTest, ReportsTheVisibleFrameOfAWindow) {
    show({{100, 200}, {700, 500}}, true);
    EXPECT_EQ(frame(), (CGRect{{100, 200}, {700, 500}}));
    EXPECT_EQ(state.readings, 1) << "once in a turn";
}

TEST_F(TilingManagerTest, AHiddenWindowHasItsFutureFrame) {
    PlayedManager::show(followed.testClient, state, window,
                        {.frame = CGRect{{100, 200}, {700, 500}}, .drawn = CGRect{{30, 40}, {300, 200}}});
    settle();
    EXPECT_EQ(frame(), (CGRect{{100, 200}, {700, 500}}));
}

TEST_F(TilingManagerTest, AWindowThatItDoesNotReportIsNotPlaced) {
    EXPECT_EQ(read(AXAttribute::position).error(), AXError::cannotComplete);
    write({{0, 0}, {800, 600}});
    settle();
    EXPECT_EQ(state.placed, std::vector<Placed>{});
    state.layout.reset();
    EXPECT_EQ(frame(), std::nullopt);
    // X11 provides the window's kind all the same.
    EXPECT_TRUE(read(AXAttribute::subrole).has_value());
}

TEST_F(TilingManagerTest, IsAskedOnceForSizePositionAndSize) {
    show({{100, 200}, {700, 500}}, false);
    write({{10, 20}, {800, 600}});
    EXPECT_EQ(state.placed, std::vector<Placed>{});
    EXPECT_EQ(frame(), (CGRect{{10, 20}, {800, 600}}));
    EXPECT_EQ(state.placed, (std::vector<Placed>{{window, {{10, 20}, {800, 600}}}}));
    write({{10, 20}, {800, 600}});
    EXPECT_EQ(frame(), (CGRect{{10, 20}, {800, 600}}));
    EXPECT_EQ(state.placed.size(), 1U) << "it is there already";
}

TEST_F(TilingManagerTest, AWindowInTheLayoutIsTakenOutOfItAlsoWhereItStays) {
    show({{10, 20}, {800, 600}}, true);
    write({{10, 20}, {800, 600}});
    EXPECT_EQ(frame(), (CGRect{{10, 20}, {800, 600}}));
    EXPECT_EQ(state.placed, (std::vector<Placed>{{window, {{10, 20}, {800, 600}}}}));
}

TEST_F(TilingManagerTest, IsAskedForSizesThatTheWindowTakes) {
    countInSteps();
    for (const bool isTiled : {true, false}) {
        show({{100, 200}, {708, 504}}, isTiled);
        state.placed.clear();
        write({{0, 0}, {800, 600}});
        settle();
        EXPECT_EQ(state.placed, (std::vector<Placed>{{window, {{0, 0}, {798, 584}}}})) << isTiled;
    }
}

TEST_F(TilingManagerTest, IsAskedForTheWholeSizeIfItDoesNotRoundUp) {
    state.roundsSizesUp = false;
    countInSteps();
    show({{100, 200}, {708, 504}}, true);
    EXPECT_EQ(frame(), (CGRect{{100, 200}, {708, 504}})) << "its size is not predicted";
    write({{0, 0}, {800, 600}});
    EXPECT_EQ(frame(), (CGRect{{0, 0}, {800, 600}}));
    EXPECT_EQ(state.placed, (std::vector<Placed>{{window, {{0, 0}, {800, 600}}}}));
}

TEST_F(TilingManagerTest, IsAskedOnceForATiledTerminalIfItsDecorationOutsideIsKnown) {
    state.roundsSizesUp = false;
    countInSteps();
    show({{100, 200}, {708, 504}}, true);
    // One pixel more than the decoration in the layout, on each side.
    Layout::Window& tiled = state.layout->windows.at(window);
    tiled.bordersOutside = Extents{.left = 3, .right = 3, .top = 19, .bottom = 3};
    tiled.roundsByHints = true;
    settle();
    accessibility().setAttributeValue(element(), AXAttribute::size, CGSize{800, 600});
    accessibility().setAttributeValue(element(), AXAttribute::position, CGPoint{0, 0});
    accessibility().setAttributeValue(element(), AXAttribute::size, CGSize{800, 600});
    // A client of 794 by 578 takes 794 by 564, beside 6 by 22.
    EXPECT_EQ(frame(), (CGRect{{0, 0}, {800, 586}}));
    EXPECT_EQ(state.placed, std::vector<Placed>{}) << "nothing is asked before the correction";
    accessibility().setAttributeValue(element(), AXAttribute::position, CGPoint{0, 7});
    settle();
    EXPECT_EQ(state.placed, (std::vector<Placed>{{window, {{0, 7}, {800, 586}}}}));
}

TEST_F(TilingManagerTest, AFrameThatItDoesNotReportIsX11s) {
    PlayedManager::show(followed.testClient, state, window,
                        {.frame = CGRect{{98, 182}, {404, 320}}, .drawn = CGRect{{98, 182}, {404, 320}}});
    state.layout->windows.at(window) = {.isTiled = true};
    settle();
    EXPECT_EQ(frame(), (CGRect{{100, 200}, {400, 300}}));
    const std::uint32_t border = 3;
    xcb_configure_window(followed.testClient.connection().raw(), window, XCB_CONFIG_WINDOW_BORDER_WIDTH, &border);
    followed.testClient.finish();
    settle();
    EXPECT_EQ(frame(), (CGRect{{100, 200}, {406, 306}})) << "the border that the server draws";
    followed.testClient.setWords(window, "_NET_FRAME_EXTENTS", "CARDINAL", {5, 6, 7, 8});
    settle();
    EXPECT_EQ(frame(), (CGRect{{98, 196}, {411, 315}})) << "the decoration";
}

TEST_F(TilingManagerTest, AWindowInTheLayoutIsPlacedForGoodAlsoIfItIsCalledMaximized) {
    countInSteps();
    TestClient& testClient = followed.testClient;
    testClient.setWords(window, "_NET_WM_STATE", "ATOM", {testClient.atom("_NET_WM_STATE_MAXIMIZED_VERT")});
    show({{100, 0}, {708, 604}}, true);
    write({{0, 0}, {800, 600}});
    EXPECT_EQ(frame(), (CGRect{{0, 0}, {798, 584}}));
    testClient.setWords(window, "_NET_WM_STATE", "ATOM", {});
    settle();
    write({{0, 0}, {800, 600}});
    EXPECT_EQ(frame(), (CGRect{{0, 0}, {798, 584}}));
    settle();
    EXPECT_EQ(state.placed.size(), 1U) << "how it rounds is known, and it is there already";
}

TEST_F(TilingManagerTest, WritesWithoutAReadAreSentAtTheEndOfTheTurn) {
    show({{100, 200}, {700, 500}}, true);
    write({{10, 20}, {800, 600}});
    EXPECT_EQ(state.placed, std::vector<Placed>{});
    settle();
    EXPECT_EQ(state.placed, (std::vector<Placed>{{window, {{10, 20}, {800, 600}}}}));
}

TEST_F(TilingManagerTest, ReportsTheAreaThatBarsLeaveFree) {
    const auto visible = [this] { return followed.desktop->parts().screens.screens().front().visibleFrame; };
    const CGRect whole = followed.desktop->parts().screens.screens().front().frame;
    EXPECT_EQ(visible(), whole);
    state.layout->workAreas = {{{0, 20}, {whole.size.width, whole.size.height - 20}}};
    settle();
    followed.closeWindow(window);
    settle();
    // In this space y grows upwards.
    EXPECT_EQ(visible(), (CGRect{{0, 0}, {whole.size.width, whole.size.height - 20}}));
    state.layout.reset();
    followed.openWindow(client, "Editor");
    settle();
    EXPECT_EQ(visible(), whole);
}

} // namespace
} // namespace platform::x11
