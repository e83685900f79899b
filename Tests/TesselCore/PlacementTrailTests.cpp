#include "TesselCore/PlacementTrail.h"
#include "Tests/TesselCore/Printing.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using corvid::CGRect;
using tessel::PlacementTrail;

constexpr CGRect first{{100, 100}, {800, 600}};
constexpr CGRect second{{0, 25}, {960, 1055}};
constexpr CGRect third{{960, 25}, {960, 1055}};
constexpr CGRect elsewhere{{300, 300}, {500, 500}};

TEST(PlacementTrail, LeadsNowhereAtFirst) {
    EXPECT_EQ(PlacementTrail().former(first), std::nullopt);
}

TEST(PlacementTrail, LeadsToTheFrameBeforeTheLastPlacement) {
    PlacementTrail trail;
    trail.add(first, second);
    EXPECT_EQ(trail.former(second), first);
    trail.add(second, third);
    EXPECT_EQ(trail.former(third), second);
}

TEST(PlacementTrail, LeadsBackStepByStep) {
    PlacementTrail trail;
    trail.add(first, second);
    trail.add(second, third);
    trail.goBack(third, second);
    EXPECT_EQ(trail.former(second), first);
    trail.goBack(second, first);
    EXPECT_EQ(trail.former(first), std::nullopt);
    trail.add(first, third);
    EXPECT_EQ(trail.former(third), first);
}

TEST(PlacementTrail, LeadsNowhereFromAWindowThatStandsElsewhere) {
    PlacementTrail trail;
    trail.add(first, second);
    EXPECT_EQ(trail.former(elsewhere), std::nullopt);
    for (const CGRect& off : {CGRect{{0, 28}, {960, 1055}}, CGRect{{-3, 25}, {960, 1055}}, CGRect{{0, 25}, {957, 1055}},
                              CGRect{{0, 25}, {960, 1058}}}) {
        EXPECT_EQ(trail.former(off), std::nullopt) << off;
    }
}

TEST(PlacementTrail, AWindowTwoPointsOffStillStandsWhereItWasPut) {
    PlacementTrail trail;
    trail.add(first, second);
    EXPECT_EQ(trail.former({{2, 27}, {958, 1053}}), first);
}

TEST(PlacementTrail, APlacementThatChangesNothingLeavesTheWayBack) {
    PlacementTrail trail;
    trail.add(first, second);
    trail.add(second, second);
    EXPECT_EQ(trail.former(second), first);
    trail.add(third, third);
    EXPECT_EQ(trail.former(third), std::nullopt);
}

TEST(PlacementTrail, AWindowThatWasMovedMeanwhileBeginsAnew) {
    PlacementTrail trail;
    trail.add(first, second);
    trail.add(elsewhere, third);
    EXPECT_EQ(trail.former(third), elsewhere);
    trail.goBack(third, elsewhere);
    EXPECT_EQ(trail.former(elsewhere), std::nullopt);
}

TEST(PlacementTrail, ARepeatedPlacementMayEndElsewhere) {
    PlacementTrail trail;
    trail.add(first, second);
    trail.amend(third);
    EXPECT_EQ(trail.former(third), first);
    EXPECT_EQ(trail.former(second), std::nullopt);
}

TEST(PlacementTrail, AWindowThatHasNotAnsweredMayHaveComeToWhereItWasAskedTo) {
    for (const CGRect& present : {third, CGRect{third.origin, first.size}, CGRect{first.origin, third.size}}) {
        PlacementTrail trail;
        trail.add(first, second);
        trail.add(second, third, PlacementTrail::Answer::missing);
        EXPECT_EQ(trail.former(present), second) << present;
        trail.add(present, elsewhere);
        EXPECT_EQ(trail.former(elsewhere), present);
        trail.goBack(elsewhere, present);
        EXPECT_EQ(trail.former(present), second) << "and the way goes on";
    }
}

TEST(PlacementTrail, AWindowThatHasNotAnsweredMayHaveStayed) {
    PlacementTrail trail;
    trail.add(first, second);
    trail.add(second, third, PlacementTrail::Answer::missing);
    EXPECT_EQ(trail.former(second), first);
    trail.goBack(second, first);
    EXPECT_TRUE(trail.isEmpty());

    trail.add(first, second, PlacementTrail::Answer::missing);
    EXPECT_EQ(trail.former(first), std::nullopt);
    trail.add(first, third);
    EXPECT_EQ(trail.former(third), first);
}

TEST(PlacementTrail, AWindowThatHasNotAnsweredAndStandsElsewhereHasNoWayBack) {
    PlacementTrail trail;
    trail.add(first, second, PlacementTrail::Answer::missing);
    EXPECT_EQ(trail.former(elsewhere), std::nullopt);
}

TEST(PlacementTrail, AWindowThatAnswersAtLastStandsWhereItSays) {
    PlacementTrail trail;
    trail.add(first, second, PlacementTrail::Answer::missing);
    trail.amend(third);
    EXPECT_EQ(trail.former(third), first);
    EXPECT_EQ(trail.former({third.origin, {500, 500}}), std::nullopt);
}

TEST(PlacementTrail, ARepeatOnAWindowThatRoundsItsSizeAndAnswersLateIsNoStep) {
    const CGRect asked{second.origin, {second.size.width - 100, second.size.height}};
    PlacementTrail trail;
    trail.add(first, second);
    trail.add(second, asked, PlacementTrail::Answer::missing);
    trail.amend(asked, PlacementTrail::Answer::missing);
    trail.amend(second);
    EXPECT_EQ(trail.former(second), first);

    PlacementTrail stayed;
    stayed.add(first, second, PlacementTrail::Answer::missing);
    stayed.amend(first);
    EXPECT_TRUE(stayed.isEmpty());
}

TEST(PlacementTrail, KeepsTheLastPlacementsOnly) {
    PlacementTrail trail;
    const auto station = [](std::size_t number) { return CGRect{{10.0 * static_cast<double>(number), 0}, {100, 100}}; };
    constexpr std::size_t placements = PlacementTrail::mostPlacements + 5;
    for (std::size_t number = 0; number < placements; ++number) {
        trail.add(station(number), station(number + 1));
    }
    std::size_t present = placements;
    while (const auto former = trail.former(station(present))) {
        --present;
        EXPECT_EQ(*former, station(present));
        trail.goBack(station(present + 1), *former);
    }
    EXPECT_EQ(placements - present, PlacementTrail::mostPlacements);
}

} // namespace
