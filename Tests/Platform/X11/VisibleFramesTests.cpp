#include "Platform/X11/VisibleFrames.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace platform::x11 {
namespace {

using corvid::CGRect;
using corvid::CGSize;
using Frames = std::vector<CGRect>;

constexpr CGRect left{{0, 0}, {1920, 1080}};
constexpr CGRect right{{1920, 0}, {1280, 800}};
constexpr CGSize both{3200, 1080};

/// A panel of a height at the bottom of the root window, from one column to another, both included.
Strut bottomStrut(double height, double start, double end) {
    return {.bottom = height, .bottomStart = start, .bottomEnd = end};
}

WorkSpace twoMonitors(std::vector<Strut> struts) {
    return {.rootSize = both,
            .monitors = {left, right},
            .struts = std::move(struts),
            .workArea = std::nullopt,
            .monitorWorkAreas = {}};
}

WorkSpace oneMonitor(std::vector<Strut> struts) {
    return {.rootSize = {1920, 1080},
            .monitors = {left},
            .struts = std::move(struts),
            .workArea = std::nullopt,
            .monitorWorkAreas = {}};
}

TEST(VisibleFrames, AMonitorWithoutPanelsIsWhollyVisible) {
    EXPECT_EQ(visibleFrames(twoMonitors({})), (Frames{left, right}));
}

TEST(VisibleFrames, EachMonitorLosesItsOwnPanel) {
    // The right monitor ends 280 pixels above the root window's edge, from which its panel's strut is measured.
    EXPECT_EQ(visibleFrames(twoMonitors({bottomStrut(40, 0, 1919), bottomStrut(320, 1920, 3199)})),
              (Frames{{{0, 0}, {1920, 1040}}, {{1920, 0}, {1280, 760}}}));
}

TEST(VisibleFrames, APanelOnAllFourSidesIsTakenFromEach) {
    const Strut all{.left = 10,
                    .right = 20,
                    .top = 30,
                    .bottom = 40,
                    .leftEnd = 1079,
                    .rightEnd = 1079,
                    .topEnd = 1919,
                    .bottomEnd = 1919};
    EXPECT_EQ(visibleFrames(oneMonitor({all})), (Frames{{{10, 30}, {1890, 1010}}}));
}

TEST(VisibleFrames, APanelAtAnInnerEdgeTakesNothingFromTheMonitorBeforeIt) {
    // At the left edge of the right monitor: the strut reaches from the root's edge across the whole left monitor.
    const Strut inner{.left = 1980, .leftStart = 0, .leftEnd = 799};
    EXPECT_EQ(visibleFrames(twoMonitors({inner})), (Frames{left, {{1980, 0}, {1220, 800}}}));
    // At the right edge of the left monitor, likewise from the other side.
    const Strut other{.right = 1280 + 50, .rightStart = 0, .rightEnd = 1079};
    EXPECT_EQ(visibleFrames(twoMonitors({other})), (Frames{{{0, 0}, {1870, 1080}}, right}));
}

TEST(VisibleFrames, AStrutAppliesOnlyAlongItsRange) {
    EXPECT_EQ(visibleFrames(twoMonitors({bottomStrut(40, 2000, 2100)})), (Frames{left, right}));
    EXPECT_EQ(visibleFrames(twoMonitors({bottomStrut(40, 1919, 3199)})), (Frames{{{0, 0}, {1920, 1040}}, right}));
    EXPECT_EQ(visibleFrames(twoMonitors({bottomStrut(40, 1920, 3199)})), (Frames{left, right}));
}

TEST(VisibleFrames, AStrutLeftBehindByAnUnpluggedMonitorTakesNothing) {
    EXPECT_EQ(visibleFrames(oneMonitor({bottomStrut(320, 1920, 3199)})), (Frames{left}));
}

TEST(VisibleFrames, SeveralPanelsAtOneEdgeCountOnce) {
    EXPECT_EQ(visibleFrames(oneMonitor({bottomStrut(40, 0, 1919), bottomStrut(60, 0, 959)})),
              (Frames{{{0, 0}, {1920, 1020}}}));
}

TEST(VisibleFrames, StrutsThatLeaveNothingAreNotBelieved) {
    const Strut fromTop{.top = 600, .topEnd = 1919};
    EXPECT_EQ(visibleFrames(oneMonitor({fromTop, bottomStrut(600, 0, 1919)})), (Frames{{{0, 600}, {1920, 480}}}));
    EXPECT_EQ(visibleFrames(oneMonitor({bottomStrut(1080, 0, 1919)})), (Frames{left}));
    EXPECT_EQ(visibleFrames(oneMonitor({bottomStrut(4294967295.0, 0, 4294967295.0)})), (Frames{left}));
}

TEST(VisibleFrames, TheWorkAreaCountsOnASingleMonitorWhereItSaysMore) {
    WorkSpace space = oneMonitor({bottomStrut(20, 0, 1919)});
    space.workArea = CGRect{{0, 0}, {1920, 1054}};
    EXPECT_EQ(visibleFrames(space), (Frames{{{0, 0}, {1920, 1054}}}));
    space.workArea = CGRect{{0, 0}, {1920, 1080}};
    EXPECT_EQ(visibleFrames(space), (Frames{{{0, 0}, {1920, 1060}}}));
    space.workArea = CGRect{{4000, 4000}, {10, 10}};
    EXPECT_EQ(visibleFrames(space), (Frames{{{0, 0}, {1920, 1060}}}));
}

TEST(VisibleFrames, TheWorkAreaOfSeveralMonitorsIsNotBelieved) {
    WorkSpace space = twoMonitors({});
    space.workArea = CGRect{{0, 0}, {3200, 760}};
    EXPECT_EQ(visibleFrames(space), (Frames{left, right}));
}

TEST(VisibleFrames, TheWindowManagersOwnBoxForAMonitorComesFirst) {
    WorkSpace space = twoMonitors({bottomStrut(40, 0, 1919)});
    // In another order than the monitors.
    space.monitorWorkAreas = {{{1920, 0}, {1280, 760}}, {{0, 30}, {1920, 1010}}};
    EXPECT_EQ(visibleFrames(space), (Frames{{{0, 30}, {1920, 1010}}, {{1920, 0}, {1280, 760}}}));
}

TEST(VisibleFrames, ABoxOfAMonitorThatIsGoneIsLeftOut) {
    WorkSpace space = oneMonitor({bottomStrut(40, 0, 1919)});
    space.monitorWorkAreas = {{{1920, 0}, {1280, 760}}, {{0, 0}, {0, 0}}};
    EXPECT_EQ(visibleFrames(space), (Frames{{{0, 0}, {1920, 1040}}}));
}

TEST(VisibleFrames, AStrutIsReadFromTwelveValuesOrFour) {
    EXPECT_EQ(strutFromValues({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}), (Strut{.left = 1,
                                                                               .right = 2,
                                                                               .top = 3,
                                                                               .bottom = 4,
                                                                               .leftStart = 5,
                                                                               .leftEnd = 6,
                                                                               .rightStart = 7,
                                                                               .rightEnd = 8,
                                                                               .topStart = 9,
                                                                               .topEnd = 10,
                                                                               .bottomStart = 11,
                                                                               .bottomEnd = 12}));
    const auto whole = strutFromValues({0, 0, 0, 40});
    ASSERT_TRUE(whole);
    EXPECT_EQ(visibleFrames(oneMonitor({*whole})), (Frames{{{0, 0}, {1920, 1040}}}));
    EXPECT_EQ(strutFromValues({}), std::nullopt);
    EXPECT_EQ(strutFromValues({1, 2, 3}), std::nullopt);
}

RC_GTEST_PROP(VisibleFrames, AVisibleFrameIsNeverEmptyAndNeverLeavesItsMonitor, ()) {
    const auto strut = rc::gen::apply(
        [](const std::vector<std::uint32_t>& values) { return strutFromValues(values).value(); },
        rc::gen::container<std::vector<std::uint32_t>>(
            12, rc::gen::oneOf(rc::gen::inRange<std::uint32_t>(0, 4000), rc::gen::arbitrary<std::uint32_t>())));
    const auto frames = visibleFrames(twoMonitors(*rc::gen::container<std::vector<Strut>>(strut)));
    RC_ASSERT(frames.size() == std::size_t{2});
    const std::vector monitors{left, right};
    for (std::size_t index = 0; index < frames.size(); ++index) {
        RC_ASSERT(frames[index].width() > 0);
        RC_ASSERT(frames[index].height() > 0);
        RC_ASSERT(corvid::intersection(frames[index], monitors[index]) == std::optional(frames[index]));
    }
}

} // namespace
} // namespace platform::x11
