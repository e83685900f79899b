#include "Platform/Linux/MainLoop.h"

#include <gtest/gtest.h>

#include <signal.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <functional>
#include <memory>
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

TEST(MainLoop, WhoeverAlwaysHasMoreToDoKeepsNobodyElseWaiting) {
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

TEST(MainLoop, RunsWorkThatBelongsToNobodyOnceItsTimeHasComeAndKeepsNothingOfIt) {
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

TEST(MainLoop, DropsWorkThatBelongsToNobodyWhenItGoes) {
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

/// In a process of its own: it changes which signals are blocked.
int runUntilSignal(int signal) {
    MainLoop loop;
    loop.endOnTerminationSignals();
    loop.post([signal] { kill(getpid(), signal); });
    return loop.run();
}

TEST(MainLoopDeathTest, EndsWithStatusZeroOnTerminationSignals) {
    EXPECT_EXIT(_exit(runUntilSignal(SIGTERM)), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(_exit(runUntilSignal(SIGINT)), testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace platform::linux
