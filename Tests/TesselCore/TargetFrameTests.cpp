#include "TesselCore/WindowLayout.h"
#include "Tests/TesselCore/Printing.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace {

using corvid::CGRect;
using tessel::WindowAction;
using tessel::WindowLayout::targetFrame;

struct FrameRow {
    const char* name;
    WindowAction action;
    CGRect window;
    CGRect visible;
    CGRect target;

    friend void PrintTo(const FrameRow& row, std::ostream* out) { *out << row.name; }
};

class TargetFrame : public testing::TestWithParam<FrameRow> {};

TEST_P(TargetFrame, IsAsInTheTable) {
    EXPECT_EQ(targetFrame(GetParam().action, GetParam().window, GetParam().visible), GetParam().target);
}

constexpr CGRect someWindow{{300, 200}, {640, 480}};
constexpr CGRect oddScreen{{0, 25}, {1511, 920}};
constexpr CGRect leftOfPrimary{{-1921, -155}, {1921, 1055}};
constexpr CGRect offset{{1512, 37}, {1365, 731}};
constexpr CGRect fractional{{0.5, 0.25}, {1000.75, 700.5}};

INSTANTIATE_TEST_SUITE_P(
    Halves, TargetFrame,
    testing::Values(
        FrameRow{"LeftOfAnOddWidth", WindowAction::leftHalf, someWindow, oddScreen, {{0, 25}, {755, 920}}},
        FrameRow{"RightOfAnOddWidth", WindowAction::rightHalf, someWindow, oddScreen, {{756, 25}, {755, 920}}},
        FrameRow{"LeftOfAnEvenWidth", WindowAction::leftHalf, someWindow, {{0, 0}, {1512, 945}}, {{0, 0}, {756, 945}}},
        FrameRow{
            "RightOfAnEvenWidth", WindowAction::rightHalf, someWindow, {{0, 0}, {1512, 945}}, {{756, 0}, {756, 945}}},
        FrameRow{
            "LeftOnANegativeOrigin", WindowAction::leftHalf, someWindow, leftOfPrimary, {{-1921, -155}, {960, 1055}}},
        FrameRow{
            "RightOnANegativeOrigin", WindowAction::rightHalf, someWindow, leftOfPrimary, {{-960, -155}, {960, 1055}}},
        FrameRow{"LeftOnAnOffsetScreen", WindowAction::leftHalf, someWindow, offset, {{1512, 37}, {682, 731}}},
        FrameRow{"RightOnAnOffsetScreen", WindowAction::rightHalf, someWindow, offset, {{2195, 37}, {682, 731}}},
        FrameRow{
            "LeftOnAFractionalScreen", WindowAction::leftHalf, someWindow, fractional, {{0.5, 0.25}, {500, 700.5}}},
        FrameRow{"RightOnAFractionalScreen",
                 WindowAction::rightHalf,
                 someWindow,
                 fractional,
                 {{501.25, 0.25}, {500, 700.5}}},
        FrameRow{"OfANarrowScreen", WindowAction::rightHalf, someWindow, {{5, 0}, {1, 100}}, {{6, 0}, {0, 100}}}),
    [](const auto& row) { return std::string{row.param.name}; });

