#include "CorvidKit/Concurrency.h"
#include "Platform/Simulated/Desktop.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvid {
namespace {

using namespace std::chrono_literals;
using platform::Instant;
using platform::simulated::MainActor;

class RepeatingTasks : public testing::Test {
protected:
    RepeatingTask::Action noteTime() {
        return [this] { runs.push_back(actor.now().time_since_epoch()); };
    }

    platform::simulated::Desktop desktop;
    MainActor& actor = desktop.mainActor;
    std::vector<platform::Duration> runs;
};

TEST_F(RepeatingTasks, RunFirstOneIntervalAfterCreationAndThenEveryInterval) {
    const RepeatingTask task(2s, noteTime());
    actor.run();
    EXPECT_TRUE(runs.empty());
    actor.advance(1999ms);
    EXPECT_TRUE(runs.empty());
    actor.advance(1ms);
    actor.advance(4s);
    EXPECT_EQ(runs, (std::vector<platform::Duration>{2s, 4s, 6s}));
}

TEST_F(RepeatingTasks, SleepWithAToleranceOfTenSecondsWhateverTheInterval) {
    const RepeatingTask poll(2s, noteTime());
    const RepeatingTask refresh(3600s, [] {});
    EXPECT_EQ(actor.waiting(), (std::vector<MainActor::Waiting>{{Instant(2s), 10s}, {Instant(3600s), 10s}}));
    actor.advance(2s);
    EXPECT_EQ(actor.waiting().back(), (MainActor::Waiting{Instant(4s), 10s}));
}

TEST_F(RepeatingTasks, MayComeTwelveSecondsApartWithATwoSecondInterval) {
    actor.setExhaustsTolerance(true);
    const RepeatingTask task(2s, noteTime());
    actor.advance(30s);
    EXPECT_EQ(runs, (std::vector<platform::Duration>{12s, 24s}));
}

TEST_F(RepeatingTasks, WithASlowActionWaitAWholeIntervalAfterIt) {
    const RepeatingTask task(2s, [this] {
        runs.push_back(actor.now().time_since_epoch());
        actor.pass(5s);
    });
    actor.advance(16s);
    EXPECT_EQ(runs, (std::vector<platform::Duration>{2s, 9s, 16s}));
    EXPECT_EQ(actor.waiting().size(), 1U);
}

TEST_F(RepeatingTasks, DroppedBeforeTheFirstIntervalNeverRun) {
    std::optional<RepeatingTask> task;
    task.emplace(2s, noteTime());
    actor.advance(1999ms);
    task.reset();
    EXPECT_TRUE(actor.waiting().empty());
    actor.advance(10s);
    EXPECT_TRUE(runs.empty());
}

TEST_F(RepeatingTasks, CancelledDuringTheirActionFinishItAndDoNotRunAgain) {
    std::vector<std::string> order;
    std::optional<RepeatingTask> task;
    task.emplace(2s, [&] {
        task->cancel();
        order.emplace_back("finished");
    });
    actor.advance(2s);
    EXPECT_TRUE(actor.waiting().empty());
    actor.advance(10s);
    EXPECT_EQ(order, (std::vector<std::string>{"finished"}));
}

TEST_F(RepeatingTasks, CancelledTwiceAreCancelled) {
    RepeatingTask task(2s, noteTime());
    actor.advance(2s);
    task.cancel();
    task.cancel();
    actor.advance(10s);
    EXPECT_EQ(runs, (std::vector<platform::Duration>{2s}));
}

TEST_F(RepeatingTasks, DroppedDuringTheirActionFinishItWithAllThatItHolds) {
    std::string seen;
    std::optional<RepeatingTask> task;
    task.emplace(2s, [&, text = std::string("a text too long to be kept in place")] {
        task.reset();
        seen = text;
    });
    actor.advance(10s);
    EXPECT_EQ(seen, "a text too long to be kept in place");
}

TEST_F(RepeatingTasks, ReleaseTheirActionWhenDropped) {
    const auto held = std::make_shared<int>();
    std::optional<RepeatingTask> task;
    task.emplace(2s, [held] {});
    actor.advance(5s);
    EXPECT_EQ(held.use_count(), 2);
    task.reset();
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(RepeatingTasks, ReplacedByAnotherStartTheIntervalAnew) {
    std::optional<RepeatingTask> task;
    task.emplace(2s, noteTime());
    actor.advance(1s);
    task.emplace(3s, noteTime());
    actor.advance(5s);
    EXPECT_EQ(runs, (std::vector<platform::Duration>{4s}));
}

} // namespace
} // namespace corvid
