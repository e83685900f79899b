#include "CorvidKit/Toolkit/PopoverPlacement.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace corvid::toolkit {
namespace {

using Anchor = platform::Popover::Anchor;
using platform::Screen;

constexpr CGSize size{340, 560};
/// A panel of 30 points at the top; in the screen space, y up.
constexpr Screen topPanel{.frame = {{0, 0}, {1920, 1080}}, .visibleFrame = {{0, 0}, {1920, 1050}}};
constexpr Screen bottomPanel{.frame = {{0, 0}, {1920, 1080}}, .visibleFrame = {{0, 30}, {1920, 1050}}};
constexpr Screen leftPanel{.frame = {{0, 0}, {1920, 1080}}, .visibleFrame = {{30, 0}, {1890, 1080}}};
/// To the right of the others, and higher.
constexpr Screen second{.frame = {{1920, 200}, {1280, 1024}}, .visibleFrame = {{1920, 200}, {1280, 1024}}};

Anchor at(double x, double y) {
    return {.rect = CGRect{{x, y}, {0, 0}}, .isAtPointer = true};
}

TEST(PopoverPlacement, HangsAtWhatItWasOpenedFrom) {
    struct Case {
        std::string what;
        Anchor anchor;
        std::vector<Screen> screens;
        CGPoint topLeft; // y up
    };
    const std::vector<Case> cases{
        {"below a click in a panel at the top", at(1000, 1065), {topPanel}, {830, 1044}},
        {"below an item of a panel at the top", {.rect = CGRect{{988, 1053}, {24, 24}}}, {topPanel}, {830, 1044}},
        {"not beyond the right edge", at(1900, 1065), {topPanel}, {1574, 1044}},
        {"not beyond the left edge", at(3, 1065), {topPanel}, {6, 1044}},
        {"above a click in a panel at the bottom", at(1000, 15), {bottomPanel}, {830, 596}},
        {"beside a panel at the left", at(15, 900), {leftPanel}, {36, 894}},
        {"within the screen at its middle", at(960, 541), {topPanel}, {790, 566}},
        {"on the screen of the click", at(2500, 1210), {topPanel, second}, {2330, 1204}},
        {"on the nearest screen for a point beside all", at(2500, 1400), {topPanel, second}, {2330, 1218}},
        {"at the end of a panel at the top", {}, {topPanel}, {1574, 1044}},
        {"at the end of a panel at the bottom", {}, {bottomPanel}, {1574, 596}},
        {"in the top right corner without a panel", {}, {second}, {2854, 1218}},
    };
    for (const Case& each : cases) {
        const std::optional<CGRect> frame = popoverFrame(each.anchor, size, each.screens);
        ASSERT_TRUE(frame.has_value()) << each.what;
        EXPECT_EQ((CGPoint{frame->minX(), frame->maxY()}), each.topLeft) << each.what;
        EXPECT_EQ(frame->size, size) << each.what;
    }
}

TEST(PopoverPlacement, IsAsHighAsThereIsRoomWhereNotAllOfItFits) {
    const Screen small{.frame = {{0, 0}, {800, 480}}, .visibleFrame = {{0, 0}, {800, 450}}};
    const std::vector<Screen> screens{small};
    for (const double y : {465.0, 100.0}) {
        const std::optional<CGRect> frame = popoverFrame(at(400, y), size, screens);
        ASSERT_TRUE(frame.has_value());
        EXPECT_EQ(*frame, (CGRect{{230, 6}, {340, 438}})) << y;
    }
    const Screen covered{.frame = {{0, 0}, {800, 480}}, .visibleFrame = {{0, 470}, {800, 10}}};
    const std::optional<CGRect> frame = popoverFrame(at(400, 475), size, std::vector{covered});
    ASSERT_TRUE(frame.has_value());
    EXPECT_EQ(frame->maxY(), 474) << "it begins where there is room, and is whole where there is none";
    EXPECT_EQ(frame->size, size);
}

TEST(PopoverPlacement, HasNoPlaceWithoutAScreen) {
    EXPECT_EQ(popoverFrame(at(10, 10), size, {}), std::nullopt);
}

RC_GTEST_PROP(PopoverPlacement, IsWhollyVisibleWhereverTheClickWas, ()) {
    const auto coordinate = [] { return static_cast<double>(*rc::gen::inRange(-3000, 6000)); };
    const std::vector<Screen> screens{topPanel, second};
    const std::optional<CGRect> frame = popoverFrame(at(coordinate(), coordinate()), size, screens);
    RC_ASSERT(frame.has_value());
    const bool isInside = std::any_of(screens.begin(), screens.end(), [&](const Screen& screen) {
        return intersection(screen.visibleFrame, *frame) == frame;
    });
    RC_ASSERT(isInside);
}

} // namespace
} // namespace corvid::toolkit
