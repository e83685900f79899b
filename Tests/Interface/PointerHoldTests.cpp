#include "CorvidKit/Toolkit/PointerHold.h"
#include "Platform/Simulated/Desktop.h"

#include <gtest/gtest.h>

#include <chrono>
#include <vector>

namespace corvid::toolkit {
namespace {

using namespace std::chrono_literals;

class PointerHoldTest : public testing::Test {
protected:
    platform::simulated::Desktop desktop;
    bool isTakenByOthers = false;
    bool isHeld = false;
    int tries = 0;
    PointerHold pointer{desktop.mainActor, [this](bool holds) {
                            tries += holds ? 1 : 0;
                            isHeld = holds && !isTakenByOthers;
                            return !holds || isHeld;
                        }};
};

TEST_F(PointerHoldTest, HoldsThePointerUntilItEnds) {
    pointer.begin();
    EXPECT_TRUE(isHeld);
    pointer.end();
    EXPECT_FALSE(isHeld);
    pointer.noticeInput();
    EXPECT_FALSE(isHeld) << "the window is closed";
    EXPECT_TRUE(desktop.mainActor.waiting().empty());
}

TEST_F(PointerHoldTest, TakesItOnceOthersLetGo) {
    isTakenByOthers = true;
    pointer.begin();
    desktop.mainActor.advance(1s);
    EXPECT_FALSE(isHeld);
    isTakenByOthers = false;
    desktop.mainActor.advance(PointerHold::pause);
    EXPECT_TRUE(isHeld);
}

TEST_F(PointerHoldTest, GivesUpWhenOthersKeepItAndTriesAgainWithTheNextInput) {
    isTakenByOthers = true;
    pointer.begin();
    desktop.mainActor.advance(1min);
    EXPECT_EQ(tries, PointerHold::mostTries + 1);
    EXPECT_TRUE(desktop.mainActor.waiting().empty());
    isTakenByOthers = false;
    pointer.noticeInput();
    EXPECT_TRUE(isHeld);
}

TEST_F(PointerHoldTest, LetsGoAfterAWhileWithoutInput) {
    pointer.begin();
    desktop.mainActor.advance(PointerHold::patience - 1ms);
    EXPECT_TRUE(isHeld);
    desktop.mainActor.advance(1ms);
    EXPECT_FALSE(isHeld);
    EXPECT_TRUE(desktop.mainActor.waiting().empty()) << "nothing wakes it while nothing happens";
    pointer.noticeInput();
    EXPECT_TRUE(isHeld) << "its user is back";
}

TEST_F(PointerHoldTest, EachInputCountsAnew) {
    pointer.begin();
    for (int input = 0; input < 10; ++input) {
        desktop.mainActor.advance(PointerHold::patience - 1s);
        ASSERT_TRUE(isHeld) << input;
        pointer.noticeInput();
    }
    EXPECT_EQ(desktop.mainActor.waiting().size(), 1U);
    desktop.mainActor.advance(PointerHold::patience);
    EXPECT_FALSE(isHeld);
}

TEST_F(PointerHoldTest, LetsGoWithinTheShortestTimeAfterWhichDesktopsLock) {
    desktop.mainActor.setExhaustsTolerance(true);
    pointer.begin();
    desktop.mainActor.advance(1min);
    EXPECT_FALSE(isHeld);
}

} // namespace
} // namespace corvid::toolkit
