#include "TesselCore/WindowMove.h"
#include "Tests/CorvidKitCore/SpecialNumbers.h"
#include "Tests/TesselCore/Printing.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <vector>

namespace {

using corvid::CGPoint;
using corvid::CGRect;
using corvid::nan;
using tessel::WindowAction;
using tessel::WindowMove;
using Steps = std::vector<WindowMove>;

constexpr CGRect visibleFrame{{10, 25}, {1511, 920}};

TEST(WindowMove, EqualsTheSameWriteOfTheSameValue) {
    EXPECT_EQ(WindowMove::setSize({1, 2}), WindowMove::setSize({1, 2}));
    EXPECT_NE(WindowMove::setSize({1, 2}), WindowMove::setSize({1, 3}));
    EXPECT_NE(WindowMove::setSize({1, 2}), WindowMove::setPosition({1, 2}));
}

TEST(WindowMove, StepsOnlyMoveAWindowThatHasTheSizeAlready) {
    EXPECT_EQ(WindowMove::steps({{5, 6}, {755, 920}}, {{0, 25}, {755, 920}}),
              (Steps{WindowMove::setPosition({0, 25})}));
}

TEST(WindowMove, StepsMoveAWindowThatIsInPlaceAlreadyToo) {
    EXPECT_EQ(WindowMove::steps(visibleFrame, visibleFrame), (Steps{WindowMove::setPosition({10, 25})}));
}

TEST(WindowMove, StepsWriteTheSizeBeforeAndAfterThePosition) {
    const Steps steps{WindowMove::setSize({755, 920}), WindowMove::setPosition({0, 25}),
                      WindowMove::setSize({755, 920})};
    EXPECT_EQ(WindowMove::steps({{0, 25}, {755.5, 920}}, {{0, 25}, {755, 920}}), steps);
    EXPECT_EQ(WindowMove::steps({{0, 25}, {755, 919.5}}, {{0, 25}, {755, 920}}), steps);
    EXPECT_EQ(WindowMove::steps({{900, 700}, {20, 30}}, {{0, 25}, {755, 920}}), steps);
}

TEST(WindowMove, StepsCountATinyDifferenceInSize) {
    EXPECT_EQ(WindowMove::steps({{0, 0}, {755, 920}}, {{0, 0}, {755.0000000001, 920}}).size(), 3U);
}

TEST(WindowMove, StepsWriteTheSizeWhenItIsUnknown) {
    EXPECT_EQ(WindowMove::steps({{0, 0}, {nan, 920}}, {{0, 0}, {755, 920}}).size(), 3U);
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(WindowMove::steps({{0, 0}, {infinity, 920}}, {{0, 0}, {infinity, 920}}).size(), 3U);
}

TEST(WindowMove, NoCorrectionWithinTwoPointsOfTheSize) {
    const CGRect target{{10, 25}, {755, 920}};
    EXPECT_EQ(WindowMove::correction(WindowAction::leftHalf, {755, 920}, target, visibleFrame), std::nullopt);
    EXPECT_EQ(WindowMove::correction(WindowAction::leftHalf, {753, 922}, target, visibleFrame), std::nullopt);
}

TEST(WindowMove, ACorrectionBeyondTwoPointsInEitherDimension) {
    const CGRect target{{10, 25}, {755, 920}};
    EXPECT_EQ(WindowMove::correction(WindowAction::leftHalf, {752.5, 920}, target, visibleFrame), (CGPoint{10, 25}));
    EXPECT_EQ(WindowMove::correction(WindowAction::leftHalf, {755, 917.5}, target, visibleFrame), (CGPoint{10, 26}));
    EXPECT_EQ(WindowMove::correction(WindowAction::leftHalf, {757.0001, 920}, target, visibleFrame), (CGPoint{10, 25}));
}

TEST(WindowMove, CorrectionKeepsALeftHalfAtTheLeftEdgeCentredVertically) {
    EXPECT_EQ(WindowMove::correction(WindowAction::leftHalf, {900, 701}, {{10, 25}, {755, 920}}, visibleFrame),
              (CGPoint{10, 135}));
}

TEST(WindowMove, CorrectionKeepsARightHalfFlushWithTheRightEdgeByItsRealWidth) {
    const CGRect target{{766, 25}, {755, 920}};
    EXPECT_EQ(WindowMove::correction(WindowAction::rightHalf, {900, 920}, target, visibleFrame), (CGPoint{621, 25}));
    EXPECT_EQ(WindowMove::correction(WindowAction::rightHalf, {2000, 1000}, target, visibleFrame), (CGPoint{-479, 25}));
}

TEST(WindowMove, CorrectionCentersEverythingElse) {
    for (const WindowAction action :
         {WindowAction::center, WindowAction::maximize, WindowAction::almostMaximize, WindowAction::maximizeHeight}) {
        EXPECT_EQ(WindowMove::correction(action, {901, 700}, visibleFrame, visibleFrame), (CGPoint{315, 135}))
            << action;
        EXPECT_EQ(WindowMove::correction(action, {2000, 1000}, visibleFrame, visibleFrame), (CGPoint{10, 25}))
            << action;
    }
}

TEST(WindowMove, CorrectsAWindowWhoseSizeIsUnknown) {
    const std::optional<CGPoint> corrected =
        WindowMove::correction(WindowAction::leftHalf, {nan, 920}, {{10, 25}, {755, 920}}, visibleFrame);
    EXPECT_EQ(corrected, (CGPoint{10, 25}));
}

} // namespace
