#include "CorvidKit/HotKeys.h"
#include "CorvidKitCore/PropertyListValue.h"
#include "Platform/Simulated/Desktop.h"
#include "Tessel/AppState.h"

#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <optional>
#include <set>

namespace tessel {
namespace {

using corvid::PropertyListValue;
using platform::HotKeyLoan;
using Actions = std::set<WindowAction>;
using namespace std::chrono_literals;

/// A desktop that holds the shortcuts of the left and the right half itself.
class Borrowing : public testing::Test {
protected:
    Borrowing() {
        for (const WindowAction action : held) {
            desktop.hotKeyEvents.lend(action.shortcut().keyCode, action.shortcut().modifiers);
        }
    }

    AppState& make(bool preview = false) {
        made.emplace(desktop.standardUserDefaults, preview, dispatcher);
        return *made;
    }

    std::size_t registeredCount() const { return desktop.hotKeyEvents.registered().size(); }

    std::optional<PropertyListValue> stored() { return desktop.standardUserDefaults.store.object("borrowsShortcuts"); }

    const Actions held{WindowAction::leftHalf, WindowAction::rightHalf};
    platform::simulated::Desktop desktop;
    corvid::HotKeyDispatcher dispatcher;
    std::optional<AppState> made;
};

TEST_F(Borrowing, AFreshStartBorrowsNothing) {
    const AppState& state = make();
    EXPECT_FALSE(state.borrowsShortcuts());
    EXPECT_EQ(state.failedShortcuts(), held);
    EXPECT_EQ(state.shortcutsOnLoan(HotKeyLoan::possible), held);
    EXPECT_EQ(state.shortcutsOnLoan(HotKeyLoan::made), Actions{});
    EXPECT_EQ(registeredCount(), 4U);
    EXPECT_EQ(stored(), std::nullopt);
}

TEST_F(Borrowing, WithConsentAllShortcutsAreActive) {
    AppState& state = make();
    state.setBorrowsShortcuts(true);
    EXPECT_EQ(state.status(), AppStatus::active);
    EXPECT_EQ(state.shortcutsOnLoan(HotKeyLoan::made), held);
    EXPECT_EQ(registeredCount(), 6U);
    EXPECT_EQ(stored(), PropertyListValue(true));
}

TEST_F(Borrowing, ConsentHoldsAtTheNextStart) {
    make().setBorrowsShortcuts(true);
    made->setEnabled(false);
    made->setEnabled(true);
    EXPECT_EQ(made->status(), AppStatus::active);
    EXPECT_TRUE(make().borrowsShortcuts());
    EXPECT_EQ(made->shortcutsOnLoan(HotKeyLoan::made), held);
}

TEST_F(Borrowing, AKeyThatIsGivenBackIsTakenAgainByItsHolder) {
    AppState& state = make();
    state.setBorrowsShortcuts(true);
    state.setBorrowsShortcuts(false);
    EXPECT_EQ(state.status(), AppStatus::shortcutsTaken);
    EXPECT_EQ(state.failedShortcuts(), held);
    EXPECT_EQ(state.shortcutsOnLoan(HotKeyLoan::made), Actions{});
    EXPECT_EQ(registeredCount(), 4U);
    EXPECT_EQ(stored(), PropertyListValue(false));
}

TEST_F(Borrowing, BorrowedKeysAreCheckedPeriodically) {
    AppState& state = make();
    state.setBorrowsShortcuts(true);
    desktop.mainActor.advance(12s); // This also brings the holders.
    int changes = 0;
    const auto subscription = state.objectWillChange().subscribe([&] { ++changes; });
    desktop.mainActor.advance(12s);
    EXPECT_EQ(changes, 0);
    const corvid::Shortcut free = WindowAction(WindowAction::leftHalf).shortcut();
    desktop.hotKeyEvents.release(free.keyCode, free.modifiers);
    desktop.mainActor.advance(12s);
    EXPECT_EQ(state.shortcutsOnLoan(HotKeyLoan::made), Actions{WindowAction::rightHalf});
    EXPECT_EQ(state.status(), AppStatus::active);
    EXPECT_GT(changes, 0);
    EXPECT_EQ(registeredCount(), 6U);
}

TEST_F(Borrowing, ATakenShortcutThatCannotBeBorrowedHasItsObstacleForAsLongAsItIsTaken) {
    const corvid::Shortcut center = WindowAction(WindowAction::center).shortcut();
    desktop.hotKeyEvents.withhold(center.keyCode, center.modifiers, platform::LoanObstacle::notReleased, true);
    using Obstacles = std::map<WindowAction, platform::LoanObstacle>;
    AppState& state = make();
    EXPECT_EQ(state.loanObstacles(), Obstacles{});
    state.setBorrowsShortcuts(true);
    EXPECT_EQ(state.loanObstacles(), (Obstacles{{WindowAction::center, platform::LoanObstacle::notReleased}}));
    EXPECT_EQ(state.failedShortcuts(), Actions{WindowAction::center});
    state.setEnabled(false);
    EXPECT_EQ(state.loanObstacles(), Obstacles{});
}

TEST_F(Borrowing, NothingIsOnLoanWhileSwitchedOff) {
    AppState& state = make();
    state.setBorrowsShortcuts(true);
    state.setEnabled(false);
    EXPECT_EQ(registeredCount(), 0U);
    EXPECT_EQ(state.shortcutsOnLoan(HotKeyLoan::made), Actions{});
    EXPECT_EQ(state.shortcutsOnLoan(HotKeyLoan::possible), Actions{});
}

TEST_F(Borrowing, ConsentWhileSwitchedOffActsWhenSwitchedOn) {
    AppState& state = make();
    state.setEnabled(false);
    state.setBorrowsShortcuts(true);
    EXPECT_EQ(registeredCount(), 0U);
    state.setEnabled(true);
    EXPECT_EQ(registeredCount(), 6U);
}

TEST_F(Borrowing, APreviewRegistersNothing) {
    make(true).setBorrowsShortcuts(true);
    EXPECT_EQ(registeredCount(), 0U);
}

} // namespace
} // namespace tessel
