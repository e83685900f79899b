#include "CorvidKit/HotKeys.h"
#include "Platform/Simulated/Desktop.h"
#include "Platform/Simulated/Element.h"
#include "Tessel/AppState.h"
#include "Tessel/WindowActionRetry.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>

namespace tessel {
namespace {

using namespace std::chrono_literals;
using corvid::CGRect;
using platform::AXError;
using platform::simulated::Application;
using platform::simulated::Window;
namespace AXAttribute = platform::AXAttribute;

/// One screen of 1920 by 1080 with a panel of 25 at the top, and a window of fixed size, whose last step depends on
/// what is read after the writes.
class Retry : public testing::Test {
protected:
    /// The number of an action's reads and writes before its frame is read again.
    static constexpr std::size_t beforeTheLastReading = 7;

    void failTheLastReadingOfTheNextAction(AXError error) {
        platform::simulated::Accessibility& accessibility = desktop.accessibility;
        accessibility.failOperation(accessibility.operationCount() + beforeTheLastReading, error);
    }

    void answerNothing(Window& silent) { silent.faults.failReads(AXAttribute::position, AXError::cannotComplete); }

    std::size_t readings() { return desktop.trace.take("read window 1 AXPosition").size(); }

    [[nodiscard]] bool isDone() const { return desktop.mainActor.waiting().empty(); }

