#include "Platform/X11/FrameGeometry.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>

namespace platform::x11 {
namespace {

using corvid::CGRect;

constexpr std::uint32_t gravityNorthWestFromPager = 0x2001;
constexpr std::uint32_t positionFlags = 0x300;
constexpr std::uint32_t sizeFlags = 0xc00;

constexpr FrameGeometry decorated{
    .client = {{101, 120}, {798, 575}}, .decoration = {.left = 1, .right = 1, .top = 20, .bottom = 5}, .shadow = {}};
constexpr FrameGeometry shadowed{
    .client = {{74, 77}, {852, 652}}, .decoration = {}, .shadow = {.left = 26, .right = 26, .top = 23, .bottom = 29}};

TEST(FrameGeometry, VisibleRectangleTakesDecorationsInAndShadowsOut) {
    EXPECT_EQ(visibleRectangle(decorated), (CGRect{{100, 100}, {800, 600}}));
    EXPECT_EQ(visibleRectangle(shadowed), (CGRect{{100, 100}, {800, 600}}));
}

TEST(FrameGeometry, TheOuterRectangleHasBothInIt) {
    EXPECT_EQ(outerRectangle(decorated), (CGRect{{100, 100}, {800, 600}}));
    EXPECT_EQ(outerRectangle(shadowed), (CGRect{{74, 77}, {852, 652}}));
}

TEST(FrameGeometry, TheDifferenceBetweenClientAndFrameIsDecoration) {
    const FrameGeometry unreported{.client = decorated.client, .decoration = {}, .shadow = {}};
    const CGRect drawn{{100, 100}, {800, 600}};
    EXPECT_EQ(geometryInside(drawn, drawn, unreported), decorated);
    // At another place as soon as it is shown.
    const CGRect frame{{10, 20}, {400, 300}};
    const FrameGeometry there = geometryInside(frame, drawn, unreported);
    EXPECT_EQ(there.client, (CGRect{{11, 40}, {398, 275}}));
    EXPECT_EQ(there.decoration, decorated.decoration);
    EXPECT_EQ(visibleRectangle(there), frame);
}

TEST(FrameGeometry, AMessageNamesTheOuterCornerAndTheClientsSize) {
    const PlacementRequest half{.position = {{0, 0}}, .size = {{960, 1080}}};
    EXPECT_EQ(moveResizeMessage(decorated, half),
              (MoveResizeMessage{.flags = gravityNorthWestFromPager | positionFlags | sizeFlags,
                                 .x = 0,
                                 .y = 0,
                                 .width = 958,
                                 .height = 1055}));
    EXPECT_EQ(moveResizeMessage(shadowed, half),
              (MoveResizeMessage{.flags = gravityNorthWestFromPager | positionFlags | sizeFlags,
                                 .x = -26,
                                 .y = -23,
                                 .width = 1012,
                                 .height = 1132}));
}

TEST(FrameGeometry, AMessageLeavesOutWhatIsNotAskedFor) {
    const MoveResizeMessage moved = moveResizeMessage(decorated, {.position = {{7, 9}}, .size = std::nullopt});
    EXPECT_EQ(moved, (MoveResizeMessage{.flags = gravityNorthWestFromPager | positionFlags, .x = 7, .y = 9}));
    const MoveResizeMessage sized = moveResizeMessage(decorated, {.position = std::nullopt, .size = {{100, 100}}});
    EXPECT_EQ(sized, (MoveResizeMessage{.flags = gravityNorthWestFromPager | sizeFlags, .width = 98, .height = 75}));
}

TEST(FrameGeometry, AMessageStaysWithinWhatTheProtocolCarries) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const MoveResizeMessage message =
        moveResizeMessage(decorated, {.position = {{-infinity, 1e12}}, .size = {{infinity, -5}}});
    EXPECT_EQ(message.x, -32767);
    EXPECT_EQ(message.y, 32767);
    EXPECT_EQ(message.width, 32767U);
    EXPECT_EQ(message.height, 1U);
}

TEST(FrameGeometry, ARequestIsFulfilledToThePixel) {
    const CGRect visible{{100, 100}, {800, 600}};
    EXPECT_TRUE(isFulfilled({.position = {{100.4, 99.6}}, .size = std::nullopt}, visible));
    EXPECT_TRUE(isFulfilled({.position = {{100, 100}}, .size = {{800.4, 600}}}, visible));
    EXPECT_FALSE(isFulfilled({.position = {{101, 100}}, .size = std::nullopt}, visible));
    EXPECT_FALSE(isFulfilled({.position = std::nullopt, .size = {{800, 601}}}, visible));
}

RC_GTEST_PROP(FrameGeometry, AWindowThatDoesAsTheMessageSaysFulfilsTheRequest, ()) {
    const auto border = [] { return *rc::gen::inRange(0, 60); };
    FrameGeometry geometry{.client = {{0, 0}, {500, 500}},
                           .decoration = {border(), border(), border(), border()},
                           .shadow = {border(), border(), border(), border()}};
    const PlacementRequest request{.position = corvid::CGPoint{static_cast<double>(*rc::gen::inRange(-4000, 4000)),
                                                               static_cast<double>(*rc::gen::inRange(-4000, 4000))},
                                   .size = corvid::CGSize{static_cast<double>(*rc::gen::inRange(200, 4000)),
                                                          static_cast<double>(*rc::gen::inRange(200, 4000))}};
    const MoveResizeMessage message = moveResizeMessage(geometry, request);
    // NorthWest gravity: x and y name the corner of the decoration.
    geometry.client = {{static_cast<double>(message.x + geometry.decoration.left),
                        static_cast<double>(message.y + geometry.decoration.top)},
                       {static_cast<double>(message.width), static_cast<double>(message.height)}};
    RC_ASSERT(isFulfilled(request, visibleRectangle(geometry)));
}

} // namespace
} // namespace platform::x11
