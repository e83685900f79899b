#include "FollowedDesktop.h"
#include "LogicOnDesktop.h"
#include "Openbox.h"
#include "RequestInterruption.h"
#include "Tessel/AppRules.h"
#include "Tessel/WindowMover.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <map>

namespace platform::x11 {
namespace {

using corvid::CGRect;
using tessel::WindowAction;

/// The logic on an X server with a real window manager. Only the clock is the test's.
class InterruptedLaunchTest : public testing::Test {
protected:
    FollowedDesktop followed;
    std::unique_ptr<Openbox> manager;
    std::unique_ptr<LogicOnDesktop> logic;
    std::unique_ptr<tessel::AppRules> rules;

    void SetUp() override {
        if (!Openbox::isInstalled()) {
            GTEST_SKIP() << "openbox is not installed";
        }
        manager = std::make_unique<Openbox>("--sm-disable");
        followed.start();
        ASSERT_TRUE(followed.runUntil([&] { return followed.desktop->parts().accessibility.isProcessTrusted(); }));
        // It announces itself before it listens.
        Fence fence(followed.testClient.connection());
        ASSERT_TRUE(followed.runUntil([&] {
            followed.testClient.connection().deadline().begin();
            return fence.wait();
        }));
        logic = std::make_unique<LogicOnDesktop>(followed);
        rules = std::make_unique<tessel::AppRules>();
        rules->setRules({{"editor", WindowAction::maximize}});
        rules->start();
    }

    xcb_window_t show(const ClientProcess& client, const std::string& className) {
        const xcb_window_t window = followed.makeWindow(client, className);
        xcb_map_window(followed.testClient.connection().raw(), window);
        followed.testClient.connection().flush();
        return window;
    }

    [[nodiscard]] bool isReported(const std::string& what) const {
        return std::ranges::find(followed.reported, what) != followed.reported.end();
    }

    void inATurn(const std::function<void()>& work) { ASSERT_TRUE(logic->inATurn(work)); }

    void press(WindowAction action) {
        inATurn([&] {
            if (const auto focused = tessel::WindowMover::focusedWindow()) {
                tessel::WindowMover::perform(action, *focused);
            }
        });
    }

    xcb_window_t active() {
        Connection& connection = followed.testClient.connection();
        connection.deadline().begin();
        const auto root = RootFactsRequest(connection).read(connection);
        return root ? root->activeWindow : xcb_window_t{XCB_WINDOW_NONE};
    }

    /// A window's frame, as any client can read it.
    std::optional<CGRect> frame(xcb_window_t window) {
        Connection& connection = followed.testClient.connection();
        connection.deadline().begin();
        const auto facts = WindowFactsRequest(connection, window).read(connection);
        return facts ? std::optional(visibleRectangle(facts->geometry)) : std::nullopt;
    }

    /// A program that opens a window is reported after every earlier event.
    void settle() {
        const ClientProcess last(followed.server.display());
        show(last, "Terminal");
        ASSERT_TRUE(followed.runUntil([&] { return isReported("launch terminal"); }));
    }
};

/// An editor is launched, its rule is applied and checked once more, and its shortcut is pressed: on the way its window
/// is destroyed before each of the requests that this takes, once in every round.
TEST_F(InterruptedLaunchTest, AWindowMayBeDestroyedBetweenAnyTwoRequests) {
    const CGRect screen{{0, 0}, {1280, 800}};
    const CGRect leftHalf{{0, 0}, {640, 800}};
    testing::internal::CaptureStderr();
    bool wasInterrupted = true;
    std::size_t number = 0;
    while (wasInterrupted) {
        ++number;
        ASSERT_LT(number, 1000U) << "a launch and a press cannot take that many requests";
        followed.reported.clear();
        followed.reportedApplications.clear();
        ClientProcess editor(followed.server.display());
        const xcb_window_t window = followed.makeWindow(editor, "Editor");
        {
            const RequestInterruption interruption(followed.testClient.connection().raw(), number,
                                                   [&] { followed.testClient.destroy(window); });
            xcb_map_window(followed.testClient.connection().raw(), window);
            followed.testClient.connection().flush();
            ASSERT_TRUE(followed.runUntil([&] {
                return interruption.hasHappened() ||
                       (isReported("launch editor") && active() == window && frame(window) == screen);
            }));
            // By then the rule has had its effect, and is not yet checked again.
            inATurn([&] { logic->other.mainActor.advance(std::chrono::milliseconds(500)); });
            press(WindowAction::leftHalf);
            wasInterrupted = interruption.hasHappened();
        }
        EXPECT_EQ(frame(window), wasInterrupted ? std::nullopt : std::optional(leftHalf)) << "request " << number;
        settle();
        editor.end();
        // Every observer of the launch is notified of the end, and no other.
        EXPECT_TRUE(followed.runUntil([&] {
            return followed.applications().runningApplications().empty() &&
                   isReported("launch editor") == isReported("terminate editor");
        })) << "request "
            << number;
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_LT(followed.longestTurn(), FollowedDesktop::longestAllowedTurn);
    // Fewer would mean that hardly any request was interrupted.
    EXPECT_GT(number, 50U);
    RecordProperty("requests", static_cast<int>(number));
}

} // namespace
} // namespace platform::x11
