#include "FollowedDesktop.h"
#include "LogicOnDesktop.h"
#include "Platform/X11/Element.h"
#include "Platform/X11/TilingManager.h"
#include "Tessel/WindowMover.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform::x11 {
namespace {

using corvid::CGRect;
using tessel::WindowAction;

/// One dimension of a window: its size is `base` plus any number of steps.
struct Steps {
    int base = 0;
    int step = 1;

    /// The next size that the window takes; a window manager rounds any other requested size up to it.
    [[nodiscard]] int roundedUp(int size) const { return base + ((size - base + step - 1) / step * step); }
};

/// A window, its decoration, and its place in the layout.
struct Decorated {
    std::string style;
    int title = 0;
    int border = 0;
    /// The layout hides the borders, and has the title in a tab outside of the window.
    bool isBareInLayout = false;
    /// The client's own, which the server draws.
    int clientBorder = 0;
    Steps columns;
    Steps rows;
    CGRect workArea;
    CGRect part;

    [[nodiscard]] Extents borders() const {
        if (style == "none") {
            return {};
        }
        return {.left = border, .right = border, .top = style == "normal" ? title : border, .bottom = border};
    }
};

std::ostream& operator<<(std::ostream& stream, const Decorated& window) {
    const auto show = [&](const CGRect& rect) {
        stream << ' ' << rect.width() << 'x' << rect.height() << '+' << rect.minX() << '+' << rect.minY();
    };
    stream << window.style << (window.isBareInLayout ? ", bare in the layout," : ",") << " title " << window.title
           << " border " << window.border << " of the client " << window.clientBorder << " columns "
           << window.columns.base << '+' << window.columns.step << " rows " << window.rows.base << '+'
           << window.rows.step << " in";
    show(window.workArea);
    stream << " at";
    show(window.part);
    return stream;
}

/// A part of a line that is at least `shortest` long, as position and length.
std::pair<int, int> partOf(int length, int shortest) {
    const int part = *rc::gen::inRange(shortest, length + 1);
    return {*rc::gen::inRange(0, length - part + 1), part};
}

Decorated anyDecorated(const CGRect& screen) {
    Decorated window;
    window.style = *rc::gen::element<std::string>("normal", "pixel", "none");
    window.title = *rc::gen::inRange(0, 61);
    window.border = *rc::gen::inRange(0, 11);
    window.isBareInLayout = *rc::gen::arbitrary<bool>();
    window.clientBorder = *rc::gen::inRange(0, 3);
    window.columns = {.base = *rc::gen::inRange(0, 20), .step = *rc::gen::inRange(1, 20)};
    window.rows = {.base = *rc::gen::inRange(0, 20), .step = *rc::gen::inRange(1, 40)};
    const auto [x, width] = partOf(static_cast<int>(screen.width()), 700);
    const auto [y, height] = partOf(static_cast<int>(screen.height()), 500);
    const auto [partX, partWidth] = partOf(width, 200);
    const auto [partY, partHeight] = partOf(height, 200);
    const auto rect = [](int left, int top, int across, int down) {
        return CGRect{{static_cast<double>(left), static_cast<double>(top)},
                      {static_cast<double>(across), static_cast<double>(down)}};
    };
    window.workArea = rect(x, y, width, height);
    window.part = rect(x + partX, y + partY, partWidth, partHeight);
    return window;
}

/// Lays one window out as i3 does, and makes it float with all its borders on request.
class DecoratingManager final : public TilingManager {
public:
    struct State {
        Decorated decorated;
        Layout layout;
        xcb_window_t window = XCB_WINDOW_NONE;
        int placings = 0;
    };

    DecoratingManager(TestClient& testClient, State& state)
        : testClient(testClient)
        , state(state) {}

    [[nodiscard]] std::string_view name() const override { return "tiler"; }

    [[nodiscard]] bool roundsSizesUp() const override { return true; }

    [[nodiscard]] bool isReachable(Connection& /*connection*/) override { return true; }

    [[nodiscard]] std::optional<Layout> readLayout(Connection& /*connection*/) override { return state.layout; }

    bool place(Connection& /*connection*/, xcb_window_t /*window*/, const CGRect& frame) override {
        ++state.placings;
        const Decorated& decorated = state.decorated;
        const Extents around = widened(decorated.borders(), decorated.clientBorder);
        const auto rounded = [](const Steps& steps, double size, int outside) {
            return static_cast<double>(steps.roundedUp(static_cast<int>(size) - outside) + outside);
        };
        const CGRect taken{frame.origin,
                           {rounded(decorated.columns, frame.width(), around.left + around.right),
                            rounded(decorated.rows, frame.height(), around.top + around.bottom)}};
        show(testClient, state, taken, decorated.borders());
        state.layout.windows[state.window] = {.frame = taken, .drawn = taken};
        return true;
    }

