#include "Platform/Simulated/Desktop.h"

#include <gtest/gtest.h>

#include <any>
#include <optional>
#include <string>
#include <vector>

namespace platform::simulated {
namespace {

/// Records the notifications of both names: the name, the process and whether it had terminated by then.
class Listener {
public:
    explicit Listener(NotificationCenter& center) {
        for (const auto name :
             {WorkspaceNotification::didLaunchApplication, WorkspaceNotification::didTerminateApplication}) {
            (void)center.addObserver(name, [this](const Notification& notification) {
                const auto application = std::any_cast<RunningApplicationReference>(
                    notification.userInfo.find(WorkspaceNotification::applicationKey)->second);
                heard.push_back(notification.name + " " + std::to_string(application->processIdentifier()) +
                                (application->isTerminated() ? " terminated" : " running"));
            });
        }
    }

    std::vector<std::string> heard;
};

using Lines = std::vector<std::string>;

TEST(SimulatedApplications, DescribesWhatRuns) {
    Desktop desktop;
    desktop.applications.add({.process = 10,
                              .bundleIdentifier = "org.example.Editor",
                              .localizedName = "Editor",
                              .activationPolicy = ActivationPolicy::accessory});
    desktop.applications.add({.process = 11});
    const auto running = desktop.applications.runningApplications();
    ASSERT_EQ(running.size(), 2U);
    EXPECT_EQ(running[0]->processIdentifier(), 10);
    EXPECT_EQ(running[0]->bundleIdentifier(), "org.example.Editor");
    EXPECT_EQ(running[0]->localizedName(), "Editor");
    EXPECT_EQ(running[0]->activationPolicy(), ActivationPolicy::accessory);
    EXPECT_EQ(running[1]->bundleIdentifier(), std::nullopt);
    EXPECT_EQ(running[1]->activationPolicy(), ActivationPolicy::regular);
    EXPECT_EQ(desktop.applications.runningApplication(11), running[1]);
    EXPECT_EQ(desktop.applications.runningApplication(12), nullptr);
}

TEST(SimulatedApplications, ReportsLaunchesAndEndsInATurnOfTheirOwn) {
    Desktop desktop;
    Listener listener(*desktop.applications.notificationCenter());
    desktop.applications.add({.process = 10});
    Application& launched = desktop.applications.launch({.process = 11});
    EXPECT_EQ(listener.heard, Lines{});
    desktop.mainActor.run();
    EXPECT_EQ(listener.heard, (Lines{"NSWorkspaceDidLaunchApplicationNotification 11 running"}));
    desktop.applications.terminate(launched);
    EXPECT_EQ(listener.heard.size(), 1U);
    desktop.mainActor.run();
    EXPECT_EQ(listener.heard.back(), "NSWorkspaceDidTerminateApplicationNotification 11 terminated");
}

TEST(SimulatedApplications, AnEndedApplicationStaysEndedWhenItsProcessIsUsedAgain) {
    Desktop desktop;
    Application& first = desktop.applications.add({.process = 10});
    Window& window = first.addWindow({});
    desktop.applications.frontmost = &first;
    const auto reference = desktop.applications.runningApplication(10);
    desktop.applications.terminate(first);
    Application& second = desktop.applications.add({.process = 10});
    EXPECT_TRUE(window.isClosed());
    EXPECT_TRUE(reference->isTerminated());
    EXPECT_EQ(desktop.applications.runningApplication(10).get(), &second);
    EXPECT_EQ(desktop.applications.runningApplications().size(), 1U);
    EXPECT_EQ(desktop.workspace.frontmostApplication(), std::nullopt);
    EXPECT_TRUE(second.windows().empty());
}

TEST(SimulatedApplications, TheFrontmostOneIsTheOneThatIsSaidToBe) {
    Desktop desktop;
    EXPECT_EQ(desktop.workspace.frontmostApplication(), std::nullopt);
    desktop.applications.frontmost = &desktop.applications.add({.process = 10});
    EXPECT_EQ(desktop.workspace.frontmostApplication(), 10);
    EXPECT_EQ(desktop.trace.take(), (Lines{"read frontmost application", "read frontmost application"}));
}

} // namespace
} // namespace platform::simulated
