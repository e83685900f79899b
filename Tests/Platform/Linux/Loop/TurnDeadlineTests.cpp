#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Linux/Loop/TurnDeadline.h"
#include "Platform/Simulated/MainActor.h"

#include <gtest/gtest.h>

#include <chrono>
#include <vector>

namespace platform::linux {
namespace {

using std::chrono::milliseconds;

TEST(TurnDeadlineTest, BeginsToRunWithTheFirstWaitAndHoldsForAllThatFollow) {
    simulated::MainActor clock;
    TurnDeadline deadline(clock);
    clock.pass(milliseconds(500));
    EXPECT_FALSE(deadline.hasBegun());
    EXPECT_FALSE(deadline.hasPassed()) << "work without a wait used up time";
    const Instant end = deadline.end();
    EXPECT_EQ(end, clock.now() + TurnDeadline::turnLimit);
    EXPECT_TRUE(deadline.hasBegun());
    clock.pass(milliseconds(100));
    EXPECT_EQ(deadline.end(), end);
    EXPECT_EQ(deadline.left(), TurnDeadline::turnLimit - milliseconds(100));
    clock.pass(TurnDeadline::turnLimit);
    EXPECT_TRUE(deadline.hasPassed());
    EXPECT_EQ(deadline.end(), end);
    deadline.begin(TurnDeadline::startLimit);
    EXPECT_FALSE(deadline.hasPassed());
    EXPECT_EQ(deadline.left(), TurnDeadline::startLimit);
}

TEST(TurnDeadlineTest, LeavesOutWorkThatIsNoWait) {
    simulated::MainActor clock;
    TurnDeadline deadline(clock);
    static_cast<void>(deadline.end());
    clock.pass(milliseconds(200));
    deadline.withoutCounting([&] { clock.pass(milliseconds(1000)); });
    EXPECT_EQ(deadline.left(), milliseconds(50));
    deadline.begin();
    deadline.withoutCounting([&] { clock.pass(milliseconds(1000)); });
    EXPECT_EQ(deadline.left(), TurnDeadline::turnLimit) << "nothing was waited for yet";
}

TEST(TurnDeadlineTest, IsRenewedAfterAllOtherWorkAtTheEndOfATurn) {
    MainLoop loop;
    Instant first;
    Instant atTheEnd;
    loop.post([&] { first = loop.turnDeadline().end(); });
    const auto note = [&] {
        if (first != Instant{} && atTheEnd == Instant{}) {
            atTheEnd = loop.turnDeadline().end();
            loop.post([&] { loop.end(loop.turnDeadline().hasBegun() ? 1 : 0); });
        }
    };
    const auto end = loop.atEndOfTurn(note);
    EXPECT_EQ(loop.run(), 0) << "the next turn has the time of the one before";
    EXPECT_EQ(atTheEnd, first) << "renewed before the work at the end of the turn";
}

TEST(TurnDeadlineTest, EachPostedWorkThatWaitsHasATurnOfItsOwn) {
    MainLoop loop;
    int turns = 0;
    const auto end = loop.atEndOfTurn([&] { ++turns; });
    std::vector<int> turnsOfWork;
    std::vector<Instant> deadlines;
    for (int count = 0; count < 3; ++count) {
        loop.post([&] {
            turnsOfWork.push_back(turns);
            deadlines.push_back(loop.turnDeadline().end());
            if (turnsOfWork.size() == 1) {
                loop.post([&] { loop.end(0); });
            }
        });
    }
    EXPECT_EQ(loop.run(), 0);
    EXPECT_EQ(turnsOfWork, (std::vector<int>{1, 2, 3})) << "work that was posted later came first";
    ASSERT_EQ(deadlines.size(), 3U);
    EXPECT_LT(deadlines[0], deadlines[1]);
    EXPECT_LT(deadlines[1], deadlines[2]);
}

TEST(TurnDeadlineTest, PostedWorkThatWaitsForNothingSharesATurn) {
    MainLoop loop;
    int turns = 0;
    const auto end = loop.atEndOfTurn([&] { ++turns; });
    for (int count = 0; count < 3; ++count) {
        loop.post([&] { EXPECT_EQ(turns, 1); });
    }
    loop.post([&] { loop.end(0); });
    EXPECT_EQ(loop.run(), 0);
}

} // namespace
} // namespace platform::linux
