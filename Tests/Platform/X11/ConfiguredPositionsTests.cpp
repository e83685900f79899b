#include "Platform/X11/ConfiguredPositions.h"

#include <gtest/gtest.h>

namespace platform::x11 {
namespace {

using corvid::CGPoint;

constexpr Extents titled{.left = 2, .right = 2, .top = 20, .bottom = 2};
constexpr std::uint32_t northWest = 1;
constexpr std::uint32_t fixedGravity = 10;

TEST(ConfiguredPositions, ThePositionIsThatOfTheFrameUntilAnotherOneWasSeen) {
    ConfiguredPositions positions;
    EXPECT_EQ(positions.request({302, 220}, northWest, titled), (CGPoint{300, 200}));
    positions.observe({300, 200}, {300, 200}, northWest, titled);
    EXPECT_EQ(positions.request({302, 220}, northWest, titled), (CGPoint{302, 220}));
    positions.clear();
    EXPECT_EQ(positions.request({302, 220}, northWest, titled), (CGPoint{300, 200}));
}

TEST(ConfiguredPositions, AnotherGravityOrDecorationHasARuleOfItsOwn) {
    ConfiguredPositions positions;
    positions.observe({300, 200}, {300, 200}, fixedGravity, titled);
    EXPECT_EQ(positions.request({302, 220}, northWest, titled), (CGPoint{300, 200}));
    EXPECT_EQ(positions.request({302, 220}, fixedGravity, {}), (CGPoint{302, 220}));
    EXPECT_EQ(positions.request({302, 220}, fixedGravity, titled), (CGPoint{302, 220}));
    for (const Extents& other : {Extents{.left = 3, .right = 2, .top = 20, .bottom = 2},
                                 Extents{.left = 2, .right = 3, .top = 20, .bottom = 2},
                                 Extents{.left = 2, .right = 2, .top = 21, .bottom = 2},
                                 Extents{.left = 2, .right = 2, .top = 20, .bottom = 3}}) {
        EXPECT_EQ(positions.request({302, 220}, fixedGravity, other), (CGPoint{302.0 - other.left, 220.0 - other.top}));
    }
}

TEST(ConfiguredPositions, ADistanceThatNoDecorationExplainsTeachesNothing) {
    ConfiguredPositions positions;
    positions.observe({300, 200}, {500, 220}, northWest, titled);
    EXPECT_EQ(positions.request({302, 220}, northWest, titled), (CGPoint{300, 200}));
    positions.observe({300, 200}, {302, 100}, northWest, titled);
    EXPECT_EQ(positions.request({302, 220}, northWest, titled), (CGPoint{300, 200}));
    positions.observe({300, 200}, {300, 500}, northWest, titled);
    EXPECT_EQ(positions.request({302, 220}, northWest, titled), (CGPoint{302, 200})) << "the other dimension counts";
}

TEST(ConfiguredPositions, AnyNumberOfKindsOfWindowsNeedsLittleMemory) {
    ConfiguredPositions positions;
    positions.observe({300, 200}, {300, 200}, northWest, titled);
    for (std::int32_t kind = 0; kind < 10000; ++kind) {
        positions.observe({0, 0}, {0, 0}, northWest, {.left = kind, .right = 0, .top = 0, .bottom = 0});
    }
    EXPECT_EQ(positions.request({302, 220}, northWest, {.left = 9999, .right = 0, .top = 0, .bottom = 0}),
              (CGPoint{302, 220}));
    EXPECT_EQ(positions.request({302, 220}, northWest, titled), (CGPoint{300, 200})) << "forgotten";
}

} // namespace
} // namespace platform::x11