INSTANTIATE_TEST_SUITE_P(
    Center, TargetFrame,
    testing::Values(
        FrameRow{"KeepsTheSize", WindowAction::center, someWindow, {{0, 0}, {1512, 945}}, {{436, 233}, {640, 480}}},
        FrameRow{"KeepsAFractionalSize",
                 WindowAction::center,
                 {{0, 0}, {640.5, 480.25}},
                 {{0, 0}, {1512, 945}},
                 {{436, 232}, {640.5, 480.25}}},
        FrameRow{"OfAWindowLargerBothWays", WindowAction::center, {{-50, 900}, {3000, 2000}}, oddScreen, oddScreen},
        FrameRow{"OfAWindowWiderOnly", WindowAction::center, {{0, 0}, {3000, 400}}, oddScreen, {{0, 285}, {1511, 400}}},
        FrameRow{
            "OfAWindowTallerOnly", WindowAction::center, {{0, 0}, {511, 4000}}, oddScreen, {{500, 25}, {511, 920}}},
        FrameRow{"RoundsHalvesUpOnThePositiveSide",
                 WindowAction::center,
                 {{0, 0}, {640, 480}},
                 {{0, 0}, {1001, 701}},
                 {{181, 111}, {640, 480}}},
        FrameRow{"RoundsHalvesDownOnTheNegativeSide",
                 WindowAction::center,
                 {{0, 0}, {640, 480}},
                 {{-1001, -701}, {1001, 701}},
                 {{-821, -591}, {640, 480}}},
        FrameRow{"OnANegativeOrigin", WindowAction::center, someWindow, leftOfPrimary, {{-1281, 133}, {640, 480}}},
        FrameRow{"OnAnOffsetScreen", WindowAction::center, someWindow, offset, {{1875, 163}, {640, 480}}},
        FrameRow{"OfANegativeSize",
                 WindowAction::center,
                 {{940, 680}, {-640, -480}},
                 {{0, 0}, {1512, 945}},
                 {{436, 233}, {640, 480}}}),
    [](const auto& row) { return std::string{row.param.name}; });

INSTANTIATE_TEST_SUITE_P(
    Maximize, TargetFrame,
    testing::Values(FrameRow{"IsTheVisibleFrame", WindowAction::maximize, someWindow, oddScreen, oddScreen},
                    FrameRow{"OnANegativeOrigin", WindowAction::maximize, someWindow, leftOfPrimary, leftOfPrimary},
                    FrameRow{"KeepsFractions", WindowAction::maximize, someWindow, fractional, fractional}),
    [](const auto& row) { return std::string{row.param.name}; });

INSTANTIATE_TEST_SUITE_P(
    AlmostMaximize, TargetFrame,
    testing::Values(
        FrameRow{"RoundsTheSizeAndTheOrigin",
                 WindowAction::almostMaximize,
                 someWindow,
                 {{0, 0}, {1512, 945}},
                 {{76, 47}, {1361, 851}}},
        FrameRow{"OfAnOddWidth", WindowAction::almostMaximize, someWindow, oddScreen, {{76, 71}, {1360, 828}}},
        FrameRow{
            "OnANegativeOrigin", WindowAction::almostMaximize, someWindow, leftOfPrimary, {{-1825, -103}, {1729, 950}}},
        FrameRow{"NeverExceedsATinyScreen",
                 WindowAction::almostMaximize,
                 someWindow,
                 {{0, 0}, {0.75, 0.75}},
                 {{0, 0}, {0.75, 0.75}}}),
    [](const auto& row) { return std::string{row.param.name}; });

INSTANTIATE_TEST_SUITE_P(
    MaximizeHeight, TargetFrame,
    testing::Values(
        FrameRow{"KeepsWidthAndPlace", WindowAction::maximizeHeight, someWindow, oddScreen, {{300, 25}, {640, 920}}},
        FrameRow{"PullsInFromTheLeft",
                 WindowAction::maximizeHeight,
                 {{-200, 300}, {640, 480}},
                 {{10, 25}, {1511, 920}},
                 {{10, 25}, {640, 920}}},
        FrameRow{"PullsInFromTheRight",
                 WindowAction::maximizeHeight,
                 {{1200, 300}, {640, 480}},
                 {{10, 25}, {1511, 920}},
                 {{881, 25}, {640, 920}}},
        FrameRow{"ShrinksAWiderWindow", WindowAction::maximizeHeight, {{-90, 0}, {4000, 30}}, oddScreen, oddScreen},
        FrameRow{"OnANegativeOrigin",
                 WindowAction::maximizeHeight,
                 {{-300, 0}, {640, 480}},
                 leftOfPrimary,
                 {{-640, -155}, {640, 1055}}},
        FrameRow{"MakesNothingIntegral",
                 WindowAction::maximizeHeight,
                 {{12.25, 3.5}, {640.5, 480.5}},
                 fractional,
                 {{12.25, 0.25}, {640.5, 700.5}}}),
    [](const auto& row) { return std::string{row.param.name}; });

} // namespace
