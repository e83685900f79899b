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

TEST(OwnBars, WithoutAWorkAreaABarCoversAWholeEdge) {
    constexpr corvid::CGSize root{1920, 1080};
    const auto reserved = [&](const CGRect& window) {
        WorkSpace space{.rootSize = root,
                        .monitors = {{{0, 0}, root}},
                        .struts = strutsOfEdgeBars(root, {window}),
                        .workArea = std::nullopt,
                        .monitorWorkAreas = {}};
        return visibleFrames(space).front();
    };
    constexpr CGRect whole{{0, 0}, root};
    EXPECT_EQ(reserved({{-2, -2}, {1924, 27}}), (CGRect{{0, 25}, {1920, 1055}}));
    EXPECT_EQ(reserved({{0, 1056}, {1920, 24}}), (CGRect{{0, 0}, {1920, 1056}}));
    EXPECT_EQ(reserved({{0, 0}, {64, 1080}}), (CGRect{{64, 0}, {1856, 1080}}));
    EXPECT_EQ(reserved({{1880, -1}, {41, 1082}}), (CGRect{{0, 0}, {1880, 1080}}));
    EXPECT_EQ(reserved({{0, 0}, {1900, 24}}), whole) << "not the whole edge";
    EXPECT_EQ(reserved({{0, 500}, {1920, 24}}), whole) << "at no edge";
    EXPECT_EQ(reserved({{0, 0}, {1920, 1}}), whole) << "for the pointer";
    EXPECT_EQ(reserved({{0, 0}, {1920, 1080}}), whole) << "a background";
    EXPECT_EQ(reserved({{0, -24}, {1920, 24}}), whole) << "hidden";
}

} // namespace
} // namespace platform::x11
