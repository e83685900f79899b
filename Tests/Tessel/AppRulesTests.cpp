#include "Tests/Tessel/AppRulesFixture.h"

#include <any>
#include <chrono>

namespace tessel {
namespace {

using namespace std::chrono_literals;
using platform::AXError;
namespace AXAttribute = platform::AXAttribute;
namespace WorkspaceNotification = platform::WorkspaceNotification;

class AppRulesWatcher : public AppRulesTest {};

TEST_F(AppRulesWatcher, WatchesNothingUntilItIsStarted) {
    addEditor();
    launchEditor();
    desktop.mainActor.advance(20s);
    EXPECT_FALSE(watcher->isRunning());
    EXPECT_EQ(desktop.trace.take(), Lines{});
}

TEST_F(AppRulesWatcher, AtItsStartWatchesTheRuledApplicationsThatRunAndLeavesTheirWindowsAlone) {
    Window& window = addEditor().addWindow();
    desktop.applications.add({.process = 11, .bundleIdentifier = "org.example.Other"}).addWindow();
    desktop.applications.add({.process = 12}).addWindow();
    desktop.applications.add(terminalOptions());
    watcher->start();
    EXPECT_EQ(desktop.trace.take("observe"), (Lines{"observe process 10", "observe process 20"}));
    desktop.mainActor.advance(20s);
    EXPECT_EQ(desktop.trace.take("observe"), Lines{});
    EXPECT_EQ(window.frame(), natural);
}

TEST_F(AppRulesWatcher, AppliesTheRuleToTheFirstWindowAsItIsCreated) {
    watcher->start();
    Application& editor = launchEditor();
    desktop.mainActor.run();
    Window& window = editor.openWindow();
    desktop.mainActor.run();
    EXPECT_EQ(window.frame(), maximized);
}

TEST_F(AppRulesWatcher, AppliesTheRuleAtLaunchToTheOneWindowThatIsThereAlready) {
    watcher->start();
    Window& window = launchEditor().addWindow();
    desktop.mainActor.run();
    EXPECT_EQ(window.frame(), maximized);
    EXPECT_EQ(observerCount(), 1U);
}

TEST_F(AppRulesWatcher, AtLaunchCountsStandardWindowsOnly) {
    watcher->start();
    Application& editor = launchEditor();
    Window& splash = editor.addWindow({.subrole = "AXDialog"});
    Window& window = editor.addWindow();
    desktop.mainActor.run();
    EXPECT_EQ(window.frame(), maximized);
    EXPECT_EQ(splash.frame(), natural);
}

TEST_F(AppRulesWatcher, AppliesNothingAtLaunchWhenTwoWindowsAreThereAlready) {
    watcher->start();
    Application& editor = launchEditor();
    Window& first = editor.addWindow();
    Window& second = editor.addWindow();
    desktop.mainActor.advance(1s);
    Window& third = editor.openWindow();
    desktop.mainActor.advance(1s);
    for (Window* window : {&first, &second, &third}) {
        EXPECT_EQ(window->frame(), natural) << window->number();
    }
}

TEST_F(AppRulesWatcher, NeverAppliesTheRuleToASecondWindow) {
    watcher->start();
    Application& editor = launchEditor();
    desktop.mainActor.run();
    Window& first = editor.openWindow();
    desktop.mainActor.run();
    Window& second = editor.openWindow();
    desktop.mainActor.advance(1s);
    EXPECT_EQ(first.frame(), maximized);
    EXPECT_EQ(second.frame(), natural);
}

TEST_F(AppRulesWatcher, AppliesTheRuleToNeitherOfTwoWindowsThatOpenTogether) {
    watcher->start();
    Application& editor = launchEditor();
    desktop.mainActor.run();
    Window& first = editor.openWindow();
    Window& second = editor.openWindow();
    desktop.mainActor.advance(1s);
    EXPECT_EQ(first.frame(), natural) << "both are there when the first one is reported";
    EXPECT_EQ(second.frame(), natural);
}

TEST_F(AppRulesWatcher, AppliesTheRuleAgainToTheFirstWindowAfterAllWereClosed) {
    watcher->start();
    Application& editor = launchEditor();
    desktop.mainActor.run();
    editor.openWindow().close();
    desktop.mainActor.advance(1s);
    Window& next = editor.openWindow();
    desktop.mainActor.run();
    EXPECT_EQ(next.frame(), maximized);
}

TEST_F(AppRulesWatcher, NeverAppliesTheRuleToADialogAndDoesNotCountIt) {
    watcher->start();
    Application& editor = launchEditor();
    desktop.mainActor.run();
    Window& dialog = editor.openWindow({.subrole = "AXDialog"});
    desktop.mainActor.advance(1s);
    EXPECT_EQ(dialog.frame(), natural);
    Window& window = editor.openWindow();
    desktop.mainActor.run();
    EXPECT_EQ(window.frame(), maximized);
}

TEST_F(AppRulesWatcher, CentersOnTheScreenOnWhichTheWindowOpens) {
    desktop.screens.attach({{.frame = {{0, 0}, {1920, 1080}}, .visibleFrame = {{0, 0}, {1920, 1055}}},
                            {.frame = {{1920, 0}, {1280, 800}}, .visibleFrame = {{1920, 0}, {1280, 760}}}});
    watcher->start();
    Application& terminal = desktop.applications.launch(terminalOptions());
    desktop.mainActor.run();
    Window& window = terminal.openWindow({.frame = {{2000, 400}, {400, 300}}});
    desktop.mainActor.run();
    // The right screen's top edge lies at 280 in the accessibility space, its visible part begins 40 below.
    EXPECT_EQ(window.frame(), (corvid::CGRect{{2360, 550}, {400, 300}}));
}

TEST_F(AppRulesWatcher, WatchesEachProcessOfAnApplicationForItself) {
    watcher->start();
    Application& first = launchEditor();
    Application& second = desktop.applications.launch({.process = 11, .bundleIdentifier = "org.example.Editor"});
    desktop.mainActor.run();
    EXPECT_EQ(observerCount(), 2U);
    Window& firstWindow = first.openWindow();
    Window& secondWindow = second.openWindow();
    desktop.mainActor.run();
    EXPECT_EQ(firstWindow.frame(), maximized);
    EXPECT_EQ(secondWindow.frame(), maximized);
}

TEST_F(AppRulesWatcher, IgnoresLaunchesWithoutARuleOrAnIdentifierOrAnApplication) {
    watcher->start();
    desktop.applications.launch({.process = 11, .bundleIdentifier = "org.example.Other"}).addWindow();
    desktop.applications.launch({.process = 12}).addWindow();
    desktop.mainActor.run();
    const auto center = desktop.applications.notificationCenter();
    for (const auto name :
         {WorkspaceNotification::didLaunchApplication, WorkspaceNotification::didTerminateApplication}) {
        center->post({.name = std::string(name), .userInfo = {}});
        center->post({.name = std::string(name),
                      .userInfo = {{std::string(WorkspaceNotification::applicationKey), std::any(10)}}});
        center->post({.name = std::string(name),
                      .userInfo = {{std::string(WorkspaceNotification::applicationKey),
                                    std::any(platform::RunningApplicationReference())}}});
    }
    desktop.mainActor.advance(20s);
    EXPECT_EQ(desktop.trace.take(), Lines{});
}

TEST_F(AppRulesWatcher, KeepsTheEmptyIdentifierForApplicationsWithoutOneButWatchesThemNot) {
    watcher->setRules({{"", WindowAction::maximize}});
    desktop.applications.add({.process = 12}).addWindow();
    watcher->start();
    EXPECT_EQ(desktop.trace.take(), Lines{}) << "an application without an identifier has no rule";
}

TEST_F(AppRulesWatcher, StartedTwiceStartsOnce) {
    watcher->start();
    watcher->start();
    launchEditor();
    desktop.mainActor.run();
    EXPECT_EQ(desktop.trace.take("observe"), (Lines{"observe process 10"}));
}

TEST_F(AppRulesWatcher, StoppedObservesNothingAnyMore) {
    Application& editor = addEditor();
    watcher->start();
    watcher->stop();
    EXPECT_EQ(observerCount(), 0U);
    desktop.trace.clear();
    Window& window = editor.openWindow();
    desktop.applications.launch(terminalOptions()).addWindow();
    desktop.mainActor.advance(20s);
    EXPECT_EQ(desktop.trace.take(), Lines{});
    EXPECT_EQ(window.frame(), natural);
    watcher->stop();
    EXPECT_FALSE(watcher->isRunning());
}

TEST_F(AppRulesWatcher, StartedAgainWatchesThoseThatRunByThen) {
    watcher->start();
    watcher->stop();
    Window& window = launchEditor().addWindow();
    desktop.mainActor.run();
    watcher->start();
    desktop.mainActor.run();
    EXPECT_EQ(observerCount(), 1U);
    EXPECT_EQ(window.frame(), natural) << "it was not launched while the watcher ran";
}

TEST_F(AppRulesWatcher, WatchesARunningApplicationFromTheMomentThatItGetsARule) {
    watcher->setRules({});
    Application& editor = addEditor();
    Window& existing = editor.addWindow();
    watcher->start();
    watcher->setRules({{"org.example.Editor", WindowAction::maximize}});
    EXPECT_EQ(observerCount(), 1U);
    desktop.mainActor.advance(20s);
    EXPECT_EQ(existing.frame(), natural) << "its windows stay as they are";
    existing.close();
    Window& next = editor.openWindow();
    desktop.mainActor.run();
    EXPECT_EQ(next.frame(), maximized);
}

TEST_F(AppRulesWatcher, NoLongerWatchesAnApplicationThatLosesItsRule) {
    Application& editor = addEditor();
    desktop.applications.add(terminalOptions());
    watcher->start();
    desktop.trace.clear();
    watcher->setRules({{"org.example.Terminal", WindowAction::center}});
    EXPECT_EQ(desktop.trace.take(), (Lines{"stop observing process 10"}));
    Window& window = editor.openWindow();
    desktop.mainActor.run();
    EXPECT_EQ(window.frame(), natural);
}

TEST_F(AppRulesWatcher, CarriesOutAChangedActionWithoutObservingAnew) {
    Application& editor = addEditor();
    watcher->start();
    desktop.trace.clear();
    watcher->setRules({{"org.example.Editor", WindowAction::center}});
    EXPECT_EQ(desktop.trace.take(), Lines{});
    Window& window = editor.openWindow();
    desktop.mainActor.run();
    EXPECT_EQ(window.frame(), (corvid::CGRect{{560, 253}, {800, 600}}));
}

TEST_F(AppRulesWatcher, ForgetsAnApplicationThatEndsAndWatchesItsNumberAgainLater) {
    watcher->start();
    Application& editor = launchEditor();
    desktop.mainActor.run();
    desktop.applications.terminate(editor);
    desktop.mainActor.run();
    EXPECT_EQ(observerCount(), 0U);
    Window& window = launchEditor().addWindow();
    desktop.mainActor.run();
    EXPECT_EQ(window.frame(), maximized);
    EXPECT_EQ(observerCount(), 1U);
}

TEST_F(AppRulesWatcher, IgnoresAnApplicationThatEndedBeforeItsLaunchWasReported) {
    watcher->start();
    desktop.applications.terminate(launchEditor());
    desktop.mainActor.advance(20s);
    EXPECT_EQ(desktop.trace.take(), Lines{});
}

TEST_F(AppRulesWatcher, FollowsTenApplicationsThatAreLaunchedTogether) {
    Prefs::Rules rules;
    for (int number = 0; number < 10; ++number) {
        rules.emplace("org.example.App" + std::to_string(number), WindowAction::maximize);
    }
    watcher->setRules(rules);
    watcher->start();
    std::vector<Window*> windows;
    for (int number = 0; number < 10; ++number) {
        Application& application = desktop.applications.launch(
            {.process = 100 + number, .bundleIdentifier = "org.example.App" + std::to_string(number)});
        windows.push_back(number % 2 == 0 ? &application.addWindow() : &application.openWindow());
    }
    desktop.mainActor.advance(1s);
    for (Window* window : windows) {
        EXPECT_EQ(window->frame(), maximized) << window->number();
    }
}

TEST_F(AppRulesWatcher, DroppedIsReachedByNothing) {
    Application& editor = addEditor();
    watcher->start();
    Window& window = editor.openWindow();
    desktop.accessibilityObservers.failCreation(terminalProcess, AXError::cannotComplete);
    desktop.applications.launch(terminalOptions());
    watcher.reset();
    desktop.trace.clear();
    desktop.mainActor.advance(20s);
    EXPECT_EQ(desktop.trace.take(), Lines{});
    EXPECT_EQ(window.frame(), natural);
    EXPECT_EQ(observerCount(), 0U);
}

TEST_F(AppRulesWatcher, StopsTheProcessWhenItIsCalledBackElsewhere) {
    Application& editor = addEditor();
    watcher->start();
    editor.openWindow();
    EXPECT_DEATH(
        {
            const platform::simulated::MainActor::Elsewhere elsewhere(desktop.mainActor);
            desktop.mainActor.run();
        },
        "Incorrect actor executor assumption");
}

} // namespace
} // namespace tessel
