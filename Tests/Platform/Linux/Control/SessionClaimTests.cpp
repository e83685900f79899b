#include "Platform/Linux/Control/ControlClient.h"
#include "Platform/Linux/Control/SessionClaim.h"
#include "Tests/Platform/Linux/Control/ControlServer.h"

#include <gtest/gtest.h>

#include <poll.h>

#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace platform::linux {
namespace {

TEST(SessionClaim, TheFirstHasTheSession) {
    EXPECT_TRUE(claimSession(uniqueSession("claim")));
}

TEST(SessionClaim, TheSecondAsksTheFirstToShowItself) {
    const Session session = uniqueSession("claimed");
    ControlServer first(session);
    const auto second = claimSession(session);
    ASSERT_FALSE(second);
    EXPECT_TRUE(second.error().asked);
    EXPECT_TRUE(ControlClient::ofSession(session).quit());
    EXPECT_EQ(first.asked(), (std::vector<std::string>{"open", "quit"}));
}

TEST(SessionClaim, TheSecondDoesNotWaitForeverForAFirstThatHangs) {
    const Session session = uniqueSession("hung");
    const auto first = SingleInstance::acquire(session);
    const auto second = claimSession(session);
    ASSERT_FALSE(second);
    EXPECT_FALSE(second.error().asked);
}

TEST(SessionClaim, TheSecondFollowsAFirstThatEndsWithoutAnAnswer) {
    const Session session = uniqueSession("ending");
    std::optional first = SingleInstance::acquire(session);
    ASSERT_TRUE(*first);
    std::thread ending([&] {
        // An ending program still has the socket, but accepts no connection: it ends once the second has connected.
        constexpr int patience = 10'000;
        pollfd second{.fd = (*first)->listeningSocket(), .events = POLLIN, .revents = 0};
        EXPECT_EQ(::poll(&second, 1, patience), 1);
        first.reset();
    });
    EXPECT_TRUE(claimSession(session));
    ending.join();
}

} // namespace
} // namespace platform::linux
