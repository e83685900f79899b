#include "Tests/Tessel/AppRulesFixture.h"

#include <chrono>

namespace tessel {
namespace {

using namespace std::chrono_literals;
using platform::AXError;
namespace AXAttribute = platform::AXAttribute;

/// The 0.4 s after a rule was applied, and the check at their end.
class AppRulesSettling : public AppRulesTest {
protected:
    AppRulesSettling() {
        watcher->start();
        desktop.mainActor.run();
        window = &editor.openWindow();
        desktop.mainActor.run();
        desktop.trace.clear();
    }

    Application& editor = launchEditor();
    Window* window = nullptr;
};

TEST_F(AppRulesSettling, LeavesAWindowAloneThatStays) {
    EXPECT_EQ(window->frame(), maximized);
    EXPECT_EQ(desktop.mainActor.waiting(),
              (std::vector<platform::simulated::MainActor::Waiting>{{platform::Instant(400ms), 0s}}));
    desktop.mainActor.advance(60s);
    EXPECT_EQ(desktop.trace.take("write"), Lines{});
    EXPECT_EQ(window->frame(), maximized);
}

TEST_F(AppRulesSettling, PutsBackAWindowThatItsApplicationMovedOnce) {
    window->moveTo(natural);
    desktop.mainActor.advance(399ms);
    EXPECT_EQ(window->frame(), natural);
    desktop.mainActor.advance(1ms);
    EXPECT_EQ(window->frame(), maximized);
    window->moveTo(natural);
    desktop.mainActor.advance(60s);
    EXPECT_EQ(window->frame(), natural) << "there is no third attempt";
}

TEST_F(AppRulesSettling, PutsBackAWindowThatMovedByLessThanAPoint) {
    window->moveTo({{0.25, 25}, {1920, 1055}});
    desktop.mainActor.advance(400ms);
    EXPECT_FALSE(desktop.trace.take("write").empty());
}

TEST_F(AppRulesSettling, UsesTheActionOfThenAlsoWhenTheRuleHasChangedOrGone) {
    window->moveTo(natural);
    watcher->setRules({});
    desktop.mainActor.advance(400ms);
    EXPECT_EQ(window->frame(), maximized);
}

TEST_F(AppRulesSettling, PutsAWindowBackAlsoAfterTheWatcherStoppedAndIsGone) {
    window->moveTo(natural);
    watcher->stop();
    watcher.reset();
    desktop.mainActor.advance(400ms);
    EXPECT_EQ(window->frame(), maximized);
}

TEST_F(AppRulesSettling, LetsAClosedWindowBe) {
    window->close();
    desktop.mainActor.advance(400ms);
    EXPECT_EQ(desktop.trace.take("write"), Lines{});
}

TEST_F(AppRulesSettling, AppliesTheRuleAgainWhereTheFirstReadingFailed) {
    window->close();
    desktop.mainActor.advance(1s);
    // The third reading of the position is that of the settled frame; the first two are the mover's.
    Window& late = editor.openWindow();
    late.faults.failReads(AXAttribute::size, AXError::cannotComplete);
    desktop.mainActor.run();
    EXPECT_EQ(late.frame(), natural) << "what cannot be read cannot be placed";
    late.faults = {};
    desktop.mainActor.advance(400ms);
    EXPECT_EQ(late.frame(), maximized);
}

TEST_F(AppRulesSettling, OfAWindowThatRefusesItsSizeIsWhatTheWindowSettledOn) {
    window->close();
    desktop.mainActor.advance(1s);
    Window& small = editor.openWindow({.sizes = {.maximum = {1000, 500}}});
    desktop.mainActor.run();
    const corvid::CGRect settled = small.frame();
    EXPECT_EQ(settled.size, (corvid::CGSize{1000, 500}));
    desktop.trace.clear();
    desktop.mainActor.advance(400ms);
    EXPECT_EQ(desktop.trace.take("write"), Lines{}) << "it stayed where it was put";
}

} // namespace
} // namespace tessel
