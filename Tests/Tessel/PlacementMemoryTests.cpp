#include "CorvidKit/HotKeys.h"
#include "Platform/Simulated/Desktop.h"
#include "Tessel/AppState.h"
#include "Tessel/PlacementMemory.h"
#include "Tessel/WindowActionRetry.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

namespace tessel {
namespace {

using namespace std::chrono_literals;
using corvid::CGRect;
using platform::AXError;
using platform::simulated::Application;
using platform::simulated::Window;
namespace AXAttribute = platform::AXAttribute;

class Memory : public testing::Test {
protected:
    Window& placedWindow(Application& application) {
        Window& window = application.addWindow({.frame = {{100, 100}, {800, 600}}});
        orders.perform(WindowAction::leftHalf, window.element());
        return window;
    }

    bool goesBack(Window& window) {
        return orders.perform(WindowPlacement::restore, window.element()) != WindowMover::Outcome::nothingToRestore;
    }

    platform::simulated::Desktop desktop;
    Application& editor = desktop.applications.add({.process = 10});
    Application& terminal = desktop.applications.add({.process = 20});
    PlacementMemory memory;
    WindowActionRetry orders{memory};
};

TEST_F(Memory, KnowsEachWindowForItself) {
    Window& first = placedWindow(editor);
    Window& second = placedWindow(editor);
    Window& third = placedWindow(terminal);
    EXPECT_EQ(memory.count(), 3U);
    EXPECT_TRUE(goesBack(second));
    EXPECT_EQ(second.frame(), (CGRect{{100, 100}, {800, 600}}));
    EXPECT_NE(first.frame(), second.frame());
    EXPECT_TRUE(goesBack(first));
    EXPECT_TRUE(goesBack(third));
    EXPECT_EQ(memory.count(), 0U) << "there is no way back any more";
}

TEST_F(Memory, ForgetsTheWindowsOfAnApplicationThatEnds) {
    placedWindow(editor);
    Window& other = placedWindow(terminal);
    desktop.applications.terminate(editor);
    desktop.mainActor.advance(0s);
    EXPECT_EQ(memory.count(), 1U);
    EXPECT_TRUE(goesBack(other));
}

TEST_F(Memory, ForgetsAClosedWindowWhenAnotherOneIsPlaced) {
    Window& kept = placedWindow(editor);
    placedWindow(editor).close();
    placedWindow(terminal);
    EXPECT_EQ(memory.count(), 2U);
    EXPECT_TRUE(goesBack(kept));
}

TEST_F(Memory, KeepsTheWindowsOfAnApplicationThatDoesNotAnswer) {
    Window& window = placedWindow(editor);
    editor.faults.failReads(AXAttribute::windows, AXError::cannotComplete);
    placedWindow(terminal);
    editor.faults.clear();
    EXPECT_TRUE(goesBack(window));
}

TEST_F(Memory, LooksForNoWindowsWhileThereIsOnlyOneToRemember) {
    Window& window = placedWindow(editor);
    orders.perform(WindowAction::rightHalf, window.element());
    EXPECT_TRUE(desktop.trace.take("read application 10 AXWindows").empty());
}

TEST_F(Memory, RemembersNoWindowThatDidNotMove) {
    Window& window = editor.addWindow({.frame = {{0, 25}, {1920, 1055}}});
    orders.perform(WindowAction::maximize, window.element());
    EXPECT_EQ(memory.count(), 0U);
}

TEST_F(Memory, KeepsTheWindowsThatWerePlacedLast) {
    Window& first = placedWindow(editor);
    Window& second = placedWindow(editor);
    for (std::size_t count = 2; count < PlacementMemory::mostWindows; ++count) {
        placedWindow(editor);
    }
    EXPECT_EQ(memory.count(), PlacementMemory::mostWindows);
    orders.perform(WindowAction::rightHalf, first.element());
    placedWindow(editor);
    EXPECT_EQ(memory.count(), PlacementMemory::mostWindows);
    EXPECT_FALSE(goesBack(second));
    EXPECT_TRUE(goesBack(first));
}

/// The whole state, whose rules place windows, too.
class MemoryOfRules : public testing::Test {
protected:
    Window& launchEditor() {
        Application& editor = desktop.applications.launch({.process = 10, .bundleIdentifier = "org.example.Editor"});
        Window& window = editor.openWindow({.frame = natural});
        desktop.mainActor.advance(100ms);
        EXPECT_EQ(window.frame(), maximized);
        return window;
    }

    CGRect natural{{100, 100}, {800, 600}};
    CGRect maximized{{0, 25}, {1920, 1055}};
    platform::simulated::Desktop desktop;
    corvid::HotKeyDispatcher dispatcher;
    AppState state{desktop.standardUserDefaults, false, dispatcher};
};

TEST_F(MemoryOfRules, AWindowThatARulePlacedGoesBackToWhereItOpened) {
    state.setRules({{"org.example.Editor", WindowAction::maximize}});
    Window& window = launchEditor();
    EXPECT_EQ(state.perform(WindowPlacement::restore, window.element()), WindowMover::Outcome::ended);
    EXPECT_EQ(window.frame(), natural);
}

TEST_F(MemoryOfRules, AWindowThatItsApplicationPutElsewhereGoesBackToThere) {
    state.setRules({{"org.example.Editor", WindowAction::maximize}});
    Window& window = launchEditor();
    const CGRect lastTime{{300, 200}, {700, 500}};
    window.moveTo(lastTime);
    desktop.mainActor.advance(1s);
    EXPECT_EQ(window.frame(), maximized);
    EXPECT_EQ(state.perform(WindowPlacement::restore, window.element()), WindowMover::Outcome::ended);
    EXPECT_EQ(window.frame(), lastTime);
}

} // namespace
} // namespace tessel
