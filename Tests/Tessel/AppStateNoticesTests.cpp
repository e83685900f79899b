#include "CorvidKit/HotKeys.h"
#include "Platform/Simulated/Desktop.h"
#include "Tessel/AppState.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tessel {
namespace {

using namespace std::chrono_literals;

/// Notices of the desktop, beside the polls.
class NoticedByState : public testing::Test {
protected:
    AppState& make() { return made.emplace(desktop.standardUserDefaults, false, dispatcher); }

    std::size_t registeredCount() const { return desktop.hotKeyEvents.registered().size(); }

    void refuse(WindowAction action) {
        desktop.hotKeyEvents.refuse(action.shortcut().keyCode, action.shortcut().modifiers);
    }

    void release(WindowAction action) {
        desktop.hotKeyEvents.release(action.shortcut().keyCode, action.shortcut().modifiers);
    }

    platform::simulated::Desktop desktop;
    corvid::HotKeyDispatcher dispatcher;
    std::optional<AppState> made;
};

TEST_F(NoticedByState, LooksForThePermissionAtOnceWhenTheDesktopSaysThatItHasChanged) {
    desktop.accessibility.isTrusted = false;
    const AppState& state = make();
    EXPECT_EQ(state.obstacle(), desktop.accessibility.reason);
    desktop.accessibility.isTrusted = true;
    desktop.accessibility.announceChange();
    EXPECT_EQ(state.status(), AppStatus::active);
    EXPECT_EQ(state.obstacle(), std::nullopt);
    EXPECT_EQ(registeredCount(), 6U);
    desktop.accessibility.isTrusted = false;
    desktop.accessibility.announceChange();
    EXPECT_EQ(state.status(), AppStatus::waitingForPermission);
    EXPECT_EQ(registeredCount(), 0U);
    EXPECT_EQ(desktop.accessibility.promptCount(), 1) << "asked once only";
    EXPECT_EQ(desktop.mainActor.now(), platform::Instant()) << "no poll was waited for";
}

TEST_F(NoticedByState, PublishesAnotherReasonForTheMissingPermissionOnce) {
    desktop.accessibility.isTrusted = false;
    AppState& state = make();
    int changes = 0;
    const auto subscription = state.objectWillChange().subscribe([&] { ++changes; });
    desktop.accessibility.announceChange();
    EXPECT_EQ(changes, 0);
    desktop.accessibility.reason = {.kind = platform::AccessObstacle::Kind::silentCompositor, .desktop = "Simulated"};
    desktop.mainActor.advance(12s);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(state.obstacle(), desktop.accessibility.reason);
}

TEST_F(NoticedByState, RegistersLostHotKeysAnewOnceAfterAPause) {
    const AppState& state = make();
    desktop.trace.clear();
    refuse(WindowAction::center);
    desktop.hotKeyEvents.announceLoss();
    desktop.hotKeyEvents.announceLoss();
    EXPECT_EQ(desktop.trace.take("register"), std::vector<std::string>())
        << "a desktop may say so in the middle of a registration";
    desktop.mainActor.advance(3s);
    EXPECT_EQ(desktop.trace.take("register").size(), 6U);
    EXPECT_EQ(state.failedShortcuts(), std::set<WindowAction>{WindowAction::center});
    EXPECT_EQ(state.status(), AppStatus::shortcutsTaken);
    release(WindowAction::center);
    desktop.hotKeyEvents.announceLoss();
    desktop.mainActor.advance(3s);
    EXPECT_EQ(state.status(), AppStatus::active);
}

TEST_F(NoticedByState, RegistersNothingAnewWhileSwitchedOff) {
    make();
    desktop.hotKeyEvents.announceLoss();
    made->setEnabled(false);
    desktop.trace.clear();
    desktop.mainActor.advance(3s);
    EXPECT_EQ(desktop.trace.take("register"), std::vector<std::string>());
    EXPECT_EQ(registeredCount(), 0U);
}

} // namespace
} // namespace tessel
