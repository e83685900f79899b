#include "ClientProcess.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/X11/Event.h"
#include "Platform/X11/ManagedWindows.h"
#include "Platform/X11/ScopedPropertyWatch.h"
#include "TestClient.h"
#include "XServer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <utility>

namespace platform::x11 {
namespace {

Connection connect(const XServer& server, linux::MainLoop& loop) {
    auto opened = Connection::open(server.display(), loop.turnDeadline());
    EXPECT_TRUE(opened.has_value());
    return *std::move(opened);
}

TEST(EventSelection, AMomentaryWatchLeavesTheLastingSelectionAlone) {
    const XServer server;
    linux::MainLoop loop;
    Connection connection = connect(server, loop);
    TestClient testClient(server.display());
    const ClientProcess client(server.display());
    const xcb_window_t window = client.makeWindow();
    EventSelection selection(connection);
    const auto reportsChange = [&] {
        connection.deadline().begin();
        std::free(xcb_get_input_focus_reply(connection.raw(), xcb_get_input_focus(connection.raw()), nullptr));
        testClient.setText(window, "WM_CLASS", "changed");
        return connection.waitForEvent(connection.deadline().end(), [&](const xcb_generic_event_t& event) {
            return eventKind(event) == XCB_PROPERTY_NOTIFY;
        });
    };
    {
        const ScopedPropertyWatch watch(connection, selection, window);
        EXPECT_TRUE(reportsChange());
    }
    EXPECT_FALSE(reportsChange());
    selection.select(window, XCB_EVENT_MASK_PROPERTY_CHANGE);
    {
        const ScopedPropertyWatch watch(connection, selection, window);
    }
    EXPECT_TRUE(reportsChange());
    selection.select(window, XCB_EVENT_MASK_NO_EVENT);
    EXPECT_FALSE(reportsChange());
}

/// Records its notifications.
class Notes final : public ManagedWindows::Follower {
public:
    std::vector<xcb_window_t> appeared;
    std::vector<xcb_window_t> vanished;

    WindowInterest windowAppeared(xcb_window_t window, const linux::ApplicationClues& /*clues*/,
                                  bool /*wasThere*/) override {
        appeared.push_back(window);
        return {};
    }

    void windowChangedIdentity(xcb_window_t /*window*/, const linux::ApplicationClues& /*clues*/) override {}
    void windowBecameReady(xcb_window_t /*window*/, const ManagedWindow& /*facts*/) override {}

    void windowVanished(xcb_window_t window, const ManagedWindow& /*facts*/) override { vanished.push_back(window); }
};

/// A server that another client blocks while this lives.
class HeldServer {
public:
    explicit HeldServer(TestClient& testClient)
        : testClient(testClient) {
        xcb_grab_server(testClient.connection().raw());
        static_cast<void>(testClient.atom("a round trip"));
    }

    HeldServer(const HeldServer&) = delete;
    HeldServer& operator=(const HeldServer&) = delete;

    ~HeldServer() {
        xcb_ungrab_server(testClient.connection().raw());
        static_cast<void>(testClient.atom("a round trip"));
    }

private:
    TestClient& testClient;
};

/// Windows of one client, followed on a server without other clients.
class FollowedWindows : public testing::Test {
protected:
    FollowedWindows() { managed.start(notes); }

    XServer server;
    linux::MainLoop mainLoop;
    Connection connection = connect(server, mainLoop);
    TestClient testClient{server.display()};
    EventSelection selection{connection};
    ManagedWindows managed{connection, selection, mainLoop};
    Notes notes;
    ClientProcess client{server.display()};
};

TEST_F(FollowedWindows, ThatAServerDidNotAnswerForInTimeAreAskedForAgain) {
    using Windows = std::vector<xcb_window_t>;
    const xcb_window_t first = client.makeWindow();
    const xcb_window_t second = client.makeWindow();
    const auto work = [&] {
        connection.deadline().begin();
        managed.work();
    };
    const auto awaitWork = [&] {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (!managed.hasWork() && std::chrono::steady_clock::now() < end) {
            sd_event_run(mainLoop.handle(), 10'000);
        }
    };
    connection.deadline().begin();
    managed.follow({first});
    work();
    ASSERT_EQ(notes.appeared, Windows{first});
    {
        const HeldServer held(testClient);
        managed.follow({second});
        work();
        EXPECT_FALSE(managed.hasWork()) << "a server that is held must not be asked again at once";
    }
    EXPECT_EQ(notes.appeared, Windows{first});
    EXPECT_EQ(notes.vanished, Windows{});
    testClient.destroy(first);
    awaitWork();
    ASSERT_TRUE(managed.hasWork());
    work();
    EXPECT_EQ(notes.appeared, (Windows{first, second}));
    EXPECT_EQ(notes.vanished, Windows{first});
    EXPECT_EQ(managed.find(first), nullptr);
    EXPECT_FALSE(managed.hasWork());
}

TEST_F(FollowedWindows, ThatAreThereGoBeforeThousandsThatHaveGone) {
    const xcb_window_t there = client.makeWindow();
    std::vector<xcb_window_t> gone;
    for (std::uint32_t number = 1; number <= 4000; ++number) {
        gone.push_back(there + 1000 + number);
    }
    const auto work = [&] {
        connection.deadline().begin();
        managed.work();
    };
    connection.deadline().begin();
    managed.follow(gone);
    work();
    managed.follow({there});
    work();
    EXPECT_EQ(notes.appeared, std::vector<xcb_window_t>{there});
    // The server has answered for each of those before, even if the client had not read every reply by then.
    int turns = 0;
    for (; managed.hasWork() && turns < 100; ++turns) {
        work();
    }
    EXPECT_FALSE(managed.hasWork());
    EXPECT_GT(turns, 1) << "others have turns in between";
}

TEST_F(FollowedWindows, ThatOutlastTheirProcessForAMomentAreNotTakenForNewOnes) {
    const xcb_window_t window = client.makeWindow();
    connection.deadline().begin();
    managed.follow({window});
    managed.work();
    ASSERT_EQ(notes.appeared.size(), 1U);
    // The server has not noticed yet that the process is gone.
    managed.forgetOwner(client.process());
    EXPECT_TRUE(managed.hasWork());
    managed.work();
    EXPECT_EQ(notes.appeared.size(), 1U);
    EXPECT_EQ(managed.find(window), nullptr);
}

TEST_F(FollowedWindows, ThatAreHiddenAreKnownUntilTheyAreDestroyed) {
    const xcb_window_t window = client.makeWindow();
    connection.deadline().begin();
    managed.follow({window});
    managed.work();
    managed.follow({});
    managed.work();
    ASSERT_NE(managed.find(window), nullptr);
    EXPECT_FALSE(managed.find(window)->isListed);
    testClient.destroy(window);
    EXPECT_TRUE(connection.waitForEvent(connection.deadline().end(), [&](const xcb_generic_event_t& event) {
        managed.handle(event);
        return !notes.vanished.empty();
    }));
    EXPECT_EQ(notes.vanished, std::vector{window});
    EXPECT_EQ(managed.find(window), nullptr);
}

} // namespace
} // namespace platform::x11
