#include "Platform/Linux/Loop/MainLoop.h"

#include <gtest/gtest.h>

#include <sched.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace platform::linux {
namespace {

using std::chrono::milliseconds;

/// Both ends of a pipe.
class Pipe {
public:
    Pipe() { EXPECT_EQ(pipe(ends.data()), 0); }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        close(ends[0]);
        close(ends[1]);
    }

    [[nodiscard]] int readingEnd() const { return ends[0]; }
    void write(char byte) const { EXPECT_EQ(::write(ends[1], &byte, 1), 1); }

    [[nodiscard]] char read() const {
        char byte = 0;
        EXPECT_EQ(::read(ends[0], &byte, 1), 1);
        return byte;
    }

private:
    std::array<int, 2> ends{};
};

TEST(MainLoop, EndsWithTheFirstStatusThatItIsGiven) {
    MainLoop loop;
    loop.post([&] {
        loop.end(3);
        loop.end(4);
    });
    EXPECT_EQ(loop.run(), 3);
}

TEST(MainLoop, ABusySourceDoesNotDelayTheOthers) {
    constexpr int often = 1000;
    MainLoop loop;
    const Pipe busy;
    const Pipe quiet;
    int turns = 0;
    std::function<void()> again = [&] {
        if (++turns >= often) {
            loop.end(1);
        }
        loop.post([&] { again(); });
    };
    again();
    const auto busyWatch = loop.watch(busy.readingEnd(), [] { return true; }, [&] { ++turns; });
    const auto quietWatch = loop.watch(quiet.readingEnd(), [] { return false; }, [&] { loop.end(0); });
    quiet.write('x');
    EXPECT_EQ(loop.run(), 0);
    EXPECT_LT(turns, 10);
}

TEST(MainLoop, RunsPostedWorkInOrderAndWhatItPostsInALaterTurn) {
    MainLoop loop;
    std::vector<int> order;
    loop.post([&] {
        order.push_back(1);
        loop.post([&] {
            order.push_back(3);
            loop.end(0);
        });
    });
    loop.post([&] { order.push_back(2); });
    EXPECT_EQ(loop.run(), 0);
    EXPECT_EQ(order, (std::vector{1, 2, 3}));
}

TEST(MainLoop, RunsScheduledWorkInTheOrderOfItsTimesAndNeverEarly) {
    MainLoop loop;
    const Instant start = loop.now();
    std::vector<std::string> order;
    const auto late = loop.schedule(start + milliseconds(30), milliseconds(1), [&] {
        order.emplace_back("late");
        EXPECT_GE(loop.now(), start + milliseconds(30));
        loop.end(0);
    });
    const auto early = loop.schedule(start + milliseconds(10), milliseconds(1), [&] {
        order.emplace_back("early");
        EXPECT_GE(loop.now(), start + milliseconds(10));
    });
    EXPECT_EQ(loop.run(), 0);
    EXPECT_EQ(order, (std::vector<std::string>{"early", "late"}));
}

TEST(MainLoop, DropsScheduledWorkWithItsHandle) {
    MainLoop loop;
    auto dropped = loop.schedule(loop.now() + milliseconds(5), milliseconds(1), [] { FAIL() << "was cancelled"; });
    const auto end = loop.schedule(loop.now() + milliseconds(20), milliseconds(1), [&] { loop.end(0); });
    dropped.reset();
    EXPECT_EQ(loop.run(), 0);
}

TEST(MainLoop, LetsScheduledWorkDropItsOwnHandle) {
    MainLoop loop;
    std::unique_ptr<ScheduledWork> self;
    bool didRun = false;
    self = loop.schedule(loop.now(), milliseconds(1), [&] {
        self.reset();
        didRun = true;
        loop.end(0);
    });
    EXPECT_EQ(loop.run(), 0);
    EXPECT_TRUE(didRun);
}

TEST(MainLoop, RunsWorkWithoutAnOwnerAtItsTimeAndFreesIt) {
    MainLoop loop;
    const auto held = std::make_shared<int>(0);
    const Instant start = loop.now();
    loop.runLater(start + milliseconds(10), milliseconds(1), [&loop, held, start] {
        EXPECT_GE(loop.now(), start + milliseconds(10));
        ++*held;
    });
    const auto end = loop.schedule(start + milliseconds(30), milliseconds(1), [&] { loop.end(0); });
    EXPECT_EQ(loop.run(), 0);
    EXPECT_EQ(*held, 1);
    EXPECT_EQ(held.use_count(), 1);
}

TEST(MainLoop, DestroysPendingWorkWithoutAnOwnerAtItsEnd) {
    const auto held = std::make_shared<int>(0);
    {
        MainLoop loop;
        loop.runLater(loop.now() + std::chrono::hours(1), milliseconds(1), [held] { ++*held; });
        EXPECT_EQ(held.use_count(), 2);
    }
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_EQ(*held, 0);
}

