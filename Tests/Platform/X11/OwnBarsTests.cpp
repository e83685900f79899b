#include "Platform/X11/OwnBars.h"

#include <gtest/gtest.h>

namespace platform::x11 {
namespace {

using corvid::CGRect;

constexpr CGRect left{{0, 0}, {1920, 1080}};
constexpr CGRect right{{1920, 0}, {1280, 1080}};

WorkSpace twoMonitors(CGRect workArea, std::vector<Strut> struts = {}) {
    return {.rootSize = {3200, 1080},
            .monitors = {left, right},
            .struts = std::move(struts),
            .workArea = workArea,
            .monitorWorkAreas = {}};
}

TEST(OwnBars, AMarginThatStrutsAskForIsExplained) {
    const Strut panel{.bottom = 40, .bottomEnd = 1919};
    EXPECT_FALSE(hasUnexplainedMargin(twoMonitors({{0, 0}, {3200, 1040}}, {panel})));
    EXPECT_FALSE(hasUnexplainedMargin(twoMonitors({{0, 0}, {3200, 1080}})));
    EXPECT_TRUE(hasUnexplainedMargin(twoMonitors({{0, 0}, {3200, 1020}}, {panel})));
    EXPECT_TRUE(hasUnexplainedMargin(twoMonitors({{0, 0}, {3200, 1054}})));
}

TEST(OwnBars, WithoutAWorkAreaThereIsNothingToExplain) {
    WorkSpace space = twoMonitors({});
    space.workArea.reset();
    EXPECT_FALSE(hasUnexplainedMargin(space));
    EXPECT_TRUE(strutsOfBars(space, {{{0, 1054}, {1920, 26}}}).empty());
}

TEST(OwnBars, TheWindowThatFillsTheMarginIsTheBarOfItsMonitorAlone) {
    WorkSpace space = twoMonitors({{0, 0}, {3200, 1054}});
    space.struts = strutsOfBars(space, {{{300, 200}, {200, 100}}, {{0, 1054}, {1920, 26}}, {{0, 1079}, {1920, 1}}});
    EXPECT_EQ(visibleFrames(space), (std::vector<CGRect>{{{0, 0}, {1920, 1054}}, right}));
}

TEST(OwnBars, ABarIsFoundAtEveryEdge) {
    WorkSpace space = twoMonitors({{10, 20}, {3160, 1020}});
    space.struts = strutsOfBars(
        space, {{{0, 0}, {10, 1080}}, {{3170, 0}, {30, 1080}}, {{0, 0}, {3200, 20}}, {{0, 1040}, {3200, 40}}});
    EXPECT_EQ(visibleFrames(space), (std::vector<CGRect>{{{10, 20}, {1910, 1020}}, {{1920, 20}, {1250, 1020}}}));
}

} // namespace
} // namespace platform::x11
