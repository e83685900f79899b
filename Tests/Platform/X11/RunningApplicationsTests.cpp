#include "FollowedDesktop.h"

#include <gtest/gtest.h>

#include <csignal>

namespace platform::x11 {
namespace {

using Reports = std::vector<std::string>;

std::vector<ProcessIdentifier> processes(const std::vector<RunningApplicationReference>& applications) {
    std::vector<ProcessIdentifier> numbers;
    for (const auto& application : applications) {
        numbers.push_back(application->processIdentifier());
    }
    return numbers;
}

class RunningApplicationsTest : public testing::Test {
protected:
    FollowedDesktop followed;
    ClientProcess editor{followed.server.display()};
    ClientProcess browser{followed.server.display()};

    [[nodiscard]] bool isReported(std::size_t count) {
        return followed.runUntil([&] { return followed.reported.size() >= count; });
    }
};

TEST_F(RunningApplicationsTest, ALaunchIsReportedOnceWhenTheFirstWindowIsManaged) {
    followed.start();
    const xcb_window_t window = followed.makeWindow(editor, "Editor");
    followed.settle();
    EXPECT_EQ(followed.reported, Reports{});

    followed.managed = {window};
    followed.list();
    ASSERT_TRUE(isReported(1));
    followed.openWindow(editor, "Editor");
    followed.settle();
    EXPECT_EQ(followed.reported, Reports{"launch editor"});
    const auto application = followed.reportedApplications.front();
    EXPECT_EQ(application->processIdentifier(), editor.process());
    EXPECT_EQ(application->bundleIdentifier(), "editor");
    EXPECT_EQ(application->localizedName(), "The editor");
    EXPECT_FALSE(application->isTerminated());
    EXPECT_EQ(followed.applications().runningApplication(editor.process()), application);
}

TEST_F(RunningApplicationsTest, ApplicationsThatRanBeforeAreKnownInTheOrderOfTheirWindowsAndNotLaunched) {
    followed.openWindow(browser, "Browser");
    followed.openWindow(editor, "Editor");
    followed.openWindow(browser, "Browser");
    followed.start();
    EXPECT_EQ(processes(followed.applications().runningApplications()),
              (std::vector<ProcessIdentifier>{browser.process(), editor.process()}));
    EXPECT_EQ(followed.applications().runningApplication(editor.process())->bundleIdentifier(), "editor");
    followed.openWindow(browser, "Browser");
    followed.settle();
    EXPECT_EQ(followed.reported, Reports{});
    browser.end();
    ASSERT_TRUE(isReported(1));
    EXPECT_EQ(followed.reported, Reports{"terminate browser"});
}

TEST_F(RunningApplicationsTest, WindowsThatAreShownBeforeAWindowManagerComesWereThereBefore) {
    const xcb_window_t shown = followed.makeWindow(editor, "Editor");
    xcb_map_window(followed.testClient.connection().raw(), shown);
    const xcb_window_t helper = followed.makeWindow(browser, "Browser");
    followed.start();
    EXPECT_EQ(processes(followed.applications().runningApplications()),
              std::vector<ProcessIdentifier>{editor.process()});
    followed.managed = {shown, helper};
    followed.list();
    ASSERT_TRUE(isReported(1));
    EXPECT_EQ(followed.reported, Reports{"launch browser"});
}

TEST_F(RunningApplicationsTest, NothingIsKnownBeforeItIsFollowed) {
    followed.openWindow(editor, "Editor");
    const auto desktop = Desktop::open(followed.mainLoop);
    ASSERT_TRUE(desktop.has_value());
    followed.drain();
    EXPECT_TRUE((*desktop)->parts().runningApplications.runningApplications().empty());
    EXPECT_EQ((*desktop)->parts().runningApplications.runningApplication(editor.process()), nullptr);
}

TEST_F(RunningApplicationsTest, ALaunchWaitsUntilTheWindowManagerHasFinishedWithTheWindow) {
    followed.start();
    followed.testClient.becomeWindowManager();
    followed.openWindow(editor, "Editor");
    ASSERT_TRUE(followed.runUntil([&] { return followed.testClient.waitingRequests() == 1; }));
    followed.drain();
    EXPECT_EQ(followed.reported, Reports{});
    followed.testClient.answerRequests();
    ASSERT_TRUE(isReported(1));
    EXPECT_EQ(followed.reported, Reports{"launch editor"});
}

TEST_F(RunningApplicationsTest, AnIdentityThatComesBeforeTheWindowManagerHasFinishedWaitsForThat) {
    followed.start();
    followed.testClient.becomeWindowManager();
    const xcb_window_t window = followed.openWindow(editor, "");
    ASSERT_TRUE(followed.runUntil([&] { return followed.testClient.waitingRequests() == 1; }));
    followed.testClient.setText(window, "_GTK_APPLICATION_ID", "editor");
    followed.drain();
    EXPECT_EQ(followed.applications().runningApplication(editor.process())->bundleIdentifier(), "editor");
    followed.drain();
    EXPECT_EQ(followed.reported, Reports{});
    followed.testClient.answerRequests();
    ASSERT_TRUE(isReported(1));
    EXPECT_EQ(followed.reported, Reports{"launch editor"});
}

TEST_F(RunningApplicationsTest, AWindowManagerThatEndsWithoutAnAnswerHoldsNoLaunchBackForLong) {
    followed.start();
    followed.testClient.becomeWindowManager();
    followed.openWindow(editor, "Editor");
    ASSERT_TRUE(followed.runUntil([&] { return followed.testClient.waitingRequests() == 1; }));
    followed.testClient.resign();
    ASSERT_TRUE(isReported(1));
    followed.settle();
    EXPECT_EQ(followed.reported, Reports{"launch editor"});
}

TEST_F(RunningApplicationsTest, AnIdentityThatComesLateLaunchesThen) {
    for (const std::string property : {"WM_CLASS", "_GTK_APPLICATION_ID", "_KDE_NET_WM_DESKTOP_FILE"}) {
        FollowedDesktop desktop;
        desktop.start();
        const ClientProcess client(desktop.server.display());
        const xcb_window_t window = desktop.openWindow(client, "");
        desktop.settle();
        EXPECT_EQ(desktop.reported, Reports{}) << property;
        EXPECT_EQ(desktop.applications().runningApplication(client.process())->bundleIdentifier(), std::nullopt);

        desktop.testClient.setText(window, property, property == "WM_CLASS" ? std::string("e\0Editor\0", 9) : "editor");
        ASSERT_TRUE(desktop.runUntil([&] { return !desktop.reported.empty(); })) << property;
        desktop.testClient.setText(window, property,
                                   property == "WM_CLASS" ? std::string("b\0Browser\0", 10) : "browser");
        desktop.settle();
        EXPECT_EQ(desktop.reported, Reports{"launch editor"}) << property;
    }
}

TEST_F(RunningApplicationsTest, ALaterWindowThatIdentifiesTheApplicationLaunchesIt) {
    followed.start();
    followed.openWindow(editor, "Splash");
    followed.settle();
    EXPECT_EQ(followed.reported, Reports{});
    followed.openWindow(editor, "Editor");
    followed.settle();
    EXPECT_EQ(followed.reported, Reports{"launch editor"});
}

using WholeRunningApplicationsTest = RunningApplicationsTest;

// It takes the ten seconds of the timeout for a name.
TEST_F(WholeRunningApplicationsTest,
       AnApplicationThatNothingIdentifiesIsToldOnceAfterAWhileAndAnswersAfreshAfterwards) {
    followed.start();
    const xcb_window_t window = followed.openWindow(editor, "Nothing");
    ASSERT_TRUE(isReported(1));
    EXPECT_EQ(followed.reported, Reports{"launch nobody"});
    followed.testClient.setText(window, "_GTK_APPLICATION_ID", "editor");
    followed.settle();
    EXPECT_EQ(followed.reported, Reports{"launch nobody"});
    EXPECT_EQ(followed.reportedApplications.front()->bundleIdentifier(), "editor");
}

TEST_F(RunningApplicationsTest, TheEndOfAProcessIsReportedIndependentlyOfTheList) {
    followed.start();
    followed.openWindow(editor, "Editor");
    ASSERT_TRUE(isReported(1));
    editor.end();
    ASSERT_TRUE(isReported(2));
    EXPECT_EQ(followed.reported, (Reports{"launch editor", "terminate editor"}));
    EXPECT_EQ(followed.reportedApplications[0], followed.reportedApplications[1]);
    EXPECT_TRUE(followed.reportedApplications[1]->isTerminated());
    EXPECT_EQ(followed.reportedApplications[1]->bundleIdentifier(), "editor");
    EXPECT_TRUE(followed.applications().runningApplications().empty());
    // The list still names its window.
    followed.settle();
    EXPECT_EQ(followed.reported.size(), 2U);
}

TEST_F(RunningApplicationsTest, AProcessThatClosesItsWindowsStaysKnownAndIsNotLaunchedAgain) {
    followed.start();
    const xcb_window_t window = followed.openWindow(editor, "Editor");
    ASSERT_TRUE(isReported(1));
    followed.closeWindow(window);
    followed.settle();
    EXPECT_EQ(processes(followed.applications().runningApplications()),
              std::vector<ProcessIdentifier>{editor.process()});
    followed.openWindow(editor, "Editor");
    followed.settle();
    EXPECT_EQ(followed.reported, Reports{"launch editor"});
    editor.end();
    ASSERT_TRUE(isReported(2));
    EXPECT_EQ(followed.reported.back(), "terminate editor");
}

TEST_F(RunningApplicationsTest, ARestartOfTheWindowManagerLaunchesAndTerminatesNothing) {
    ClientProcess remote(followed.server.remoteDisplay());
    followed.start();
    followed.openWindow(editor, "Editor");
    followed.openWindow(remote, "Terminal");
    followed.openWindow(browser, "Browser");
    ASSERT_TRUE(isReported(3));
    const Reports before = followed.reported;
    const std::vector<xcb_window_t> all = followed.managed;
    followed.testClient.unlist();
    followed.drain();
    followed.testClient.list({all[2]});
    followed.drain();
    followed.testClient.list({all[2], all[0], all[1]});
    followed.settle();
    EXPECT_EQ(followed.reported, before);
    EXPECT_EQ(followed.applications().runningApplications().size(), 3U);
}

TEST_F(RunningApplicationsTest, ARemoteApplicationEndsWithItsLastWindowAndNotWhenTheListLosesIt) {
    ClientProcess remote(followed.server.remoteDisplay());
    followed.start();
    const xcb_window_t first = followed.openWindow(remote, "Terminal");
    const xcb_window_t second = followed.openWindow(remote, "Terminal");
    ASSERT_TRUE(isReported(1));
    EXPECT_LT(followed.reportedApplications.front()->processIdentifier(), 0);
    followed.closeWindow(first);
    followed.testClient.unlist();
    followed.settle();
    EXPECT_EQ(followed.reported, Reports{"launch terminal"});
    followed.testClient.destroy(second);
    ASSERT_TRUE(isReported(2));
    EXPECT_EQ(followed.reported, (Reports{"launch terminal", "terminate terminal"}));
}

TEST_F(RunningApplicationsTest, AProcessThatTakesOverTheIdsOfOneThatEndedIsLaunched) {
    // It is connected by now and does not take them over itself.
    static_cast<void>(browser.makeWindow());
    followed.start();
    const xcb_window_t window = followed.openWindow(editor, "Editor");
    ASSERT_TRUE(isReported(1));
    editor.end();
    followed.testClient.awaitEnd(window);
    // The server gives the next client the free ids.
    ClientProcess next(followed.server.display());
    ASSERT_EQ(followed.makeWindow(next, "Terminal"), window);
    followed.list();
    ASSERT_TRUE(isReported(3));
    followed.settle();
    EXPECT_EQ(followed.reported, (Reports{"launch editor", "terminate editor", "launch terminal"}));
}

TEST_F(RunningApplicationsTest, AProcessThatEndsBeforeItsLaunchIsNeverReported) {
    followed.start();
    const xcb_window_t window = followed.openWindow(editor, "Nothing");
    followed.settle();
    EXPECT_EQ(followed.applications().runningApplications().size(), 1U);
    editor.end();
    std::erase(followed.managed, window);
    followed.settle();
    EXPECT_EQ(followed.reported, Reports{});
    EXPECT_TRUE(followed.applications().runningApplications().empty());
}

TEST_F(RunningApplicationsTest, AnApplicationIsRegularWhileItHasAStandardWindowInTheTaskBars) {
    TestClient& testClient = followed.testClient;
    followed.start();
    const xcb_window_t window = followed.makeWindow(editor, "Editor");
    testClient.setWords(window, "_NET_WM_WINDOW_TYPE", "ATOM", {testClient.atom("_NET_WM_WINDOW_TYPE_SPLASH")});
    followed.managed = {window};
    followed.list();
    ASSERT_TRUE(isReported(1));
    const auto application = followed.reportedApplications.front();
    const auto policy = [&] {
        // The readings of the turn before no longer count.
        followed.settle();
        return application->activationPolicy();
    };
    EXPECT_EQ(policy(), ActivationPolicy::accessory);
    testClient.setWords(window, "_NET_WM_WINDOW_TYPE", "ATOM", {testClient.atom("_NET_WM_WINDOW_TYPE_NORMAL")});
    EXPECT_EQ(policy(), ActivationPolicy::regular);
    testClient.setWords(window, "_NET_WM_STATE", "ATOM", {testClient.atom("_NET_WM_STATE_SKIP_TASKBAR")});
    EXPECT_EQ(policy(), ActivationPolicy::accessory);
    followed.openWindow(editor, "Editor");
    EXPECT_EQ(policy(), ActivationPolicy::regular);
    editor.end();
    ASSERT_TRUE(isReported(2));
    EXPECT_EQ(application->activationPolicy(), ActivationPolicy::accessory);
}

TEST_F(RunningApplicationsTest, AnApplicationOutlivesTheDesktop) {
    followed.start();
    followed.openWindow(editor, "Editor");
    followed.openWindow(browser, "Nothing");
    ASSERT_TRUE(isReported(1));
    const auto unidentified = followed.applications().runningApplication(browser.process());
    followed.desktop.reset();
    EXPECT_EQ(followed.reportedApplications.front()->bundleIdentifier(), "editor");
    EXPECT_EQ(followed.reportedApplications.front()->localizedName(), std::nullopt);
    EXPECT_EQ(unidentified->bundleIdentifier(), std::nullopt);
    EXPECT_EQ(unidentified->activationPolicy(), ActivationPolicy::accessory);
}

} // namespace
} // namespace platform::x11
