#include "Platform/Simulated/Desktop.h"
#include "Tessel/WindowActionRetry.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tessel {
namespace {

using corvid::CGRect;
using platform::AXError;
using platform::simulated::Application;
using platform::simulated::Window;
using Lines = std::vector<std::string>;
namespace AXAttribute = platform::AXAttribute;

/// Places by name, on one screen whose visible frame is (0, 25) of 1920 by 1055, with a window at (100, 100) of 800 by
/// 600 points.
class Placing : public testing::Test {
protected:
    WindowMover::Outcome perform(const WindowOrder& order) { return orders.perform(order, window.element()); }

    void attachTwoScreens() {
        // The second screen stands to the left of the primary one, 280 points lower at its top, with a panel there.
        desktop.screens.attach({{.frame = {{0, 0}, {1920, 1080}}, .visibleFrame = {{0, 0}, {1920, 1055}}},
                                {.frame = {{-1280, 0}, {1280, 800}}, .visibleFrame = {{-1280, 0}, {1280, 780}}}});
    }

    platform::simulated::Desktop desktop;
    Application& editor = desktop.applications.add({.process = 10});
    Window& window = editor.addWindow({.frame = {{100, 100}, {800, 600}}});
    PlacementMemory memory;
    WindowActionRetry orders{memory};
    CGRect natural{{100, 100}, {800, 600}};
};

TEST_F(Placing, BringsAnObedientWindowToWhereEveryPlacementWantsIt) {
    struct Expectation {
        WindowPlacement placement;
        CGRect frame;
    };
    const std::vector<Expectation> expectations{
        {WindowPlacement::topHalf, {{0, 25}, {1920, 527}}},
        {WindowPlacement::bottomHalf, {{0, 552}, {1920, 528}}},
        {WindowPlacement::topLeft, {{0, 25}, {960, 527}}},
        {WindowPlacement::topRight, {{960, 25}, {960, 527}}},
        {WindowPlacement::bottomLeft, {{0, 552}, {960, 528}}},
        {WindowPlacement::bottomRight, {{960, 552}, {960, 528}}},
        {WindowPlacement::firstThird, {{0, 25}, {640, 1055}}},
        {WindowPlacement::centerThird, {{640, 25}, {640, 1055}}},
        {WindowPlacement::lastThird, {{1280, 25}, {640, 1055}}},
        {WindowPlacement::firstTwoThirds, {{0, 25}, {1280, 1055}}},
        {WindowPlacement::lastTwoThirds, {{640, 25}, {1280, 1055}}},
    };
    for (const Expectation& expectation : expectations) {
        SCOPED_TRACE(expectation.placement.rawValue());
        window.moveTo(natural);
        EXPECT_EQ(perform(expectation.placement), WindowMover::Outcome::ended);
        EXPECT_EQ(window.frame(), expectation.frame);
        desktop.trace.take();
        perform(expectation.placement);
        EXPECT_EQ(window.frame(), expectation.frame) << "a second time changes nothing";
        EXPECT_EQ(desktop.trace.take("write").size(), 1U) << "but for writing the position";
        EXPECT_EQ(perform(WindowPlacement::restore), WindowMover::Outcome::ended);
        EXPECT_EQ(window.frame(), natural) << "and the way back is that of the first";
    }
}

TEST_F(Placing, KeepsAWindowThatRefusesItsSizeToItsCornerOrEdge) {
    window.sizes.isFixed = true;
    perform(WindowPlacement::bottomRight);
    EXPECT_EQ(window.frame(), (CGRect{{1120, 480}, {800, 600}}));
    perform(WindowPlacement::topRight);
    EXPECT_EQ(window.frame(), (CGRect{{1120, 25}, {800, 600}}));
    perform(WindowPlacement::bottomHalf);
    EXPECT_EQ(window.frame(), (CGRect{{560, 480}, {800, 600}}));
    perform(WindowPlacement::lastThird);
    EXPECT_EQ(window.frame(), (CGRect{{1120, 253}, {800, 600}}));
}

TEST_F(Placing, KeepsTheTitleBarOfAWindowThatIsTallerThanItsScreenInSight) {
    window.sizes.minimum = {900, 1200};
    perform(WindowPlacement::bottomLeft);
    EXPECT_EQ(window.frame(), (CGRect{{0, 25}, {960, 1200}}));
}

TEST_F(Placing, CorrectsATerminalWhoseSizeIsTooFarOff) {
    window.sizes = {.minimum = {0, 0}, .increment = {9, 18}};
    perform(WindowPlacement::bottomRight);
    EXPECT_EQ(window.frame(), (CGRect{{1920 - 954, 1080 - 522}, {954, 522}}));
}

TEST_F(Placing, SwitchesTheEnhancedUserInterfaceOffForTheMove) {
    editor.enhancedUserInterface = true;
    window.sizes.isFixed = true;
    perform(WindowPlacement::topLeft);
    EXPECT_EQ(desktop.trace.take("write"),
              (Lines{"write application 10 AXEnhancedUserInterface false", "write window 1 AXSize (960, 527)",
                     "write window 1 AXPosition (0, 25)", "write window 1 AXSize (960, 527)",
                     "write application 10 AXEnhancedUserInterface true", "write window 1 AXPosition (0, 25)"}));
}

TEST_F(Placing, GoesToTheSamePlaceOnAnotherScreenAndBack) {
    attachTwoScreens();
    perform(WindowAction::rightHalf);
    perform(WindowPlacement::previousDisplay);
    EXPECT_EQ(window.frame(), (CGRect{{-640, 300}, {640, 780}}));
    perform(WindowPlacement::nextDisplay);
    EXPECT_EQ(window.frame(), (CGRect{{960, 25}, {960, 1055}}));
    perform(WindowPlacement::nextDisplay);
    EXPECT_EQ(window.frame(), (CGRect{{-640, 300}, {640, 780}})) << "the first follows the last";
}

TEST_F(Placing, AWindowOfFixedSizeKeepsToItsCornerOnAnotherScreen) {
    attachTwoScreens();
    window.sizes.isFixed = true;
    perform(WindowPlacement::bottomRight);
    perform(WindowPlacement::nextDisplay);
    EXPECT_EQ(window.frame(), (CGRect{{-800, 480}, {800, 600}}));
}

TEST_F(Placing, LeavesAWindowThatHasNoOtherScreenToGoToUntouched) {
    EXPECT_EQ(perform(WindowPlacement::nextDisplay), WindowMover::Outcome::ended);
    EXPECT_EQ(perform(WindowPlacement::previousDisplay), WindowMover::Outcome::ended);
    EXPECT_EQ(desktop.trace.take("write"), Lines{});
}

TEST_F(Placing, GoesBackStepByStep) {
    attachTwoScreens();
    perform(WindowAction::leftHalf);
    perform(WindowPlacement::nextDisplay);
    perform(WindowPlacement::topRight);
    perform(WindowPlacement::restore);
    EXPECT_EQ(window.frame(), (CGRect{{-1280, 300}, {640, 780}}));
    perform(WindowPlacement::restore);
    EXPECT_EQ(window.frame(), (CGRect{{0, 25}, {960, 1055}}));
    perform(WindowPlacement::restore);
    EXPECT_EQ(window.frame(), natural);
    EXPECT_EQ(perform(WindowPlacement::restore), WindowMover::Outcome::nothingToRestore);
    EXPECT_EQ(window.frame(), natural);
}

TEST_F(Placing, LeavesAWindowThatWasMovedAfterItsPlacementWhereItIs) {
    perform(WindowAction::leftHalf);
    const CGRect byHand{{400, 25}, {960, 1055}};
    window.moveTo(byHand);
    desktop.trace.take();
    EXPECT_EQ(perform(WindowPlacement::restore), WindowMover::Outcome::nothingToRestore);
    EXPECT_EQ(window.frame(), byHand);
    EXPECT_EQ(desktop.trace.take("write"), Lines{});
}

TEST_F(Placing, GoesBackFromWhereAWindowThatRefusesItsSizeCameToStand) {
    window.sizes.isFixed = true;
    perform(WindowAction::rightHalf);
    EXPECT_EQ(perform(WindowPlacement::restore), WindowMover::Outcome::ended);
    EXPECT_EQ(window.frame(), natural);
}

TEST_F(Placing, APlacementThatIsRefusedKeepsTheWayBackOfTheOneBefore) {
    perform(WindowAction::leftHalf);
    const CGRect placed = window.frame();
    // As a fullscreen window does.
    const CGRect whole{{0, 0}, {1920, 1080}};
    window.moveTo(whole);
    window.faults.failWrites(AXAttribute::position, AXError::cannotComplete);
    window.faults.failWrites(AXAttribute::size, AXError::cannotComplete);
    EXPECT_EQ(perform(WindowPlacement::topLeft), WindowMover::Outcome::refused);
    EXPECT_EQ(window.frame(), whole);
    window.faults.clear();
    window.moveTo(placed);
    EXPECT_EQ(perform(WindowPlacement::restore), WindowMover::Outcome::ended);
    EXPECT_EQ(window.frame(), natural);
}

} // namespace
} // namespace tessel
