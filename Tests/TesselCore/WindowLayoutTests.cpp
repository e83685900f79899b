#include "TesselCore/WindowLayout.h"
#include "Tests/CorvidKitCore/SpecialNumbers.h"
#include "Tests/TesselCore/Printing.h"

#include <gtest/gtest.h>

namespace {

using corvid::CGRect;
using corvid::CGSize;
using corvid::infinity;
using corvid::nan;
using tessel::WindowAction;
namespace WindowLayout = tessel::WindowLayout;

constexpr CGRect visible{{10, 25}, {1511, 920}};

TEST(WindowLayout, FlipTurnsTheScreenSpaceUpsideDownAboutThePrimaryScreen) {
    EXPECT_EQ(WindowLayout::flip({{0, 0}, {1512, 945}}, 982), (CGRect{{0, 37}, {1512, 945}}));
    EXPECT_EQ(WindowLayout::flip({{0, 0}, {1512, 982}}, 982), (CGRect{{0, 0}, {1512, 982}}));
}

TEST(WindowLayout, FlipPutsAScreenAboveThePrimaryAtANegativeTop) {
    EXPECT_EQ(WindowLayout::flip({{0, 982}, {1920, 1080}}, 982), (CGRect{{0, -1080}, {1920, 1080}}));
}

TEST(WindowLayout, FlipPutsAScreenBelowThePrimaryUnderIt) {
    EXPECT_EQ(WindowLayout::flip({{-300, -1080}, {1920, 1080}}, 982), (CGRect{{-300, 982}, {1920, 1080}}));
}

TEST(WindowLayout, BothHalvesLeaveOneColumnOfAnOddWidthUncovered) {
    const CGRect left = WindowLayout::targetFrame(WindowAction::leftHalf, {}, visible);
    const CGRect right = WindowLayout::targetFrame(WindowAction::rightHalf, {}, visible);
    EXPECT_EQ(left.minX(), visible.minX());
    EXPECT_EQ(right.maxX(), visible.maxX());
    EXPECT_EQ(right.minX() - left.maxX(), 1);
}

TEST(WindowLayout, CenteredShrinksToTheRectangleAndRoundsTheOriginOnly) {
    EXPECT_EQ(WindowLayout::centered({100.5, 50}, visible), (CGRect{{715, 460}, {100.5, 50}}));
    EXPECT_EQ(WindowLayout::centered({9999, 9999}, visible), visible);
}

TEST(WindowLayout, FallbackKeepsARefusingHalfAtItsEdgeWithItsRealSize) {
    EXPECT_EQ(WindowLayout::fallbackFrame(WindowAction::leftHalf, {900, 700}, visible),
              (CGRect{{10, 135}, {900, 700}}));
    EXPECT_EQ(WindowLayout::fallbackFrame(WindowAction::rightHalf, {900, 700}, visible),
              (CGRect{{621, 135}, {900, 700}}));
}

TEST(WindowLayout, FallbackKeepsTheRealSizeOfAHalfLargerThanTheScreen) {
    EXPECT_EQ(WindowLayout::fallbackFrame(WindowAction::leftHalf, {2000, 1000}, visible),
              (CGRect{{10, 25}, {2000, 1000}}));
    EXPECT_EQ(WindowLayout::fallbackFrame(WindowAction::rightHalf, {2000, 1000}, visible),
              (CGRect{{-479, 25}, {2000, 1000}}));
}

TEST(WindowLayout, FallbackCentersAnythingElseShrunkToTheScreen) {
    for (const WindowAction action :
         {WindowAction::center, WindowAction::maximize, WindowAction::almostMaximize, WindowAction::maximizeHeight}) {
        EXPECT_EQ(WindowLayout::fallbackFrame(action, {901, 700}, visible), (CGRect{{315, 135}, {901, 700}})) << action;
        EXPECT_EQ(WindowLayout::fallbackFrame(action, {2000, 1000}, visible), visible) << action;
    }
}

TEST(WindowLayout, SizesMatchWithinTheToleranceInBothDimensions) {
    EXPECT_TRUE(WindowLayout::sizeMatches({100, 50}, {102, 48}, 2));
    EXPECT_FALSE(WindowLayout::sizeMatches({100, 50}, {102.5, 50}, 2));
    EXPECT_FALSE(WindowLayout::sizeMatches({100, 50}, {100, 47.5}, 2));
    EXPECT_TRUE(WindowLayout::sizeMatches({100, 50}, {100, 50}, 0));
    EXPECT_FALSE(WindowLayout::sizeMatches({100, 50}, {100, 50}, -1));
}

TEST(WindowLayout, SizesNeverMatchWhereANaNTakesPart) {
    const CGSize size{100, 50};
    EXPECT_FALSE(WindowLayout::sizeMatches({nan, 50}, size, infinity));
    EXPECT_FALSE(WindowLayout::sizeMatches({100, nan}, size, infinity));
    EXPECT_FALSE(WindowLayout::sizeMatches(size, {nan, 50}, infinity));
    EXPECT_FALSE(WindowLayout::sizeMatches(size, size, nan));
    EXPECT_FALSE(WindowLayout::sizeMatches({infinity, 50}, {infinity, 50}, 2));
}

} // namespace
