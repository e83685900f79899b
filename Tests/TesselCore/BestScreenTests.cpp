#include "TesselCore/WindowLayout.h"
#include "Tests/CorvidKitCore/SpecialNumbers.h"
#include "Tests/TesselCore/Printing.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace {

using corvid::CGRect;
using corvid::infinity;
using corvid::nan;
using tessel::WindowLayout::bestScreen;

/// Two screens side by side, the second one higher.
const std::vector<CGRect> sideBySide{{{0, 0}, {1512, 982}}, {{1512, -200}, {1920, 1080}}};

TEST(BestScreen, IsTheOneThatTheWindowOverlapsMost) {
    EXPECT_EQ(bestScreen({{100, 100}, {800, 600}}, sideBySide), 0U);
    EXPECT_EQ(bestScreen({{1600, 0}, {800, 600}}, sideBySide), 1U);
    EXPECT_EQ(bestScreen({{1012, 100}, {800, 600}}, sideBySide), 0U);
    EXPECT_EQ(bestScreen({{1212, 100}, {800, 600}}, sideBySide), 1U);
}

TEST(BestScreen, IsTheFirstListedWhenTheOverlapsAreEqual) {
    EXPECT_EQ(bestScreen({{1112, 100}, {800, 600}}, sideBySide), 0U);
    const std::vector<CGRect> reversed{sideBySide[1], sideBySide[0]};
    EXPECT_EQ(bestScreen({{1112, 100}, {800, 600}}, reversed), 0U);
}

TEST(BestScreen, IsTheFirstListedOfMirroredScreens) {
    const std::vector<CGRect> mirrored{{{0, 0}, {1920, 1080}}, {{0, 0}, {1920, 1080}}};
    EXPECT_EQ(bestScreen({{10, 10}, {100, 100}}, mirrored), 0U);
}

TEST(BestScreen, IsTheNearestToTheCentreOfAWindowOffEveryScreen) {
    EXPECT_EQ(bestScreen({{-900, 0}, {800, 600}}, sideBySide), 0U);
    EXPECT_EQ(bestScreen({{3500, 0}, {800, 600}}, sideBySide), 1U);
    // Below both: the first reaches further down.
    EXPECT_EQ(bestScreen({{1500, 1000}, {200, 200}}, sideBySide), 0U);
    // Above the second's upper edge, and far above the first's.
    EXPECT_EQ(bestScreen({{1400, -400}, {200, 100}}, sideBySide), 1U);
}

TEST(BestScreen, IsTheFirstListedOfEquallyNearOnes) {
    const std::vector<CGRect> apart{{{0, 0}, {100, 100}}, {{300, 0}, {100, 100}}};
    EXPECT_EQ(bestScreen({{190, 10}, {20, 20}}, apart), 0U);
    const std::vector<CGRect> reversed{apart[1], apart[0]};
    EXPECT_EQ(bestScreen({{190, 10}, {20, 20}}, reversed), 0U);
}

TEST(BestScreen, CountsAnEdgeTouchAsOffScreen) {
    // Touches the first screen's edge with its whole height, but its centre is nearer to the second one.
    const std::vector<CGRect> screens{{{0, 0}, {100, 100}}, {{141, 0}, {100, 100}}};
    EXPECT_EQ(bestScreen({{100, 0}, {41, 100}}, screens), 0U);
    const std::vector<CGRect> overlappingLater{{{0, 0}, {100, 100}}, {{139, 0}, {100, 100}}};
    EXPECT_EQ(bestScreen({{100, 0}, {41, 100}}, overlappingLater), 1U);
}

TEST(BestScreen, IsTheOnlyScreenWhereverTheWindowIs) {
    const std::vector<CGRect> one{{{0, 0}, {1512, 982}}};
    EXPECT_EQ(bestScreen({{100, 100}, {10, 10}}, one), 0U);
    EXPECT_EQ(bestScreen({{-50000, 70000}, {10, 10}}, one), 0U);
    EXPECT_EQ(bestScreen({{nan, nan}, {nan, nan}}, one), 0U);
}

TEST(BestScreen, IsNothingOnlyWithoutScreens) {
    EXPECT_EQ(bestScreen({{0, 0}, {10, 10}}, {}), std::nullopt);
}

TEST(BestScreen, MeasuresAWindowOfNegativeSizeByWhatItCovers) {
    EXPECT_EQ(bestScreen({{2400, 600}, {-800, -600}}, sideBySide), 1U);
}

TEST(BestScreen, TakesTheFirstScreenForAWindowThatIsNowhere) {
    EXPECT_EQ(bestScreen({{nan, 0}, {100, 100}}, sideBySide), 0U);
    EXPECT_EQ(bestScreen({{nan, nan}, {nan, nan}}, sideBySide), 0U);
}

TEST(BestScreen, GoesByTheOtherAxisWhenOneIsANaN) {
    EXPECT_EQ(bestScreen({{1600, 0}, {100, nan}}, sideBySide), 1U);
    EXPECT_EQ(bestScreen({{100, 0}, {100, nan}}, sideBySide), 0U);
}

TEST(BestScreen, IsNotMisledByAScreenOfNaNs) {
    const std::vector<CGRect> screens{{{nan, nan}, {nan, nan}}, {{0, 0}, {1000, 1000}}};
    EXPECT_EQ(bestScreen({{10, 10}, {100, 100}}, screens), 1U);
}

TEST(BestScreen, HandlesAnEndlessWindow) {
    EXPECT_EQ(bestScreen({{0, 0}, {infinity, infinity}}, sideBySide), 1U);
    EXPECT_EQ(bestScreen({{-infinity, 0}, {100, 100}}, sideBySide), 0U);
}

} // namespace