    /// Puts the window into its part of the layout, and reports or hides its borders outside.
    static void tile(TestClient& testClient, State& state, const Decorated& decorated, bool reportsBorders) {
        state.decorated = decorated;
        state.placings = 0;
        show(testClient, state, decorated.part, decorated.isBareInLayout ? Extents{} : decorated.borders());
        state.layout = {
            .windows = {{state.window,
                         {.frame = decorated.part,
                          .drawn = decorated.part,
                          .isTiled = true,
                          .bordersOutside = reportsBorders ? std::optional(decorated.borders()) : std::nullopt}}},
            .workAreas = {decorated.workArea}};
    }

private:
    /// Puts the client into that frame and those borders.
    static void show(TestClient& testClient, const State& state, const CGRect& frame, const Extents& borders) {
        const auto word = [](double value) { return static_cast<std::uint32_t>(static_cast<std::int32_t>(value)); };
        const int ownBorder = state.decorated.clientBorder;
        const std::array<std::uint32_t, 5> values{word(frame.minX() + borders.left), word(frame.minY() + borders.top),
                                                  word(frame.width() - borders.left - borders.right - (2 * ownBorder)),
                                                  word(frame.height() - borders.top - borders.bottom - (2 * ownBorder)),
                                                  word(ownBorder)};
        xcb_configure_window(testClient.connection().raw(), state.window,
                             XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                                 XCB_CONFIG_WINDOW_HEIGHT | XCB_CONFIG_WINDOW_BORDER_WIDTH,
                             values.data());
        testClient.finish();
    }

    TestClient& testClient;
    State& state;
};

class TilingManagerProperties : public testing::Test {
protected:
    TilingManagerProperties() {
        TestClient& testClient = followed.testClient;
        const xcb_window_t root = testClient.connection().root();
        const xcb_window_t check = manager.makeWindow();
        testClient.setText(check, "_NET_WM_NAME", "tiler");
        testClient.setWords(check, "_NET_SUPPORTING_WM_CHECK", "WINDOW", {check});
        testClient.setWords(root, "_NET_SUPPORTING_WM_CHECK", "WINDOW", {check});
        testClient.setWords(root, "_NET_SUPPORTED", "ATOM",
                            {testClient.atom("_NET_ACTIVE_WINDOW"), testClient.atom("_NET_CLIENT_LIST"),
                             testClient.atom("_NET_MOVERESIZE_WINDOW")});
        followed.start(std::make_unique<DecoratingManager>(testClient, state));
        state.window = followed.openWindow(client, "Terminal");
        logic.emplace(followed);
        EXPECT_TRUE(followed.desktop->parts().accessibility.isProcessTrusted());
        screen = followed.desktop->parts().screens.screens().front().frame;
    }

    void tile(const Decorated& decorated, bool reportsBorders) {
        const auto word = [](int value) { return static_cast<std::uint32_t>(value); };
        const auto& [columns, rows] = std::pair(decorated.columns, decorated.rows);
        // Flags for steps and a base size; ICCCM 4.1.2.3 gives their places in the property.
        followed.testClient.setWords(state.window, "WM_NORMAL_HINTS", "WM_SIZE_HINTS",
                                     {(1U << 6U) | (1U << 8U), 0, 0, 0, 0, 0, 0, 0, 0, word(columns.step),
                                      word(rows.step), 0, 0, 0, 0, word(columns.base), word(rows.base), 0});
        DecoratingManager::tile(followed.testClient, state, decorated, reportsBorders);
    }

    void press(WindowAction action) {
        bool wasInTime = false;
        RC_ASSERT(logic->inATurn([&] {
            const Instant begin = followed.mainLoop.now();
            tessel::WindowMover::perform(action, linux::windowElement(state.window));
            wasInTime = followed.mainLoop.now() - begin < linux::TurnDeadline::turnLimit / 2;
        }));
        // Pending requests are sent at the end of the turn.
        RC_ASSERT(logic->inATurn([] {}));
        // A turn that takes too long is given up on the way.
        RC_PRE(wasInTime);
    }

    /// Presses twice: the second time, no request is sent.
    void expectNothingOfARepeat(const std::vector<WindowAction>& actions, bool reportsBorders) {
        EXPECT_TRUE(rc::check([&] {
            const Decorated decorated = anyDecorated(screen);
            const auto action = *rc::gen::elementOf(actions);
            RC_LOG() << action.rawValue() << ": " << decorated;
            tile(decorated, reportsBorders);
            press(action);
            RC_ASSERT(std::exchange(state.placings, 0) > 0);
            const CGRect settled = frame();
            press(action);
            RC_ASSERT(frame() == settled);
            RC_ASSERT(state.placings == 0);
        }));
    }

    [[nodiscard]] CGRect frame() const { return state.layout.windows.at(state.window).frame.value(); }

    FollowedDesktop followed;
    DecoratingManager::State state;
    ClientProcess client{followed.server.display()};
    ClientProcess manager{followed.server.display()};
    std::optional<LogicOnDesktop> logic;
    CGRect screen;
};

TEST_F(TilingManagerProperties, ARepeatChangesNothingWhateverTheTitleAndTheBorders) {
    expectNothingOfARepeat({WindowAction::allCases.begin(), WindowAction::allCases.end()}, true);
}

TEST_F(TilingManagerProperties, ARepeatChangesNothingWhereTheBordersBecomeKnownOnlyOutside) {
    // The others keep a size, or the width, that the window had in the layout.
    expectNothingOfARepeat(
        {WindowAction::leftHalf, WindowAction::rightHalf, WindowAction::maximize, WindowAction::almostMaximize}, false);
}

} // namespace
} // namespace platform::x11
