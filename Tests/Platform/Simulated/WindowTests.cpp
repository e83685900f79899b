#include "Platform/Simulated/Desktop.h"

#include <gtest/gtest.h>

#include <chrono>

namespace platform::simulated {
namespace {

using namespace std::chrono_literals;
using corvid::CGPoint;
using corvid::CGRect;
using corvid::CGSize;

class SimulatedWindow : public testing::Test {
protected:
    Window& open(SizeRules sizes, Lateness lateness = {}) {
        return application.addWindow({.frame = {{10, 20}, {300, 200}}, .sizes = sizes, .lateness = lateness});
    }

    Desktop desktop;
    Application& application = desktop.applications.add({.process = 10});
};

TEST_F(SimulatedWindow, TakesAnyPositionAndSizeByDefault) {
    Window& window = open({});
    window.request(CGPoint{-5, 6});
    window.request(CGSize{1, 2000});
    EXPECT_EQ(window.frame(), (CGRect{{-5, 6}, {1, 2000}}));
}

TEST_F(SimulatedWindow, KeepsItsSizeBetweenMinimumAndMaximum) {
    Window& window = open({.minimum = {200, 100}, .maximum = {400, 300}});
    window.request(CGSize{100, 900});
    EXPECT_EQ(window.frame().size, (CGSize{200, 300}));
}

TEST_F(SimulatedWindow, GrowsByItsIncrementFromItsMinimum) {
    Window& window = open({.minimum = {20, 10}, .increment = {9, 18}});
    window.request(CGSize{960, 1055});
    EXPECT_EQ(window.frame().size, (CGSize{20 + 104 * 9, 10 + 58 * 18}));
}

TEST_F(SimulatedWindow, OfFixedSizeMovesButKeepsItsSize) {
    Window& window = open({.isFixed = true});
    window.request(CGSize{960, 1055});
    window.request(CGPoint{0, 25});
    EXPECT_EQ(window.frame(), (CGRect{{0, 25}, {300, 200}}));
}

TEST_F(SimulatedWindow, LateByReadingsShowsItsOldFrameSoManyTimes) {
    Window& window = open({}, {.readings = 2});
    window.request(CGPoint{1, 2});
    EXPECT_EQ(window.readFrame().origin, (CGPoint{10, 20}));
    EXPECT_EQ(window.readFrame().origin, (CGPoint{10, 20}));
    EXPECT_EQ(window.readFrame().origin, (CGPoint{1, 2}));
}

TEST_F(SimulatedWindow, LateByTimeShowsItsOldFrameUntilThen) {
    Window& window = open({}, {.time = 75ms});
    window.request(CGPoint{1, 2});
    window.request(CGSize{3, 4});
    desktop.mainActor.advance(74ms);
    EXPECT_EQ(window.frame(), (CGRect{{10, 20}, {300, 200}}));
    desktop.mainActor.advance(1ms);
    EXPECT_EQ(window.frame(), (CGRect{{1, 2}, {3, 4}}));
}

TEST_F(SimulatedWindow, FulfilsWishesInTheOrderInWhichTheyWereMade) {
    Window& window = open({}, {.readings = 1});
    window.request(CGPoint{1, 2});
    window.request(CGPoint{3, 4});
    EXPECT_EQ(window.readFrame().origin, (CGPoint{10, 20}));
    EXPECT_EQ(window.readFrame().origin, (CGPoint{3, 4}));
}

TEST_F(SimulatedWindow, MovedByItsApplicationIsThereAtOnce) {
    Window& window = open({.isFixed = true}, {.time = 1s});
    window.moveTo({{5, 5}, {50, 50}});
    EXPECT_EQ(window.frame(), (CGRect{{5, 5}, {50, 50}}));
}

} // namespace
} // namespace platform::simulated