    platform::simulated::Desktop desktop;
    Application& editor = desktop.applications.add({.process = 10});
    Window& window = editor.addWindow({.frame = {{100, 100}, {800, 600}}, .sizes = {.isFixed = true}});
    CGRect atTheRightEdge{{1120, 253}, {800, 600}};
    PlacementMemory memory;
    WindowActionRetry actions{memory};
};

TEST_F(Retry, AnActionThatIsAnsweredIsCarriedOutOnce) {
    actions.perform(WindowAction::rightHalf, window.element());
    EXPECT_EQ(window.frame(), atTheRightEdge);
    EXPECT_TRUE(isDone());
}

TEST_F(Retry, AWindowWhoseLastAnswerIsLateIsCorrectedOnceItAnswers) {
    failTheLastReadingOfTheNextAction(AXError::cannotComplete);
    actions.perform(WindowAction::rightHalf, window.element());
    EXPECT_NE(window.frame(), atTheRightEdge);
    desktop.mainActor.advance(100ms);
    EXPECT_EQ(window.frame(), atTheRightEdge);
    EXPECT_TRUE(isDone());
}

TEST_F(Retry, AWindowThatDoesNotAnswerAtAllIsAskedFourTimesWithinThreeSeconds) {
    answerNothing(window);
    actions.perform(WindowAction::rightHalf, window.element());
    desktop.mainActor.advance(3s);
    EXPECT_EQ(readings(), 4U);
    EXPECT_TRUE(isDone());
}

TEST_F(Retry, AWindowThatAnswersBeforeTheLastAttemptIsPlaced) {
    answerNothing(window);
    actions.perform(WindowAction::rightHalf, window.element());
    desktop.mainActor.advance(2s);
    window.faults.clear();
    desktop.mainActor.advance(1s);
    EXPECT_EQ(window.frame(), atTheRightEdge);
}

TEST_F(Retry, NoOtherErrorIsAReasonToRepeat) {
    for (const AXError error :
         {AXError::failure, AXError::invalidUIElement, AXError::attributeUnsupported, AXError::apiDisabled}) {
        failTheLastReadingOfTheNextAction(error);
        window.moveTo({{100, 100}, {800, 600}});
        actions.perform(WindowAction::rightHalf, window.element());
        EXPECT_TRUE(isDone());
    }
}

TEST_F(Retry, ALaterActionOnTheSameWindowReplacesTheOneThatWaits) {
    failTheLastReadingOfTheNextAction(AXError::cannotComplete);
    actions.perform(WindowAction::rightHalf, window.element());
    actions.perform(WindowAction::leftHalf, window.element());
    desktop.mainActor.advance(5s);
    EXPECT_EQ(window.frame(), (CGRect{{0, 253}, {800, 600}}));
}

TEST_F(Retry, AnActionOnAnotherWindowLeavesTheOneThatWaits) {
    Window& other = editor.addWindow({.frame = {{300, 300}, {500, 500}}});
    failTheLastReadingOfTheNextAction(AXError::cannotComplete);
    actions.perform(WindowAction::rightHalf, window.element());
    actions.perform(WindowAction::leftHalf, other.element());
    desktop.mainActor.advance(5s);
    EXPECT_EQ(window.frame(), atTheRightEdge);
    EXPECT_EQ(other.frame(), (CGRect{{0, 25}, {960, 1055}}));
}

TEST_F(Retry, ARepeatedActionDoesNotMoveAWindowThatIsInPlace) {
    window.sizes.isFixed = false;
    failTheLastReadingOfTheNextAction(AXError::cannotComplete);
    actions.perform(WindowAction::almostMaximize, window.element());
    const CGRect placed = window.frame();
    desktop.mainActor.advance(5s);
    EXPECT_EQ(window.frame(), placed);
}

TEST_F(Retry, AWindowThatWasPutNearItsGoalOnlyIsPutThere) {
    window.sizes.isFixed = false;
    failTheLastReadingOfTheNextAction(AXError::cannotComplete);
    actions.perform(WindowAction::leftHalf, window.element());
    // With the borders of a tiled window, and rounded to the rows and columns of a terminal.
    window.moveTo({{-2, 23}, {958, 1050}});
    desktop.mainActor.advance(100ms);
    EXPECT_EQ(window.frame(), (CGRect{{0, 25}, {960, 1055}}));
}

TEST_F(Retry, AWindowThatWasMovedElsewhereMeanwhileIsLeftThere) {
    const CGRect elsewhere{{400, 300}, {700, 500}};
    failTheLastReadingOfTheNextAction(AXError::cannotComplete);
    actions.perform(WindowAction::rightHalf, window.element());
    window.moveTo(elsewhere);
    desktop.mainActor.advance(5s);
    EXPECT_EQ(window.frame(), elsewhere);
}

TEST_F(Retry, AWindowThatWasMovedElsewhereMeanwhileIsForgottenAtOnce) {
    auto storage = std::make_shared<const platform::simulated::Element>(10, 1);
    const std::weak_ptr<const platform::simulated::Element> kept = storage;
    failTheLastReadingOfTheNextAction(AXError::cannotComplete);
    actions.perform(WindowAction::rightHalf, platform::AXUIElement(std::move(storage)));
    // The memory of placements has a retry of its own, independent of pending ones.
    EXPECT_GT(kept.use_count(), static_cast<long>(memory.count())) << "nothing waits";
    window.moveTo({{400, 300}, {700, 500}});
    desktop.mainActor.advance(5s);
    EXPECT_EQ(kept.use_count(), static_cast<long>(memory.count()));
}

TEST_F(Retry, NothingIsRepeatedAfterACancellation) {
    answerNothing(window);
    actions.perform(WindowAction::rightHalf, window.element());
    actions.cancel();
    window.faults.clear();
    desktop.mainActor.advance(5s);
    EXPECT_EQ(window.frame(), (CGRect{{100, 100}, {800, 600}}));
}

TEST_F(Retry, AWindowThatAnswersLateGoesOneDisplayFurtherAndNoMore) {
    window.sizes.isFixed = false;
    desktop.screens.attach({{.frame = {{0, 0}, {1920, 1080}}, .visibleFrame = {{0, 0}, {1920, 1080}}},
                            {.frame = {{1920, 0}, {960, 540}}, .visibleFrame = {{1920, 0}, {960, 540}}},
                            {.frame = {{2880, 0}, {960, 540}}, .visibleFrame = {{2880, 0}, {960, 540}}}});
    failTheLastReadingOfTheNextAction(AXError::cannotComplete);
    EXPECT_EQ(actions.perform(WindowPlacement::nextDisplay, window.element()), WindowMover::Outcome::unanswered);
    desktop.mainActor.advance(5s);
    EXPECT_EQ(window.frame(), (CGRect{{1970, 590}, {400, 300}}));
    EXPECT_TRUE(isDone());
}

TEST_F(Retry, APlacementThatIsFinishedLateIsUndoneAsOne) {
    failTheLastReadingOfTheNextAction(AXError::cannotComplete);
    actions.perform(WindowPlacement::bottomRight, window.element());
    desktop.mainActor.advance(5s);
    EXPECT_EQ(window.frame(), (CGRect{{1120, 480}, {800, 600}}));
    EXPECT_EQ(actions.perform(WindowPlacement::restore, window.element()), WindowMover::Outcome::ended);
    EXPECT_EQ(window.frame(), (CGRect{{100, 100}, {800, 600}}));
}

TEST_F(Retry, ARepeatThatIsFinishedLateAddsNoStepToTheWayBack) {
    actions.perform(WindowPlacement::bottomRight, window.element());
    const CGRect placed = window.frame();
    failTheLastReadingOfTheNextAction(AXError::cannotComplete);
    EXPECT_EQ(actions.perform(WindowPlacement::bottomRight, window.element()), WindowMover::Outcome::unanswered);
    desktop.mainActor.advance(5s);
    EXPECT_EQ(window.frame(), placed);
    EXPECT_EQ(actions.perform(WindowPlacement::restore, window.element()), WindowMover::Outcome::ended);
    EXPECT_EQ(window.frame(), (CGRect{{100, 100}, {800, 600}}));
}

TEST_F(Retry, AWindowThatAnswersLateGoesBackOneStepAndNoMore) {
    window.sizes.isFixed = false;
    actions.perform(WindowAction::leftHalf, window.element());
    const CGRect left = window.frame();
    actions.perform(WindowAction::maximize, window.element());
    failTheLastReadingOfTheNextAction(AXError::cannotComplete);
    EXPECT_EQ(actions.perform(WindowPlacement::restore, window.element()), WindowMover::Outcome::unanswered);
    desktop.mainActor.advance(5s);
    EXPECT_EQ(window.frame(), left);
    actions.perform(WindowPlacement::restore, window.element());
    EXPECT_EQ(window.frame(), (CGRect{{100, 100}, {800, 600}}));
}

TEST_F(Retry, ARestoreOfAHangingWindowIsRetried) {
    actions.perform(WindowAction::leftHalf, window.element());
    answerNothing(window);
    EXPECT_EQ(actions.perform(WindowPlacement::restore, window.element()), WindowMover::Outcome::unanswered);
    window.faults.clear();
    desktop.mainActor.advance(5s);
    EXPECT_EQ(window.frame(), (CGRect{{100, 100}, {800, 600}}));
}

class RetryOfAPress : public Retry {
protected:
    RetryOfAPress() { desktop.applications.frontmost = &editor; }

    void press(WindowAction action) {
        answerNothing(window);
        EXPECT_EQ(desktop.hotKeyEvents.press(action.shortcut().keyCode, action.shortcut().modifiers), platform::noErr);
        window.faults.clear();
    }

    corvid::HotKeyDispatcher dispatcher;
    AppState state{desktop.standardUserDefaults, false, dispatcher};
};

TEST_F(RetryOfAPress, AWindowThatAnswersLateIsMovedOnceItAnswers) {
    press(WindowAction::rightHalf);
    desktop.mainActor.advance(1s);
    EXPECT_EQ(window.frame(), atTheRightEdge);
}

TEST_F(RetryOfAPress, NothingIsMovedAnyMoreOnceShortcutsAreSwitchedOff) {
    press(WindowAction::rightHalf);
    state.setEnabled(false);
    desktop.mainActor.advance(1s);
    EXPECT_EQ(window.frame(), (CGRect{{100, 100}, {800, 600}}));
}

} // namespace
} // namespace tessel
