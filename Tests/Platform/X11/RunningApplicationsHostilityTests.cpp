#include "FollowedDesktop.h"

#include <gtest/gtest.h>

#include <malloc.h>

#include <chrono>

namespace platform::x11 {
namespace {

using Reports = std::vector<std::string>;

TEST(RunningApplicationsHostility, MalformedPropertiesIdentifyNoApplicationAndDoNoHarm) {
    FollowedDesktop followed;
    followed.start();
    TestClient& testClient = followed.testClient;
    const ClientProcess client(followed.server.display());
    const xcb_window_t window = followed.makeWindow(client, "");
    const std::string endless(1U << 20U, 'x');
    testClient.setText(window, "WM_CLASS", endless);
    testClient.setWords(window, "_GTK_APPLICATION_ID", "ATOM", std::vector<std::uint32_t>(1000, 0x41414141));
    testClient.setWords(window, "_KDE_NET_WM_DESKTOP_FILE", "WINDOW", {});
    testClient.setText(window, "_NET_WM_PID", "not a number");
    followed.managed = {window};
    followed.settle();
    EXPECT_EQ(followed.reported, Reports{});

    for (const std::string& value : {std::string(), std::string(1, '\0'), std::string(600, '\0'), endless}) {
        testClient.setText(window, "WM_CLASS", value);
        followed.settle();
        EXPECT_EQ(followed.reported, Reports{});
    }
    testClient.setText(window, "WM_CLASS", std::string("without ends\0Editor", 19));
    followed.settle();
    EXPECT_EQ(followed.reported, Reports{"launch editor"});
}

TEST(RunningApplicationsHostility, AListMayNameWhatItLikes) {
    FollowedDesktop followed;
    followed.start();
    ClientProcess editor(followed.server.display());
    const xcb_window_t dead = editor.makeWindow();
    followed.testClient.destroy(dead);
    const xcb_window_t window = followed.makeWindow(editor, "Editor");
    const xcb_window_t popup = followed.makeWindow(editor, "Editor");
    const std::uint32_t overrideRedirect = 1;
    xcb_change_window_attributes(followed.testClient.connection().raw(), popup, XCB_CW_OVERRIDE_REDIRECT,
                                 &overrideRedirect);
    followed.testClient.list({0, dead, followed.testClient.connection().root(), popup, 0xffffffff, 1, popup});
    followed.drain();
    EXPECT_TRUE(followed.applications().runningApplications().empty());
    followed.managed = {dead, window, window, dead, 0xffffffff, window};
    followed.settle();
    EXPECT_EQ(followed.reported, Reports{"launch editor"});
    EXPECT_EQ(followed.applications().runningApplications().size(), 1U);
    followed.testClient.setText(followed.testClient.connection().root(), "_NET_CLIENT_LIST", "no windows at all");
    followed.drain();
    followed.settle();
    EXPECT_EQ(followed.reported, Reports{"launch editor"});
}

TEST(RunningApplicationsHostility, AWindowThatWasGoneWhenItWasAskedMayBeAnotherOneLater) {
    FollowedDesktop followed;
    followed.start();
    auto first = std::make_unique<ClientProcess>(followed.server.display());
    const xcb_window_t window = first->makeWindow();
    first.reset();
    followed.testClient.awaitEnd(window);
    followed.managed = {window};
    followed.list();
    followed.drain();
    EXPECT_EQ(followed.reported, Reports{});
    // Between here and the next turn the window manager may have listed one, dropped it, and listed another.
    const ClientProcess next(followed.server.display());
    ASSERT_EQ(followed.makeWindow(next, "Editor"), window);
    followed.list();
    ASSERT_TRUE(followed.runUntil([&] { return !followed.reported.empty(); }));
    EXPECT_EQ(followed.reported, Reports{"launch editor"});
}

TEST(RunningApplicationsHostility, AListThatCouldNotBeReadBecauseTheServerWasHeldIsReadLater) {
    FollowedDesktop followed;
    followed.start();
    const ClientProcess editor(followed.server.display());
    const xcb_window_t window = followed.makeWindow(editor, "Editor");
    xcb_connection_t* holder = followed.testClient.connection().raw();
    xcb_grab_server(holder);
    followed.testClient.list({window});
    followed.drain();
    EXPECT_EQ(followed.reported, Reports{});
    xcb_ungrab_server(holder);
    xcb_flush(holder);
    ASSERT_TRUE(followed.runUntil([&] { return !followed.reported.empty(); }));
    EXPECT_EQ(followed.reported, Reports{"launch editor"});
}

struct Count {
    static void created(AXObserver& /*observer*/, const AXUIElement& /*element*/, std::string_view /*notification*/,
                        void* context) {
        ++static_cast<Count*>(context)->windows;
    }

    std::size_t windows = 0;
};

TEST(WholeRunningApplicationsHostility, TwoThousandWindowsAtOnceStallNothingAndLeaveNothingBehind) {
    constexpr std::size_t many = 2000;
    FollowedDesktop followed;
    followed.start();
    const ClientProcess editor(followed.server.display());
    const xcb_window_t first = followed.openWindow(editor, "Editor");
    ASSERT_TRUE(followed.runUntil([&] { return followed.reported.size() == 1; }));
    Count count;
    const auto observer =
        followed.desktop->parts().accessibilityObservers.createObserver(editor.process(), &Count::created);
    ASSERT_TRUE(observer.has_value());
    ASSERT_EQ((*observer)->addNotification(followed.desktop->parts().accessibility.applicationElement(editor.process()),
                                           AXNotification::windowCreated, &count),
              AXError::success);

    std::vector<std::size_t> memory;
    for (int round = 1; round <= 3; ++round) {
        followed.managed = {first};
        for (std::size_t index = 0; index < many; ++index) {
            followed.managed.push_back(editor.makeWindow());
        }
        followed.list();
        const std::size_t expected = many * static_cast<std::size_t>(round);
        ASSERT_TRUE(followed.runUntil([&] { return count.windows >= expected; }));
        EXPECT_EQ(count.windows, expected);

        for (const xcb_window_t window : followed.managed) {
            if (window != first) {
                xcb_destroy_window(followed.testClient.connection().raw(), window);
            }
        }
        followed.managed = {first};
        followed.list();
        ASSERT_TRUE(followed.runUntil([&, turns = 0]() mutable { return ++turns > 100; }));
        followed.settle();
        memory.push_back(mallinfo2().uordblks);
    }
    EXPECT_LT(followed.longestTurn(), FollowedDesktop::longestAllowedTurn);
    EXPECT_LT(memory.back(), memory.front() + 64 * 1024);
    EXPECT_EQ(followed.reported, Reports{"launch editor"});
    RecordProperty(
        "longest turn in microseconds",
        static_cast<int>(std::chrono::duration_cast<std::chrono::microseconds>(followed.longestTurn()).count()));
}

} // namespace
} // namespace platform::x11
