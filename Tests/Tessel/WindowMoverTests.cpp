#include "Platform/Simulated/Desktop.h"
#include "Tessel/WindowMover.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace tessel {
namespace {

using namespace std::chrono_literals;
using corvid::CGPoint;
using corvid::CGRect;
using corvid::CGSize;
using platform::simulated::Application;
using platform::simulated::Window;
using Lines = std::vector<std::string>;

/// A window at (100, 100) of 800 by 600 points, on a screen whose visible frame is (0, 25) of 1920 by 1055.
class Mover : public testing::Test {
protected:
    Lines writes() { return desktop.trace.take("write"); }

    platform::simulated::Desktop desktop;
    Application& editor = desktop.applications.add({.process = 10});
    Window& window = editor.addWindow({.frame = {{100, 100}, {800, 600}}});
};

TEST_F(Mover, ReadsTheFrameOfAWindow) {
    EXPECT_EQ(WindowMover::frame(window.element()), (CGRect{{100, 100}, {800, 600}}));
}

TEST_F(Mover, WritesSizePositionAndSizeAgain) {
    WindowMover::perform(WindowAction::leftHalf, window.element());
    EXPECT_EQ(writes(), (Lines{"write window 1 AXSize (960, 1055)", "write window 1 AXPosition (0, 25)",
                               "write window 1 AXSize (960, 1055)"}));
}

TEST_F(Mover, WritesThePositionAloneWhenTheSizeStaysAndCorrectsNothing) {
    WindowMover::perform(WindowAction::center, window.element());
    EXPECT_EQ(writes(), Lines{"write window 1 AXPosition (560, 253)"});
}

TEST_F(Mover, BringsAnObedientWindowToWhereEveryActionWantsIt) {
    struct Expectation {
        WindowAction action;
        CGRect frame;
    };
    const std::vector<Expectation> expectations{
        {WindowAction::leftHalf, {{0, 25}, {960, 1055}}},
        {WindowAction::rightHalf, {{960, 25}, {960, 1055}}},
        {WindowAction::center, {{560, 253}, {800, 600}}},
        {WindowAction::maximize, {{0, 25}, {1920, 1055}}},
        {WindowAction::almostMaximize, {{96, 78}, {1728, 950}}},
        {WindowAction::maximizeHeight, {{100, 25}, {800, 1055}}},
    };
    for (const Expectation& expectation : expectations) {
        SCOPED_TRACE(expectation.action.rawValue());
        window.moveTo({{100, 100}, {800, 600}});
        WindowMover::perform(expectation.action, window.element());
        EXPECT_EQ(window.frame(), expectation.frame);
        WindowMover::perform(expectation.action, window.element());
        EXPECT_EQ(window.frame(), expectation.frame) << "a second press changes nothing";
    }
}

TEST_F(Mover, WorksOnTheScreenThatTheWindowIsMostlyOn) {
    // The second screen stands to the right of the primary one, 100 points higher, with a panel at its bottom.
    desktop.screens.attach({{.frame = {{0, 0}, {1280, 800}}, .visibleFrame = {{0, 0}, {1280, 776}}},
                            {.frame = {{1280, 100}, {1920, 1080}}, .visibleFrame = {{1280, 140}, {1920, 1040}}}});
    window.moveTo({{1200, 0}, {800, 600}});
    WindowMover::perform(WindowAction::rightHalf, window.element());
    EXPECT_EQ(window.frame(), (CGRect{{2240, -380}, {960, 1040}}));
    window.moveTo({{700, 0}, {800, 600}});
    WindowMover::perform(WindowAction::rightHalf, window.element());
    EXPECT_EQ(window.frame(), (CGRect{{640, 24}, {640, 776}}));
}

TEST_F(Mover, AsksForTheScreensAnewEachTime) {
    WindowMover::perform(WindowAction::maximize, window.element());
    desktop.screens.attach({{.frame = {{0, 0}, {1024, 768}}, .visibleFrame = {{0, 0}, {1024, 768}}}});
    WindowMover::perform(WindowAction::maximize, window.element());
    EXPECT_EQ(window.frame(), (CGRect{{0, 0}, {1024, 768}}));
}

TEST_F(Mover, PutsAWindowOfFixedSizeFlushWithItsEdgeAndInTheMiddleOfTheHeight) {
    window.sizes.isFixed = true;
    WindowMover::perform(WindowAction::rightHalf, window.element());
    EXPECT_EQ(window.frame(), (CGRect{{1120, 253}, {800, 600}}));
}

TEST_F(Mover, KeepsTheLeftEdgeOfAWindowThatRefusesTheLeftHalf) {
    window.sizes.minimum = {1200, 100};
    WindowMover::perform(WindowAction::leftHalf, window.element());
    EXPECT_EQ(window.frame(), (CGRect{{0, 25}, {1200, 1055}}));
    window.sizes = {.maximum = {700, 500}};
    WindowMover::perform(WindowAction::leftHalf, window.element());
    EXPECT_EQ(window.frame(), (CGRect{{0, 303}, {700, 500}}));
}

TEST_F(Mover, CentersAWindowThatRefusesAnythingElse) {
    window.sizes.maximum = {1000, 800};
    for (const WindowAction action :
         {WindowAction::maximize, WindowAction::almostMaximize, WindowAction::maximizeHeight}) {
        SCOPED_TRACE(action.rawValue());
        window.moveTo({{0, 25}, {1000, 800}});
        WindowMover::perform(action, window.element());
        EXPECT_EQ(window.frame(), (CGRect{{460, 153}, {1000, 800}}));
    }
}

TEST_F(Mover, AcceptsTheSizeOfATerminalThatIsAlmostRight) {
    // Rows of 17 points: 1054 is the nearest height below 1055.
    window.sizes = {.minimum = {0, 0}, .increment = {8, 17}};
    WindowMover::perform(WindowAction::leftHalf, window.element());
    EXPECT_EQ(window.frame(), (CGRect{{0, 25}, {960, 1054}}));
}

TEST_F(Mover, CorrectsATerminalWhoseSizeIsTooFarOff) {
    // Rows of 18 points: 1044 is the nearest height below 1055.
    window.sizes = {.minimum = {0, 0}, .increment = {9, 18}};
    WindowMover::perform(WindowAction::rightHalf, window.element());
    EXPECT_EQ(window.frame(), (CGRect{{1920 - 954, 31}, {954, 1044}}));
}

TEST_F(Mover, CorrectsOnceAndDoesNotLookAgain) {
    // A window that answers every request by shrinking a little would never reach the requested size.
    window.sizes.maximum = {900, 900};
    desktop.accessibility.interrupt(8, [&] { window.sizes.maximum = {500, 500}; });
    WindowMover::perform(WindowAction::maximize, window.element());
    EXPECT_EQ(desktop.trace.lines().back(), "write window 1 AXPosition (510, 103)");
    EXPECT_EQ(writes().size(), 4U);
}

TEST_F(Mover, CorrectsALateWindowByWhatItShows) {
    window.lateness.readings = 2;
    WindowMover::perform(WindowAction::maximize, window.element());
    EXPECT_EQ(writes().back(), "write window 1 AXPosition (560, 253)");
}

TEST_F(Mover, LeavesAWindowThatTakesItsTimeToItself) {
    window.lateness.time = 75ms;
    WindowMover::perform(WindowAction::center, window.element());
    EXPECT_EQ(writes(), Lines{"write window 1 AXPosition (560, 253)"});
    desktop.mainActor.advance(75ms);
    EXPECT_EQ(window.frame(), (CGRect{{560, 253}, {800, 600}}));
}

TEST_F(Mover, SwitchesTheEnhancedUserInterfaceOffForTheMoveAndOnBeforeItLooksAgain) {
    editor.enhancedUserInterface = true;
    window.sizes.isFixed = true;
    WindowMover::perform(WindowAction::leftHalf, window.element());
    EXPECT_EQ(
        desktop.trace.take(),
        (Lines{"read window 1 AXPosition", "read window 1 AXSize", "read screens", "read window 1 process",
               "read application 10 AXEnhancedUserInterface", "write application 10 AXEnhancedUserInterface false",
               "write window 1 AXSize (960, 1055)", "write window 1 AXPosition (0, 25)",
               "write window 1 AXSize (960, 1055)", "write application 10 AXEnhancedUserInterface true",
               "read window 1 AXPosition", "read window 1 AXSize", "write window 1 AXPosition (0, 253)"}));
    EXPECT_EQ(editor.enhancedUserInterface, platform::AXValue(true));
    EXPECT_EQ(window.frame(), (CGRect{{0, 253}, {800, 600}}));
}

TEST_F(Mover, DoesNotTouchAnEnhancedUserInterfaceThatIsNotTrue) {
    const std::vector<platform::AXValue> values{false,        std::string("true"), CGPoint{1, 1},
                                                CGSize{1, 1}, window.element(),    std::vector{window.element()}};
    for (const platform::AXValue& value : values) {
        SCOPED_TRACE(value.index());
        editor.enhancedUserInterface = value;
        window.moveTo({{100, 100}, {800, 600}});
        WindowMover::perform(WindowAction::leftHalf, window.element());
        EXPECT_EQ(desktop.trace.take("write application"), Lines{});
        EXPECT_EQ(window.frame(), (CGRect{{0, 25}, {960, 1055}}));
        EXPECT_EQ(editor.enhancedUserInterface, value);
    }
}

TEST_F(Mover, MovesTheWindowOnlyAndNotItsApplicationsOthers) {
    Window& other = editor.addWindow({.frame = {{5, 50}, {100, 100}}});
    WindowMover::perform(WindowAction::maximize, window.element());
    EXPECT_EQ(other.frame(), (CGRect{{5, 50}, {100, 100}}));
}

} // namespace
} // namespace tessel
