#include "FollowedDesktop.h"
#include "LogicOnDesktop.h"
#include "SlowDisplay.h"
#include "Tessel/AppState.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

namespace platform::x11 {
namespace {

using std::chrono::milliseconds;
using tessel::AppStatus;

/// A desktop whose window managers are processes that the test ends as it likes.
class X11WindowManagerWatch : public testing::Test {
protected:
    /// Sets the properties that a window manager sets when it starts.
    void announce(const ClientProcess& program) { announce(program.makeWindow()); }

    void announce(xcb_window_t check) {
        followed.testClient.setWords(check, "_NET_SUPPORTING_WM_CHECK", "WINDOW", {check});
        support();
        followed.testClient.setWords(root(), "_NET_SUPPORTING_WM_CHECK", "WINDOW", {check});
    }

    void support() {
        TestClient& testClient = followed.testClient;
        testClient.setWords(root(), "_NET_SUPPORTED", "ATOM",
                            {testClient.atom("_NET_ACTIVE_WINDOW"), testClient.atom("_NET_CLIENT_LIST"),
                             testClient.atom("_NET_MOVERESIZE_WINDOW")});
    }

    [[nodiscard]] xcb_window_t root() { return followed.testClient.connection().root(); }

    [[nodiscard]] bool isTrusted() { return followed.desktop->parts().accessibility.isProcessTrusted(); }

    FollowedDesktop followed;
    std::optional<ClientProcess> manager{std::in_place, followed.server.display()};
};

/// The same with the state of the program, whose polls never come: its clock stands still.
class X11Permission : public X11WindowManagerWatch {
protected:
    void start() {
        followed.start();
        logic.emplace(followed);
        dispatcher.emplace();
        state.emplace(logic->other.standardUserDefaults, false, *dispatcher);
        changes = state->objectWillChange().subscribe([this] { ++changeCount; });
    }

    [[nodiscard]] bool becomes(AppStatus status) {
        return followed.runUntil([&] { return state->status() == status; });
    }

    std::optional<LogicOnDesktop> logic;
    std::optional<corvid::HotKeyDispatcher> dispatcher;
    std::optional<tessel::AppState> state;
    corvid::Subscription changes;
    int changeCount = 0;
};

TEST_F(X11Permission, FollowsAWindowManagerThatComesAndIsKilledWithoutAPoll) {
    start();
    EXPECT_EQ(state->status(), AppStatus::waitingForPermission);
    announce(*manager);
    EXPECT_TRUE(becomes(AppStatus::active));
    manager.reset();
    EXPECT_TRUE(becomes(AppStatus::waitingForPermission));
    manager.emplace(followed.server.display());
    announce(*manager);
    EXPECT_TRUE(becomes(AppStatus::active));
    EXPECT_EQ(logic->other.mainActor.now(), Instant()) << "no poll was waited for";
}

TEST_F(X11Permission, IsKeptWhileOneWindowManagerReplacesAnother) {
    announce(*manager);
    start();
    ASSERT_EQ(state->status(), AppStatus::active);
    int notices = 0;
    const auto center = followed.desktop->parts().accessibility.notificationCenter();
    static_cast<void>(center->addObserver(AccessNotification::didChange, [&](const Notification&) { ++notices; }));
    manager.reset();
    ASSERT_TRUE(followed.runUntil([&] { return !isTrusted(); }));
    manager.emplace(followed.server.display());
    announce(*manager);
    ASSERT_TRUE(followed.runUntil([&] { return notices > 0; }));
    EXPECT_TRUE(isTrusted());
    EXPECT_EQ(changeCount, 0) << "the shortcuts were given back and taken again";
}

TEST_F(X11WindowManagerWatch, SeesEveryStepOfAnAnnouncement) {
    const xcb_window_t check = manager->makeWindow();
    followed.start();
    followed.testClient.setWords(root(), "_NET_SUPPORTING_WM_CHECK", "WINDOW", {check});
    followed.drain();
    EXPECT_FALSE(isTrusted()) << "the window does not name itself yet";
    followed.testClient.setWords(check, "_NET_SUPPORTING_WM_CHECK", "WINDOW", {check});
    followed.drain();
    EXPECT_FALSE(isTrusted()) << "it supports nothing yet";
    support();
    followed.drain();
    EXPECT_TRUE(isTrusted());
    followed.testClient.removeProperty(check, "_NET_SUPPORTING_WM_CHECK");
    followed.drain();
    EXPECT_FALSE(isTrusted());
}

TEST_F(X11WindowManagerWatch, FollowsTheNextWindowOfTheSameNumber) {
    const xcb_window_t check = manager->makeWindow();
    announce(check);
    followed.start();
    followed.drain();
    ASSERT_TRUE(isTrusted());
    for (int times = 0; times < 2; ++times) {
        manager.reset();
        ASSERT_TRUE(followed.runUntil([&] { return !isTrusted(); })) << times;
        manager.emplace(followed.server.display());
        ASSERT_EQ(manager->makeWindow(), check) << "the server numbers windows in another way than was known";
        announce(check);
        ASSERT_TRUE(followed.runUntil([&] { return isTrusted(); })) << times;
    }
}

TEST_F(X11WindowManagerWatch, TheRootWindowIsNoProofOfAWindowManager) {
    followed.start();
    support();
    followed.testClient.setWords(root(), "_NET_SUPPORTING_WM_CHECK", "WINDOW", {root()});
    followed.drain();
    EXPECT_FALSE(isTrusted());
    announce(*manager);
    followed.drain();
    EXPECT_TRUE(isTrusted());
    manager.reset();
    EXPECT_TRUE(followed.runUntil([&] { return !isTrusted(); }));
}

TEST_F(X11WindowManagerWatch, WhatAServerDoesNotAnswerInTimeIsAskedAgain) {
    announce(*manager);
    SlowDisplay slow{followed.server.remoteDisplay(), {}};
    ::setenv("DISPLAY", slow.display().c_str(), 1);
    followed.start();
    followed.drain();
    ASSERT_TRUE(isTrusted());
    followed.forgetLongestTurn();
    slow.setDelay(milliseconds(400));
    manager.reset();
    ASSERT_TRUE(followed.runUntil([&] { return followed.longestTurn() >= linux::TurnDeadline::turnLimit; }));
    EXPECT_TRUE(isTrusted()) << "no answer is no change";
    slow.setDelay({});
    EXPECT_TRUE(followed.runUntil([&] { return !isTrusted(); }));
}

} // namespace
} // namespace platform::x11
