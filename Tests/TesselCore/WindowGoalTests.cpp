#include "TesselCore/WindowGoal.h"
#include "TesselCore/WindowLayout.h"
#include "Tests/CorvidKitCore/SpecialNumbers.h"
#include "Tests/TesselCore/Printing.h"

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace {

using corvid::CGPoint;
using corvid::CGRect;
using corvid::CGSize;
using tessel::Display;
using tessel::PlacementTrail;
using tessel::WindowAction;
using tessel::WindowGoal;
using tessel::WindowPlacement;
using Displays = std::vector<Display>;

constexpr CGRect anyWhere{{300, 200}, {640, 480}};

/// One display, all of it visible except the given parts.
Displays only(const CGRect& visible) {
    return {{.frame = {{visible.minX(), 0}, {visible.width(), visible.maxY()}}, .visible = visible}};
}

struct CellRow {
    const char* name;
    WindowPlacement placement;
    /// In a visible frame of (10, 25) 1001 by 701, and in one of (0, 0) 1920 by 1080.
    CGRect odd;
    CGRect even;
    /// The expected positions in the first frame: of a window of 400 by 300, and of one of 1200 by 900, larger than the
    /// frame.
    CGPoint small;
    CGPoint large;

    friend void PrintTo(const CellRow& row, std::ostream* out) { *out << row.name; }
};

class CellGoal : public testing::TestWithParam<CellRow> {
protected:
    static std::optional<WindowGoal> goal(const CGRect& visible) {
        return WindowGoal::of(GetParam().placement, {{visible.minX() + 5, visible.minY() + 5}, {64, 48}},
                              only(visible));
    }

    static constexpr CGRect oddFrame{{10, 25}, {1001, 701}};
};

TEST_P(CellGoal, HasTheTargetOfTheTable) {
    ASSERT_TRUE(goal(oddFrame));
    EXPECT_EQ(goal(oddFrame)->target, GetParam().odd);
    EXPECT_EQ(goal(oddFrame)->visible, oddFrame);
    EXPECT_EQ(goal({{0, 0}, {1920, 1080}})->target, GetParam().even);
}

TEST_P(CellGoal, KeepsAWindowThatRefusesItsSizeToItsEdges) {
    EXPECT_EQ(goal(oddFrame)->correction({400, 300}), GetParam().small);
    EXPECT_EQ(goal(oddFrame)->correction({1200, 900}), GetParam().large);
}

TEST_P(CellGoal, NeedsNoCorrectionWithinTwoPoints) {
    const CGSize asked = goal(oddFrame)->target.size;
    EXPECT_EQ(goal(oddFrame)->correction(asked), std::nullopt);
    EXPECT_EQ(goal(oddFrame)->correction({asked.width - 2, asked.height + 2}), std::nullopt);
    EXPECT_NE(goal(oddFrame)->correction({asked.width - 2.5, asked.height}), std::nullopt);
    EXPECT_NE(goal(oddFrame)->correction({asked.width, asked.height + 2.5}), std::nullopt);
    EXPECT_NE(goal(oddFrame)->correction({corvid::nan, asked.height}), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    Placements, CellGoal,
    testing::Values(
        CellRow{
            "TopHalf", WindowPlacement::topHalf, {{10, 25}, {1001, 350}}, {{0, 0}, {1920, 540}}, {311, 25}, {10, 25}},
        CellRow{"BottomHalf",
                WindowPlacement::bottomHalf,
                {{10, 375}, {1001, 351}},
                {{0, 540}, {1920, 540}},
                {311, 426},
                {10, 25}},
        CellRow{"TopLeft", WindowPlacement::topLeft, {{10, 25}, {500, 350}}, {{0, 0}, {960, 540}}, {10, 25}, {10, 25}},
        CellRow{"TopRight",
                WindowPlacement::topRight,
                {{510, 25}, {501, 350}},
                {{960, 0}, {960, 540}},
                {611, 25},
                {-189, 25}},
        CellRow{"BottomLeft",
                WindowPlacement::bottomLeft,
                {{10, 375}, {500, 351}},
                {{0, 540}, {960, 540}},
                {10, 426},
                {10, 25}},
        CellRow{"BottomRight",
                WindowPlacement::bottomRight,
                {{510, 375}, {501, 351}},
                {{960, 540}, {960, 540}},
                {611, 426},
                {-189, 25}},
        CellRow{"FirstThird",
                WindowPlacement::firstThird,
                {{10, 25}, {334, 701}},
                {{0, 0}, {640, 1080}},
                {10, 226},
                {10, 25}},
        CellRow{"CenterThird",
                WindowPlacement::centerThird,
                {{344, 25}, {333, 701}},
                {{640, 0}, {640, 1080}},
                {311, 226},
                {10, 25}},
        CellRow{"LastThird",
                WindowPlacement::lastThird,
                {{677, 25}, {334, 701}},
                {{1280, 0}, {640, 1080}},
                {611, 226},
                {-189, 25}},
        CellRow{"FirstTwoThirds",
                WindowPlacement::firstTwoThirds,
                {{10, 25}, {667, 701}},
                {{0, 0}, {1280, 1080}},
                {10, 226},
                {10, 25}},
        CellRow{"LastTwoThirds",
                WindowPlacement::lastTwoThirds,
                {{344, 25}, {667, 701}},
                {{640, 0}, {1280, 1080}},
                {611, 226},
                {-189, 25}}),
    [](const auto& row) { return std::string{row.param.name}; });

TEST(WindowGoal, OfAnActionIsTheActionsOwn) {
    const CGRect visible{{0, 25}, {1511, 920}};
    for (const WindowAction action : WindowAction::allCases) {
        const auto goal = WindowGoal::of(action, anyWhere, only(visible));
        ASSERT_TRUE(goal);
        EXPECT_EQ(goal->target, tessel::WindowLayout::targetFrame(action, anyWhere, visible)) << action;
        EXPECT_EQ(goal->correction({1000, 500}),
                  tessel::WindowLayout::fallbackFrame(action, {1000, 500}, visible).origin)
            << action;
    }
}

TEST(WindowGoal, IsOnTheDisplayThatTheWindowIsMostlyOn) {
    const Displays displays{{.frame = {{0, 0}, {1000, 700}}, .visible = {{0, 0}, {1000, 700}}},
                            {.frame = {{1000, 0}, {800, 600}}, .visible = {{1000, 20}, {800, 580}}}};
    EXPECT_EQ(WindowGoal::of(WindowPlacement::topHalf, {{900, 0}, {300, 300}}, displays)->target,
              (CGRect{{1000, 20}, {800, 290}}));
}

TEST(WindowGoal, IsMissingWithoutADisplay) {
    PlacementTrail trail;
    trail.add({{0, 0}, {10, 10}}, anyWhere);
    for (const WindowAction action : WindowAction::allCases) {
        EXPECT_EQ(WindowGoal::of(action, anyWhere, {}, trail), std::nullopt) << action;
    }
    for (const WindowPlacement placement : WindowPlacement::allCases) {
        EXPECT_EQ(WindowGoal::of(placement, anyWhere, {}, trail), std::nullopt) << placement;
    }
}

// Three displays in a row. The middle one is the primary one, is listed first, and has a panel at its top.
const Displays row{{.frame = {{0, 0}, {1920, 1080}}, .visible = {{0, 30}, {1920, 1050}}},
                   {.frame = {{1920, 100}, {1280, 800}}, .visible = {{1920, 100}, {1280, 800}}},
                   {.frame = {{-1000, 0}, {1000, 700}}, .visible = {{-1000, 0}, {1000, 700}}}};

struct DisplayRow {
    const char* name;
    CGRect window;
    CGRect next;
    CGRect previous;

    friend void PrintTo(const DisplayRow& row, std::ostream* out) { *out << row.name; }
};

class DisplayGoal : public testing::TestWithParam<DisplayRow> {};

TEST_P(DisplayGoal, HasTheSamePlaceThere) {
    EXPECT_EQ(WindowGoal::of(WindowPlacement::nextDisplay, GetParam().window, row)->target, GetParam().next);
    EXPECT_EQ(WindowGoal::of(WindowPlacement::previousDisplay, GetParam().window, row)->target, GetParam().previous);
}

INSTANTIATE_TEST_SUITE_P(
    Displays, DisplayGoal,
    testing::Values(
        DisplayRow{"AllOfIt", {{0, 30}, {1920, 1050}}, {{1920, 100}, {1280, 800}}, {{-1000, 0}, {1000, 700}}},
        DisplayRow{"LeftHalf", {{0, 30}, {960, 1050}}, {{1920, 100}, {640, 800}}, {{-1000, 0}, {500, 700}}},
        DisplayRow{"RightHalf", {{960, 30}, {960, 1050}}, {{2560, 100}, {640, 800}}, {{-500, 0}, {500, 700}}},
        DisplayRow{"BottomRight", {{960, 555}, {960, 525}}, {{2560, 500}, {640, 400}}, {{-500, 350}, {500, 350}}},
        DisplayRow{"SomeWhere", {{192, 135}, {480, 210}}, {{2048, 180}, {320, 160}}, {{-900, 70}, {250, 140}}},
        DisplayRow{
            "PartlyBeyondTheEdge", {{1632, -75}, {480, 210}}, {{2880, 100}, {320, 160}}, {{-250, 0}, {250, 140}}},
        DisplayRow{
            "LargerThanItsDisplay", {{-50, -50}, {2020, 1200}}, {{1920, 100}, {1280, 800}}, {{-1000, 0}, {1000, 700}}},
        DisplayRow{"FromTheLastToTheFirst", {{1920, 100}, {640, 400}}, {{-1000, 0}, {500, 350}}, {{0, 30}, {960, 525}}},
        DisplayRow{
            "FromTheFirstToTheLast", {{-500, 350}, {500, 350}}, {{960, 555}, {960, 525}}, {{2560, 500}, {640, 400}}}),
    [](const auto& row) { return std::string{row.param.name}; });

TEST(WindowGoal, KeepsAWindowOfFixedSizeToTheSameShareOfTheSpaceAroundIt) {
    const CGSize fixed{300, 400};
    const auto next = [&](CGPoint origin) {
        return WindowGoal::of(WindowPlacement::nextDisplay, {origin, fixed}, row)->correction(fixed);
    };
    EXPECT_EQ(next({0, 30}), (CGPoint{1920, 100})) << "the top left corner";
    EXPECT_EQ(next({1620, 680}), (CGPoint{2900, 500})) << "the bottom right corner";
    EXPECT_EQ(next({810, 355}), (CGPoint{2410, 300})) << "the middle";
}

TEST(WindowGoal, IsMissingWhereThereIsNoOtherDisplay) {
    const Display display{.frame = {{0, 0}, {1000, 700}}, .visible = {{0, 20}, {1000, 680}}};
    const Display mirror{.frame = {{0, 0}, {800, 600}}, .visible = {{0, 20}, {800, 580}}};
    for (const WindowPlacement placement : {WindowPlacement::nextDisplay, WindowPlacement::previousDisplay}) {
        EXPECT_EQ(WindowGoal::of(placement, anyWhere, Displays{display}), std::nullopt);
        EXPECT_EQ(WindowGoal::of(placement, anyWhere, Displays{display, display}), std::nullopt);
        EXPECT_EQ(WindowGoal::of(placement, anyWhere, Displays{mirror, display}), std::nullopt);
    }
}

TEST(WindowGoal, GoesToTheLargestOfDisplaysThatShowTheSame) {
    const Display small{.frame = {{0, 0}, {800, 600}}, .visible = {{0, 0}, {800, 600}}};
    const Display large{.frame = {{0, 0}, {1000, 700}}, .visible = {{0, 0}, {1000, 700}}};
    const Display other{.frame = {{1000, 0}, {1000, 700}}, .visible = {{1000, 0}, {1000, 700}}};
    const CGRect whole{{1000, 0}, {1000, 700}};
    for (const Displays& displays : {Displays{small, large, other}, Displays{other, large, small}}) {
        for (const WindowPlacement placement : {WindowPlacement::nextDisplay, WindowPlacement::previousDisplay}) {
            EXPECT_EQ(WindowGoal::of(placement, whole, displays)->target, large.visible);
        }
    }
}

TEST(WindowGoal, GoesFromTheUpperDisplayToTheLowerOne) {
    const Displays column{{.frame = {{0, 0}, {1000, 700}}, .visible = {{0, 0}, {1000, 700}}},
                          {.frame = {{0, -700}, {1000, 700}}, .visible = {{0, -700}, {1000, 700}}},
                          {.frame = {{0, 700}, {1000, 700}}, .visible = {{0, 700}, {1000, 700}}}};
    const CGRect upper{{10, -690}, {100, 100}};
    EXPECT_EQ(WindowGoal::of(WindowPlacement::nextDisplay, upper, column)->target, (CGRect{{10, 10}, {100, 100}}));
    EXPECT_EQ(WindowGoal::of(WindowPlacement::previousDisplay, upper, column)->target, (CGRect{{10, 710}, {100, 100}}));
}

class Restore : public testing::Test {
protected:
    static std::optional<WindowGoal> back(const CGRect& former, const Displays& displays) {
        PlacementTrail trail;
        const CGRect placed{{0, 0}, {500, 500}};
        trail.add(former, placed);
        return WindowGoal::of(WindowPlacement::restore, placed, displays, trail);
    }
};

TEST_F(Restore, IsTheFrameBefore) {
    EXPECT_EQ(back(anyWhere, row)->target, anyWhere);
    const CGRect onTheRight{{2000, 300}, {640, 480}};
    EXPECT_EQ(back(onTheRight, row)->target, onTheRight);
    EXPECT_EQ(back(onTheRight, row)->visible, row[1].visible);
    const CGRect partlyBeyondTheEdge{{3100, 850}, {640, 480}};
    EXPECT_EQ(back(partlyBeyondTheEdge, row)->target, partlyBeyondTheEdge);
}

TEST_F(Restore, ComesIntoSightWhereTheDisplayIsGone) {
    const Displays left{row.begin(), row.begin() + 1};
    EXPECT_EQ(back({{2000, 300}, {640, 480}}, left)->target, (CGRect{{1280, 300}, {640, 480}}));
    EXPECT_EQ(back({{-900, 0}, {640, 480}}, left)->target, (CGRect{{0, 30}, {640, 480}}));
}

TEST_F(Restore, KeepsTheShareOfTheSpaceAroundAWindowOfAnotherSize) {
    EXPECT_EQ(back({{0, 30}, {640, 480}}, row)->correction({400, 300}), (CGPoint{0, 30}));
    EXPECT_EQ(back({{1280, 600}, {640, 480}}, row)->correction({400, 300}), (CGPoint{1520, 780}));
    EXPECT_EQ(back({{640, 315}, {640, 480}}, row)->correction({400, 300}), (CGPoint{760, 405}));
    EXPECT_EQ(back(anyWhere, row)->correction({640, 480}), std::nullopt);
}

TEST_F(Restore, IsMissingWhereTheWindowStandsElsewhere) {
    EXPECT_EQ(WindowGoal::of(WindowPlacement::restore, anyWhere, row), std::nullopt);
    PlacementTrail trail;
    trail.add({{0, 0}, {10, 10}}, {{50, 50}, {100, 100}});
    EXPECT_EQ(WindowGoal::of(WindowPlacement::restore, anyWhere, row, trail), std::nullopt);
}

} // namespace
