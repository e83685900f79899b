#include "Tests/Tessel/AppRulesFixture.h"

#include <algorithm>
#include <chrono>
#include <cstddef>

namespace tessel {
namespace {

using namespace std::chrono_literals;
using platform::AXError;

class AppRulesRetries : public AppRulesTest {
protected:
    std::size_t attempts() { return desktop.trace.take("observe process 10").size(); }
};

TEST_F(AppRulesRetries, ComeAQuarterOfASecondApartFortyTimesAndThenNoMore) {
    desktop.accessibilityObservers.failCreation(editorProcess, AXError::cannotComplete);
    watcher->start();
    launchEditor();
    desktop.mainActor.run();
    EXPECT_EQ(attempts(), 1U);
    EXPECT_EQ(desktop.mainActor.waiting(),
              (std::vector<platform::simulated::MainActor::Waiting>{{platform::Instant(250ms), 0s}}));
    desktop.mainActor.advance(249ms);
    EXPECT_EQ(attempts(), 0U);
    desktop.mainActor.advance(1ms);
    EXPECT_EQ(attempts(), 1U);
    desktop.mainActor.advance(38 * 250ms);
    EXPECT_EQ(attempts(), 38U);
    desktop.mainActor.advance(250ms);
    EXPECT_EQ(attempts(), 1U) << "the forty-first, after ten seconds";
    desktop.mainActor.advance(60s);
    EXPECT_EQ(attempts(), 0U);
    EXPECT_TRUE(desktop.mainActor.waiting().empty());
}

TEST_F(AppRulesRetries, FollowARefusedSubscriptionAndAMissingObserverToo) {
    desktop.accessibilityObservers.failSubscription(editorProcess, AXError::cannotComplete);
    desktop.accessibilityObservers.failCreation(terminalProcess, AXError::success);
    watcher->start();
    launchEditor();
    desktop.applications.launch(terminalOptions());
    desktop.mainActor.run();
    EXPECT_EQ(observerCount(), 0U) << "an observer without its subscription is dropped";
    desktop.accessibilityObservers.succeed(editorProcess);
    desktop.accessibilityObservers.succeed(terminalProcess);
    desktop.mainActor.advance(250ms);
    EXPECT_EQ(observerCount(), 2U);
}

TEST_F(AppRulesRetries, ApplyTheRuleToTheWindowThatIsThereWhenTheySucceed) {
    desktop.accessibilityObservers.failCreation(editorProcess, AXError::cannotComplete);
    watcher->start();
    Application& editor = launchEditor();
    desktop.mainActor.advance(600ms);
    Window& window = editor.openWindow();
    desktop.accessibilityObservers.succeed(editorProcess);
    desktop.mainActor.advance(149ms);
    EXPECT_EQ(window.frame(), natural);
    desktop.mainActor.advance(1ms);
    EXPECT_EQ(window.frame(), maximized);
}

TEST_F(AppRulesRetries, LeaveTheWindowsOfAnApplicationAloneThatWasNotLaunched) {
    desktop.accessibilityObservers.failCreation(editorProcess, AXError::cannotComplete);
    Window& window = addEditor().addWindow();
    watcher->start();
    desktop.accessibilityObservers.succeed(editorProcess);
    desktop.mainActor.advance(1s);
    EXPECT_EQ(observerCount(), 1U);
    EXPECT_EQ(window.frame(), natural);
}

TEST_F(AppRulesRetries, EndWhenTheWatcherStops) {
    desktop.accessibilityObservers.failCreation(editorProcess, AXError::cannotComplete);
    watcher->start();
    launchEditor();
    desktop.mainActor.run();
    watcher->stop();
    desktop.trace.clear();
    desktop.mainActor.advance(60s);
    EXPECT_EQ(desktop.trace.take(), Lines{});
}

TEST_F(AppRulesRetries, AreNoMoreAfterTheWatcherStoppedAndStartedAgain) {
    desktop.accessibilityObservers.failCreation(editorProcess, AXError::cannotComplete);
    watcher->start();
    watcher->stop();
    watcher->start();
    launchEditor();
    desktop.mainActor.run();
    EXPECT_EQ(attempts(), 1U) << "a launch is reported once";
}

TEST_F(AppRulesRetries, EndWhenTheApplicationEnds) {
    desktop.accessibilityObservers.failCreation(editorProcess, AXError::cannotComplete);
    watcher->start();
    Application& editor = launchEditor();
    desktop.mainActor.run();
    desktop.applications.terminate(editor);
    desktop.trace.clear();
    desktop.mainActor.advance(60s);
    EXPECT_EQ(desktop.trace.take(), Lines{});
}

TEST_F(AppRulesRetries, EndWhenTheRuleIsGone) {
    desktop.accessibilityObservers.failCreation(editorProcess, AXError::cannotComplete);
    watcher->start();
    launchEditor();
    desktop.mainActor.run();
    watcher->setRules({});
    desktop.trace.clear();
    desktop.mainActor.advance(60s);
    EXPECT_EQ(desktop.trace.take(), Lines{});
}

TEST_F(AppRulesRetries, EndWhenTheApplicationIsWatchedByThen) {
    desktop.accessibilityObservers.failCreation(editorProcess, AXError::cannotComplete);
    watcher->start();
    launchEditor();
    desktop.mainActor.run();
    desktop.accessibilityObservers.succeed(editorProcess);
    watcher->setRules(watcher->rules());
    EXPECT_EQ(observerCount(), 1U);
    desktop.trace.clear();
    desktop.mainActor.advance(60s);
    EXPECT_EQ(desktop.trace.take(), Lines{});
}

TEST_F(AppRulesRetries, OfADroppedWatcherComeToNothing) {
    desktop.accessibilityObservers.failCreation(editorProcess, AXError::cannotComplete);
    watcher->start();
    launchEditor();
    desktop.mainActor.run();
    watcher.reset();
    desktop.trace.clear();
    desktop.mainActor.advance(60s);
    EXPECT_EQ(desktop.trace.take(), Lines{});
}

} // namespace
} // namespace tessel
