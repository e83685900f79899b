#include "Platform/Simulated/MainActor.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace platform::simulated {
namespace {

using namespace std::chrono_literals;
using Lines = std::vector<std::string>;

Instant at(Duration time) {
    return Instant(time);
}

TEST(SimulatedMainActor, RunsPostedWorkInOrderAndOnlyWhenTheLoopTurns) {
    MainActor actor;
    Lines done;
    actor.post([&] {
        done.emplace_back("first");
        actor.post([&] { done.emplace_back("third"); });
    });
    actor.post([&] { done.emplace_back("second"); });
    EXPECT_EQ(done, Lines{});
    EXPECT_EQ(actor.run(), 3U);
    EXPECT_EQ(done, (Lines{"first", "second", "third"}));
}

TEST(SimulatedMainActor, DropsPostedWorkThatNeverRan) {
    const auto held = std::make_shared<int>();
    {
        MainActor actor;
        actor.post([held] {});
        EXPECT_EQ(held.use_count(), 2);
    }
    EXPECT_EQ(held.use_count(), 1);
}

TEST(SimulatedMainActor, TheClockStandsStillUntilItIsTurned) {
    MainActor actor;
    EXPECT_EQ(actor.now(), at(0s));
    actor.run();
    EXPECT_EQ(actor.now(), at(0s));
    actor.advance(1500ms);
    EXPECT_EQ(actor.now(), at(1500ms));
}

TEST(SimulatedMainActor, RunsScheduledWorkInTheOrderOfTimeAtItsTime) {
    MainActor actor;
    std::vector<Instant> times;
    const auto late = actor.schedule(at(3s), 0s, [&] { times.push_back(actor.now()); });
    const auto early = actor.schedule(at(1s), 0s, [&] {
        times.push_back(actor.now());
        actor.post([&] { times.push_back(actor.now()); });
    });
    const auto after = actor.schedule(at(4s), 0s, [&] { times.push_back(actor.now()); });
    actor.advance(3s);
    EXPECT_EQ(times, (std::vector{at(1s), at(1s), at(3s)}));
    actor.advance(1s);
    EXPECT_EQ(times.back(), at(4s));
}

TEST(SimulatedMainActor, RunsWorkScheduledOnTheWay) {
    MainActor actor;
    std::vector<Instant> times;
    std::unique_ptr<ScheduledWork> inner;
    const auto outer = actor.schedule(
        at(1s), 0s, [&] { inner = actor.schedule(actor.now() + 1s, 0s, [&] { times.push_back(actor.now()); }); });
    actor.advance(5s);
    EXPECT_EQ(times, (std::vector{at(2s)}));
    EXPECT_EQ(actor.now(), at(5s));
}

TEST(SimulatedMainActor, DroppingScheduledWorkCancelsIt) {
    MainActor actor;
    const auto held = std::make_shared<int>();
    bool ran = false;
    auto work = actor.schedule(at(1s), 0s, [&ran, held] { ran = true; });
    work.reset();
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_TRUE(actor.waiting().empty());
    actor.advance(2s);
    EXPECT_FALSE(ran);
}

TEST(SimulatedMainActor, ScheduledWorkMayBeDroppedWhileItRunsAndAfterTheActor) {
    std::unique_ptr<ScheduledWork> survivor;
    {
        MainActor actor;
        std::unique_ptr<ScheduledWork> own;
        std::string seen;
        own = actor.schedule(at(1s), 0s, [&, text = std::string("a text too long to be kept in place")] {
            own.reset();
            seen = text;
        });
        actor.advance(1s);
        EXPECT_EQ(seen, "a text too long to be kept in place");
        survivor = actor.schedule(at(9s), 0s, [] {});
    }
    survivor.reset();
}

TEST(SimulatedMainActor, WorkMayCancelOtherWorkThatIsDueAtTheSameTime) {
    MainActor actor;
    bool ran = false;
    std::unique_ptr<ScheduledWork> second;
    const auto first = actor.schedule(at(1s), 0s, [&] { second.reset(); });
    second = actor.schedule(at(1s), 0s, [&] { ran = true; });
    actor.advance(1s);
    EXPECT_FALSE(ran);
}

TEST(SimulatedMainActor, CanRunWorkAsLateAsItsToleranceAllows) {
    MainActor actor;
    actor.setExhaustsTolerance(true);
    std::vector<std::string> order;
    const auto patient = actor.schedule(at(1s), 10s, [&] { order.emplace_back("patient"); });
    const auto strict = actor.schedule(at(2s), 0s, [&] { order.emplace_back("strict"); });
    EXPECT_EQ(actor.waiting(), (std::vector<MainActor::Waiting>{{at(1s), 10s}, {at(2s), 0s}}));
    actor.advance(10999ms);
    EXPECT_EQ(order, (Lines{"strict"}));
    actor.advance(1ms);
    EXPECT_EQ(order, (Lines{"strict", "patient"}));
}

TEST(SimulatedMainActor, WorkThatTakesTimeMakesOtherWorkLate) {
    MainActor actor;
    std::optional<Instant> time;
    const auto slow = actor.schedule(at(1s), 0s, [&] { actor.pass(5s); });
    const auto next = actor.schedule(at(2s), 0s, [&] { time = actor.now(); });
    actor.advance(3s);
    EXPECT_EQ(time, at(6s));
    EXPECT_EQ(actor.now(), at(6s));
}

TEST(SimulatedMainActor, RunsWorkWithoutAnOwnerAtItsTime) {
    MainActor actor;
    std::vector<int> order;
    const auto held = actor.schedule(at(2s), 0s, [&] { order.push_back(2); });
    actor.runLater(at(1s), 0s, [&] { order.push_back(1); });
    actor.runLater(at(3s), 0s, [&] { order.push_back(3); });
    actor.advance(2s);
    EXPECT_EQ(order, (std::vector{1, 2}));
    EXPECT_EQ(actor.waiting(), (std::vector<MainActor::Waiting>{{at(3s), 0s}}));
}

TEST(SimulatedMainActor, IsCurrentOnTheThreadThatMadeItUnlessItPretendsOtherwise) {
    MainActor actor;
    EXPECT_TRUE(actor.isCurrent());
    {
        const MainActor::Elsewhere elsewhere(actor);
        EXPECT_FALSE(actor.isCurrent());
    }
    EXPECT_TRUE(actor.isCurrent());
    bool isCurrentThere = true;
    std::thread([&] { isCurrentThere = actor.isCurrent(); }).join();
    EXPECT_FALSE(isCurrentThere);
}

TEST(SimulatedMainActor, TakesWorkFromAnyThreadAndRunsItOnItsOwn) {
    MainActor actor;
    std::vector<bool> places;
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([&] {
            for (int count = 0; count < 100; ++count) {
                actor.post([&] { places.push_back(actor.isCurrent()); });
            }
        });
    }
    actor.advance(1s);
    for (std::thread& thread : threads) {
        thread.join();
    }
    actor.run();
    EXPECT_EQ(places, std::vector<bool>(400, true));
}

} // namespace
} // namespace platform::simulated
