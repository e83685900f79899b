#include "Platform/Linux/Processes/ProcessExit.h"
#include "Sleeper.h"

#include <gtest/gtest.h>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <limits>

namespace platform::linux {
namespace {

/// Runs the loop until it has ended, or for some seconds.
int runBounded(MainLoop& loop) {
    constexpr int tooLate = 99;
    const auto limit = loop.schedule(loop.now() + std::chrono::seconds(10), {}, [&] { loop.end(tooLate); });
    return loop.run();
}

TEST(ProcessExit, TheEndIsReportedOnceAndTheCallbackMayDestroyTheWatch) {
    MainLoop loop;
    Sleeper sleeper;
    int reported = 0;
    std::unique_ptr<ProcessExit> exit = ProcessExit::watch(loop, sleeper.number(), [&] {
        ++reported;
        EXPECT_TRUE(exit->hasHappened());
        exit.reset();
        // A watch that still existed would be called again before this.
        loop.post([&] { loop.post([&] { loop.end(0); }); });
    });
    ASSERT_NE(exit, nullptr);
    EXPECT_FALSE(exit->hasHappened());
    loop.post([&] { sleeper.end(); });
    EXPECT_EQ(runBounded(loop), 0);
    EXPECT_EQ(reported, 1);
}

TEST(ProcessExit, AWatchThatIsKeptIsNotCalledAgain) {
    MainLoop loop;
    Sleeper sleeper;
    int reported = 0;
    const auto exit = ProcessExit::watch(loop, sleeper.number(), [&] {
        ++reported;
        loop.post([&] { loop.post([&] { loop.end(0); }); });
    });
    ASSERT_NE(exit, nullptr);
    sleeper.end();
    EXPECT_TRUE(exit->hasHappened());
    EXPECT_EQ(runBounded(loop), 0);
    EXPECT_EQ(reported, 1);
}

TEST(ProcessExit, ADestroyedWatchReportsNothing) {
    MainLoop loop;
    Sleeper first;
    Sleeper second;
    bool isFirstReported = false;
    auto dropped = ProcessExit::watch(loop, first.number(), [&] { isFirstReported = true; });
    const auto kept = ProcessExit::watch(loop, second.number(), [&] { loop.end(0); });
    dropped.reset();
    first.end();
    second.end();
    EXPECT_EQ(runBounded(loop), 0);
    EXPECT_FALSE(isFirstReported);
}

TEST(ProcessExit, AProcessThatIsNotThereCannotBeWatched) {
    MainLoop loop;
    Sleeper sleeper;
    const pid_t gone = sleeper.number();
    sleeper.end();
    for (const ProcessIdentifier process : {gone, 0, -1, -4711, std::numeric_limits<ProcessIdentifier>::max()}) {
        EXPECT_EQ(ProcessExit::watch(loop, process, [] {}), nullptr) << process;
    }
}

} // namespace
} // namespace platform::linux
