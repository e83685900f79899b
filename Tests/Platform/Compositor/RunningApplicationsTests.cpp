#include "../Linux/Processes/Sleeper.h"
#include "FollowedCompositor.h"

#include <vector>

namespace platform::compositor {
namespace {

using Reports = std::vector<std::string>;

class CompositorApplications : public FollowedCompositor {
protected:
    [[nodiscard]] RunningApplicationReference application(ProcessIdentifier process) {
        return parts().runningApplications.runningApplication(process);
    }

    [[nodiscard]] bool isReported(std::size_t count) {
        return runUntil([&] { return reported.size() >= count; });
    }

    linux::Sleeper editor;
    linux::Sleeper browser;
};

TEST_F(CompositorApplications, ALaunchIsReportedOnceWhenTheFirstWindowIsReady) {
    start();
    Window window = readyWindow(editor.number());
    window.clues.applicationId = "editor";
    window.isReady = false;
    table.put("1", window);
    drain();
    EXPECT_EQ(reported, Reports{});
    window.isReady = true;
    table.put("1", window);
    EXPECT_EQ(reported, Reports{}) << "never within a call";
    openWindow("2", editor.number(), "Editor");
    drain();
    EXPECT_EQ(reported, Reports{"launch editor"});
    EXPECT_EQ(application(editor.number())->bundleIdentifier(), "editor");
    EXPECT_EQ(application(editor.number())->localizedName(), "The editor");
}

TEST_F(CompositorApplications, OneWhoseLaunchIsStillToBeDeliveredIsNotListed) {
    start();
    openWindow("1", editor.number(), "Editor");
    // A reader of the list at this moment, such as a new rule, must not take it for an old application.
    EXPECT_TRUE(parts().runningApplications.runningApplications().empty());
    EXPECT_NE(application(editor.number()), nullptr);
    std::size_t listed = 0;
    static_cast<void>(parts().runningApplications.notificationCenter()->addObserver(
        WorkspaceNotification::didLaunchApplication,
        [&](const Notification&) { listed = parts().runningApplications.runningApplications().size(); }));
    drain();
    EXPECT_EQ(listed, 1U);
}

TEST_F(CompositorApplications, ApplicationsThatWereThereAreKnownInOrderAndNotLaunched) {
    WindowTable::Contents contents;
    contents.windows = {{"9", readyWindow(browser.number())}, {"1", readyWindow(editor.number())}};
    start(std::move(contents));
    std::vector<ProcessIdentifier> processes;
    for (const auto& running : parts().runningApplications.runningApplications()) {
        processes.push_back(running->processIdentifier());
    }
    EXPECT_EQ(processes, (std::vector<ProcessIdentifier>{browser.number(), editor.number()}));
    openWindow("10", browser.number(), "Browser");
    drain();
    EXPECT_EQ(reported, Reports{});
    browser.end();
    ASSERT_TRUE(isReported(1));
    EXPECT_EQ(reported, Reports{"terminate browser"});
}

TEST_F(CompositorApplications, AnIdentityThatComesLateLaunchesThen) {
    start();
    openWindow("1", editor.number(), "");
    drain();
    EXPECT_EQ(reported, Reports{});
    EXPECT_EQ(application(editor.number())->bundleIdentifier(), std::nullopt);
    openWindow("1", editor.number(), "Editor");
    drain();
    EXPECT_EQ(reported, Reports{"launch editor"});
}

TEST_F(CompositorApplications, ALaterWindowThatIdentifiesTheApplicationLaunchesIt) {
    start();
    openWindow("1", editor.number(), "Splash");
    drain();
    EXPECT_EQ(reported, Reports{});
    openWindow("2", editor.number(), "Editor");
    drain();
    EXPECT_EQ(reported, Reports{"launch editor"});
}

TEST_F(CompositorApplications, AnOwnerThatComesLateIsLaunchedThenAndTheFormerOneIsLeft) {
    start();
    openWindow("1", 0, "Editor");
    drain();
    EXPECT_EQ(reported, Reports{});
    EXPECT_TRUE(parts().runningApplications.runningApplications().empty());
    openWindow("1", editor.number(), "Editor");
    drain();
    EXPECT_EQ(reported, Reports{"launch editor"});

    const ProcessIdentifier stranger = -5;
    openWindow("2", stranger, "Browser");
    drain();
    EXPECT_EQ(reported, (Reports{"launch editor", "launch browser"}));
    openWindow("2", browser.number(), "Browser");
    drain();
    EXPECT_EQ(reported, (Reports{"launch editor", "launch browser", "terminate browser", "launch browser"}));
}

TEST_F(CompositorApplications, AProcessEndsWhenTheKernelSaysSoAndNotWithItsWindows) {
    start();
    openWindow("1", editor.number(), "Editor");
    table.remove("1");
    drain();
    EXPECT_EQ(reported, Reports{"launch editor"});
    EXPECT_FALSE(application(editor.number())->isTerminated());
    const auto known = application(editor.number());
    editor.end();
    ASSERT_TRUE(isReported(2));
    EXPECT_EQ(reported.back(), "terminate editor");
    EXPECT_TRUE(known->isTerminated());
    EXPECT_EQ(application(editor.number()), nullptr);
}

TEST_F(CompositorApplications, AProcessThatCannotBeWatchedEndsWithItsLastWindow) {
    start();
    const ProcessIdentifier stranger = -5;
    openWindow("1", stranger, "Editor");
    openWindow("2", stranger, "Editor");
    table.remove("1");
    drain();
    EXPECT_EQ(reported, Reports{"launch editor"});
    table.remove("2");
    drain();
    EXPECT_EQ(reported, (Reports{"launch editor", "terminate editor"}));
}

TEST_F(CompositorApplications, AccessThatEndsAndBeginsAgainLaunchesAndTerminatesNothing) {
    start();
    openWindow("1", editor.number(), "Editor");
    drain();
    table.close();
    drain();
    EXPECT_NE(application(editor.number()), nullptr);
    WindowTable::Contents contents;
    contents.windows = {{"1", *table.find("1")}, {"2", readyWindow(browser.number())}};
    table.open(std::move(contents));
    drain();
    EXPECT_EQ(reported, Reports{"launch editor"});
    EXPECT_NE(application(browser.number()), nullptr) << "it came while the access was closed";
}

TEST_F(CompositorApplications, OnlyAStandardWindowInTheTaskBarMakesARegularApplication) {
    start();
    const auto policyWith = [&](WindowKind kind, bool skipsTaskBars) {
        Window window = readyWindow(editor.number());
        window.kind = kind;
        window.skipsTaskBars = skipsTaskBars;
        table.put("1", window);
        return application(editor.number())->activationPolicy();
    };
    EXPECT_EQ(policyWith(WindowKind::standard, false), ActivationPolicy::regular);
    EXPECT_EQ(policyWith(WindowKind::standard, true), ActivationPolicy::accessory);
    EXPECT_EQ(policyWith(WindowKind::auxiliary, false), ActivationPolicy::accessory);
    EXPECT_EQ(policyWith(WindowKind::ignored, false), ActivationPolicy::accessory);
}

} // namespace
} // namespace platform::compositor