TEST(MainLoop, ServesADescriptorThatIsReadable) {
    MainLoop loop;
    const Pipe pipe;
    std::string received;
    const auto watch = loop.watch(
        pipe.readingEnd(), [] { return false; },
        [&] {
            received += pipe.read();
            loop.end(0);
        });
    loop.post([&] { pipe.write('x'); });
    EXPECT_EQ(loop.run(), 0);
    EXPECT_EQ(received, "x");
}

TEST(MainLoop, ServesWhatWasReadBeforeItWouldWait) {
    MainLoop loop;
    const Pipe pipe;
    bool pending = true;
    const auto watch = loop.watch(
        pipe.readingEnd(), [&] { return pending; },
        [&] {
            pending = false;
            loop.end(7);
        });
    EXPECT_EQ(loop.run(), 7);
}

TEST(MainLoop, IsCurrentOnItsOwnThreadOnly) {
    const MainLoop loop;
    bool elsewhere = true;
    std::thread([&] { elsewhere = loop.isCurrent(); }).join();
    EXPECT_TRUE(loop.isCurrent());
    EXPECT_FALSE(elsewhere);
}

/// In a process of its own, because it changes the blocked signals.
int runUntilSignal(int signal) {
    MainLoop loop;
    loop.endOnTerminationSignals();
    loop.post([signal] { kill(getpid(), signal); });
    return loop.run();
}

TEST(MainLoopDeathTest, EndsWithStatusZeroOnTerminationSignals) {
    EXPECT_EXIT(_exit(runUntilSignal(SIGTERM)), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(_exit(runUntilSignal(SIGINT)), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(_exit(runUntilSignal(SIGHUP)), testing::ExitedWithCode(0), "");
}

TEST(MainLoopDeathTest, SurvivesAHangUpOfItsSessionIfHangUpIsIgnored) {
    const auto hangUp = [] {
        signal(SIGHUP, SIG_IGN);
        MainLoop loop;
        loop.endOnTerminationSignals();
        kill(getpid(), SIGHUP);
        const auto end = loop.schedule(loop.now() + milliseconds(20), milliseconds(1), [&] { loop.end(5); });
        return loop.run();
    };
    EXPECT_EXIT(_exit(hangUp()), testing::ExitedWithCode(5), "");
}

/// The clocks of the kernel's timers for this process.
std::multiset<std::string> clocksOfTimers() {
    std::multiset<std::string> clocks;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fdinfo")) {
        std::ifstream facts(entry.path());
        for (std::string line; std::getline(facts, line);) {
            if (line.starts_with("clockid:")) {
                clocks.insert(line.substr(line.find_first_of("0123456789")));
            }
        }
    }
    return clocks;
}

TEST(MainLoop, HoldsItsTimersOnTheClockThatCountsOnWhileTheMachineSleeps) {
    const std::multiset<std::string> before = clocksOfTimers();
    MainLoop loop;
    std::multiset<std::string> during;
    const auto late = loop.schedule(loop.now() + std::chrono::hours(1), milliseconds(1), [] {});
    loop.post([&] {
        during = clocksOfTimers();
        loop.end(0);
    });
    EXPECT_EQ(loop.run(), 0);
    std::multiset<std::string> expected = before;
    expected.insert(std::to_string(CLOCK_BOOTTIME));
    EXPECT_EQ(during, expected);
}

/// Runs `main` in a process for which the machine seems to have slept for an hour: CLOCK_BOOTTIME is that much ahead of
/// CLOCK_MONOTONIC (time_namespaces(7)). Returns its exit status; empty if no such process is possible.
std::optional<int> statusAfterAnHourOfSleep(const std::function<int()>& main) {
    constexpr int impossible = 99;
    const pid_t outer = fork();
    if (outer == 0) {
        if (unshare(CLONE_NEWTIME) != 0 && unshare(CLONE_NEWUSER | CLONE_NEWTIME) != 0) {
            _exit(impossible);
        }
        std::ofstream("/proc/self/timens_offsets") << "boottime 3600 0\n";
        // The new clock applies to the children.
        const pid_t inner = fork();
        if (inner == 0) {
            alarm(10);
            _exit(main());
        }
        int status = 0;
        _exit(waitpid(inner, &status, 0) == inner && WIFEXITED(status) ? WEXITSTATUS(status) : 1);
    }
    int status = 0;
    EXPECT_EQ(waitpid(outer, &status, 0), outer);
    EXPECT_TRUE(WIFEXITED(status));
    return WEXITSTATUS(status) == impossible ? std::nullopt : std::optional(WEXITSTATUS(status));
}

TEST(MainLoop, CountsTheTimeThatTheMachineWasAsleep) {
    const Instant before = MainLoop().now();
    const std::optional<int> status = statusAfterAnHourOfSleep([before] {
        MainLoop loop;
        if (loop.now() < before + std::chrono::hours(1)) {
            return 1;
        }
        // On the other clock this would take another hour.
        const auto end = loop.schedule(loop.now() + milliseconds(10), milliseconds(1), [&] { loop.end(0); });
        return loop.run();
    });
    if (!status) {
        GTEST_SKIP() << "no time namespaces here";
    }
    EXPECT_EQ(*status, 0);
}

} // namespace
} // namespace platform::linux
