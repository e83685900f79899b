#include "FakeKWin.h"
#include "Platform/KWin/Session.h"
#include "Tests/Platform/Linux/Control/MessageBus.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>

namespace platform::kwin {
namespace {

class KWinSessionTest : public testing::Test {
protected:
    MessageBus daemon;
    linux::MainLoop loop;

    void SetUp() override { ::setenv("DBUS_SESSION_BUS_ADDRESS", daemon.address().c_str(), 1); }

    void TearDown() override { ::unsetenv("DBUS_SESSION_BUS_ADDRESS"); }

    [[nodiscard]] bool isFound(Duration patience) { return isThere(loop, loop.now() + patience); }
};

TEST_F(KWinSessionTest, IsFoundWhereItOwnsItsName) {
    daemon.start();
    EXPECT_FALSE(isFound(std::chrono::seconds(10)));
    FakeKWin kwin(daemon.address());
    kwin.start();
    EXPECT_TRUE(isFound(std::chrono::seconds(10)));
    kwin.stop();
    EXPECT_FALSE(isFound(std::chrono::seconds(10)));
}

TEST_F(KWinSessionTest, IsNotThereWithoutABus) {
    const Instant begin = loop.now();
    EXPECT_FALSE(isFound(std::chrono::seconds(10)));
    EXPECT_LT(loop.now() - begin, std::chrono::seconds(5));
}

} // namespace
} // namespace platform::kwin
