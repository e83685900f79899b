#include "CorvidKit/HotKeys.h"
#include "CorvidKitCore/PropertyListValue.h"
#include "Platform/Simulated/Desktop.h"
#include "Tessel/AppState.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tessel {
namespace {

using namespace std::chrono_literals;
using corvid::CGRect;
using corvid::PropertyListValue;
using platform::simulated::Application;
using platform::simulated::Window;
using Lines = std::vector<std::string>;

// The requests of a first run, in this order.
const Lines construction{"read setting enabled",
                         "read setting rules",
                         "read setting borrowsShortcuts",
                         "read setting updateReminderVersion",
                         "write setting updateReminderVersion",
                         "write setting updateReminderSince",
                         "read setting updateReminderSince",
                         "request trust",
                         "install hot key handler",
                         "register hot key 123 6144 as CWky 1",
                         "register hot key 124 6144 as CWky 2",
                         "register hot key 8 6144 as CWky 3",
                         "register hot key 126 6144 as CWky 4",
                         "register hot key 2 6144 as CWky 5",
                         "register hot key 125 6144 as CWky 6"};

class State : public testing::Test {
protected:
    AppState& make() {
        made.emplace(desktop.standardUserDefaults, false, dispatcher);
        return *made;
    }

    std::size_t registeredCount() const { return desktop.hotKeyEvents.registered().size(); }

    void refuse(WindowAction action) {
        desktop.hotKeyEvents.refuse(action.shortcut().keyCode, action.shortcut().modifiers);
    }

    void release(WindowAction action) {
        desktop.hotKeyEvents.release(action.shortcut().keyCode, action.shortcut().modifiers);
    }

    std::optional<platform::OSStatus> press(WindowAction action) {
        return desktop.hotKeyEvents.press(action.shortcut().keyCode, action.shortcut().modifiers);
    }

    std::optional<PropertyListValue> stored(const char* key) { return desktop.standardUserDefaults.store.object(key); }

    void store(const char* key, PropertyListValue value) {
        desktop.standardUserDefaults.store.set(std::move(value), key);
    }

    platform::simulated::Desktop desktop;
    corvid::HotKeyDispatcher dispatcher;
    std::optional<AppState> made;
};

TEST_F(State, IsMadeByReadingAskingForTrustAndRegisteringInThisOrder) {
    const AppState& state = make();
    EXPECT_EQ(desktop.trace.take(), construction);
    EXPECT_TRUE(state.isEnabled());
    EXPECT_TRUE(state.hasAccessibility());
    EXPECT_TRUE(state.rules().empty());
    EXPECT_TRUE(state.failedShortcuts().empty());
    EXPECT_FALSE(state.isPreview);
    EXPECT_EQ(state.status(), AppStatus::active);
}

TEST_F(State, WaitsForThePermissionOnAFirstRunAndIsActiveAtThePollAfterTheGrant) {
    desktop.accessibility.isTrusted = false;
    const AppState& state = make();
    EXPECT_EQ(desktop.accessibility.promptCount(), 1);
    EXPECT_EQ(registeredCount(), 0U);
    EXPECT_EQ(state.status(), AppStatus::waitingForPermission);
    desktop.mainActor.advance(3s);
    desktop.accessibility.isTrusted = true;
    EXPECT_EQ(state.status(), AppStatus::waitingForPermission);
    desktop.mainActor.advance(1s);
    EXPECT_EQ(state.status(), AppStatus::active);
    EXPECT_EQ(registeredCount(), 6U);
    EXPECT_EQ(desktop.accessibility.promptCount(), 1) << "asked once only";
}

TEST_F(State, AsksForHoldersOfTakenShortcutsAloneAndOncePerRegistration) {
    const auto asked = [this] { return desktop.trace.take("find holders"); };
    make();
    EXPECT_EQ(asked(), Lines());
    refuse(WindowAction::center);
    refuse(WindowAction::leftHalf);
    made->setEnabled(false);
    made->setEnabled(true);
    EXPECT_EQ(asked(), Lines{"find holders of 2"});
    made->setEnabled(true);
    EXPECT_EQ(asked(), Lines()) << "nothing was registered anew";
    release(WindowAction::leftHalf);
    made->setEnabled(false);
    made->setEnabled(true);
    EXPECT_EQ(asked(), Lines{"find holders of 1"});
}

TEST_F(State, KnowsHoldersOfTakenShortcutsOnly) {
    using platform::ShortcutHolder;
    const ShortcutHolder gnome{.heldBy = "GNOME", .purpose = platform::KeyPurpose::workspaceOnTheLeft};
    desktop.shortcutHolders.holders = {{WindowAction(WindowAction::leftHalf).shortcut(), gnome}};
    refuse(WindowAction::leftHalf);
    refuse(WindowAction::center);
    const AppState& state = make();
    EXPECT_TRUE(state.shortcutHolders().empty());
    int reported = 0;
    const auto changes = made->objectWillChange().subscribe([&] { ++reported; });
    desktop.mainActor.advance(platform::simulated::ShortcutHolders::delay);
    EXPECT_EQ(state.shortcutHolders(), (std::map<WindowAction, ShortcutHolder>{{WindowAction::leftHalf, gnome}}));
    EXPECT_EQ(reported, 1);
    made->setEnabled(false);
    EXPECT_TRUE(state.shortcutHolders().empty());
    made->setEnabled(true);
    made->setEnabled(false);
    desktop.mainActor.advance(platform::simulated::ShortcutHolders::delay);
    EXPECT_TRUE(state.shortcutHolders().empty()) << "an answer that comes too late";
}

TEST_F(State, LooksForThePermissionEveryTwoSecondsWithATolerance) {
    make();
    using Waiting = platform::simulated::MainActor::Waiting;
    EXPECT_EQ(std::ranges::count(desktop.mainActor.waiting(), Waiting{platform::Instant(2s), 10s}), 1);
    desktop.trace.clear();
    desktop.mainActor.advance(10s);
    EXPECT_EQ(desktop.trace.take(), Lines(5, "read trust")) << "nothing is done while nothing changes";
}

TEST_F(State, SeesAGrantAfterAtMostTwelveSeconds) {
    desktop.accessibility.isTrusted = false;
    const AppState& state = make();
    desktop.accessibility.isTrusted = true;
    desktop.mainActor.setExhaustsTolerance(true);
    desktop.mainActor.advance(11999ms);
    EXPECT_EQ(state.status(), AppStatus::waitingForPermission);
    desktop.mainActor.advance(1ms);
    EXPECT_EQ(state.status(), AppStatus::active);
}

TEST_F(State, TurnsEverythingOffAtThePollAfterARevocation) {
    refuse(WindowAction::center);
    const AppState& state = make();
    desktop.accessibility.isTrusted = false;
    EXPECT_EQ(registeredCount(), 5U);
    desktop.mainActor.advance(2s);
    EXPECT_EQ(registeredCount(), 0U);
    EXPECT_FALSE(state.hasAccessibility());
    EXPECT_TRUE(state.failedShortcuts().empty());
    EXPECT_EQ(state.status(), AppStatus::waitingForPermission);
    desktop.accessibility.isTrusted = true;
    desktop.mainActor.advance(2s);
    EXPECT_EQ(registeredCount(), 5U);
    EXPECT_EQ(state.status(), AppStatus::shortcutsTaken);
}

TEST_F(State, TurnedOffStoresItThenUnregistersEverything) {
    AppState& state = make();
    desktop.trace.clear();
    state.setEnabled(false);
    EXPECT_EQ(desktop.trace.lines().front(), "write setting enabled");
    EXPECT_EQ(registeredCount(), 0U);
    EXPECT_EQ(stored("enabled"), PropertyListValue(false));
    EXPECT_EQ(state.status(), AppStatus::paused);
}

TEST_F(State, TurnedOffHasNoFailedShortcutsAndTurnedOnFindsThemAnew) {
    refuse(WindowAction::center);
    refuse(WindowAction::maximize);
    AppState& state = make();
    EXPECT_EQ(state.failedShortcuts(), (std::set<WindowAction>{WindowAction::center, WindowAction::maximize}));
    EXPECT_EQ(state.status(), AppStatus::shortcutsTaken);
    state.setEnabled(false);
    EXPECT_TRUE(state.failedShortcuts().empty());
    EXPECT_EQ(registeredCount(), 0U);
    release(WindowAction::center);
    refuse(WindowAction::leftHalf);
    state.setEnabled(true);
    EXPECT_EQ(state.failedShortcuts(), (std::set<WindowAction>{WindowAction::leftHalf, WindowAction::maximize}));
    EXPECT_EQ(registeredCount(), 4U);
    EXPECT_EQ(desktop.hotKeyEvents.registered().front().name.id, 8U) << "ids go on where they were";
}

TEST_F(State, TurnedOnWithoutPermissionWaitsForIt) {
    store("enabled", false);
    desktop.accessibility.isTrusted = false;
    AppState& state = make();
    EXPECT_EQ(state.status(), AppStatus::paused);
    state.setEnabled(true);
    EXPECT_EQ(state.status(), AppStatus::waitingForPermission);
    EXPECT_EQ(registeredCount(), 0U);
}

TEST_F(State, StartedSwitchedOffAsksForTrustButRegistersNothing) {
    store("enabled", false);
    const AppState& state = make();
    EXPECT_EQ(desktop.trace.take("request trust").size(), 1U);
    EXPECT_EQ(registeredCount(), 0U);
    EXPECT_EQ(state.status(), AppStatus::paused);
    EXPECT_TRUE(state.hasAccessibility());
}

TEST_F(State, AssignedTheSameValueStoresAndUpdatesAllTheSame) {
    AppState& state = make();
    desktop.trace.clear();
    state.setEnabled(true);
    EXPECT_EQ(desktop.trace.take(), (Lines{"write setting enabled"})) << "hot keys are not registered twice";
}

TEST_F(State, KeepsItsFailedShortcutsUntilItIsTurnedOffAndOn) {
    refuse(WindowAction::center);
    AppState& state = make();
    release(WindowAction::center);
    desktop.trace.clear();
    state.setEnabled(true);
    desktop.mainActor.advance(20s);
    EXPECT_EQ(state.failedShortcuts(), (std::set<WindowAction>{WindowAction::center}));
    EXPECT_EQ(state.status(), AppStatus::shortcutsTaken);
    state.setEnabled(false);
    state.setEnabled(true);
    EXPECT_TRUE(state.failedShortcuts().empty());
    EXPECT_EQ(state.status(), AppStatus::active);
}

TEST_F(State, TriesAgainAtTheNextUpdateWhenEveryShortcutWasRefused) {
    for (const WindowAction action : WindowAction::allCases) {
        refuse(action);
    }
    AppState& state = make();
    EXPECT_EQ(state.failedShortcuts().size(), 6U);
    release(WindowAction::center);
    state.setEnabled(true);
    EXPECT_EQ(state.failedShortcuts().size(), 5U);
    EXPECT_EQ(registeredCount(), 1U);
}

TEST_F(State, NotifiesBeforeEachChangeSoThatTheOldValueIsStillThere) {
    AppState& state = make();
    Lines seen;
    const auto subscription = state.objectWillChange().subscribe([&] {
        seen.push_back(std::string(state.isEnabled() ? "on" : "off") + (state.hasAccessibility() ? " trusted" : "") +
                       " failed " + std::to_string(state.failedShortcuts().size()) + " rules " +
                       std::to_string(state.rules().size()) + " rows " + std::to_string(state.ruleApps().size()));
    });
    const auto takeFirst = [&seen] {
        const Lines taken = std::exchange(seen, {});
        return taken.empty() ? "nothing" : taken.front();
    };
    state.setEnabled(false);
    EXPECT_EQ(takeFirst(), "on trusted failed 0 rules 0 rows 0");
    refuse(WindowAction::center);
    state.setEnabled(true);
    EXPECT_EQ(seen.back(), "on trusted failed 0 rules 0 rows 0") << "before the one that failed is known";
    EXPECT_EQ(takeFirst(), "off trusted failed 0 rules 0 rows 0");
    desktop.accessibility.isTrusted = false;
    desktop.mainActor.advance(2s);
    EXPECT_EQ(seen.back(), "on failed 1 rules 0 rows 0");
    EXPECT_EQ(takeFirst(), "on trusted failed 1 rules 0 rows 0");
    state.setRule("org.example.Editor", WindowAction::maximize);
    EXPECT_EQ(seen.back(), "on failed 0 rules 1 rows 0");
    EXPECT_EQ(takeFirst(), "on failed 0 rules 0 rows 0");
    desktop.mainActor.advance(20s);
    EXPECT_EQ(takeFirst(), "nothing") << "a poll that finds nothing new";
}

TEST_F(State, ReadsTheRulesAndDropsEntriesThatAreNoActions) {
    store("rules", PropertyListValue::Dictionary{{"org.example.Editor", "maximize"},
                                                 {"org.example.Odd", "sideways"},
                                                 {"org.example.Number", 3},
                                                 {"org.example.Terminal", "center"}});
    const AppState& state = make();
    EXPECT_EQ(state.rules(), (Prefs::Rules{{"org.example.Editor", WindowAction::maximize},
                                           {"org.example.Terminal", WindowAction::center}}));
}

TEST_F(State, ReadsUnreadableSettingsAsTheirDefaults) {
    store("enabled", "yes");
    store("rules", true);
    const AppState& state = make();
    EXPECT_TRUE(state.isEnabled());
    EXPECT_TRUE(state.rules().empty());
}

TEST_F(State, StoresEveryChangeOfTheRules) {
    AppState& state = make();
    desktop.trace.clear();
    state.setRule("org.example.Editor", WindowAction::maximize);
    state.setRule("org.example.Terminal", WindowAction::maximize);
    state.setRule("org.example.Editor", WindowAction::center);
    EXPECT_EQ(stored("rules"), PropertyListValue(PropertyListValue::Dictionary{{"org.example.Editor", "center"},
                                                                               {"org.example.Terminal", "maximize"}}));
    state.setRule("org.example.Editor", std::nullopt);
    state.setRule("org.example.Unknown", std::nullopt);
    EXPECT_EQ(state.rules(), (Prefs::Rules{{"org.example.Terminal", WindowAction::maximize}}));
    state.setRules({});
    EXPECT_EQ(stored("rules"), PropertyListValue(PropertyListValue::Dictionary{}));
    EXPECT_EQ(std::ranges::count(desktop.trace.take(), "write setting rules"), 6);
}

TEST_F(State, EveryShortcutCarriesOutItsOwnActionOnTheFocusedWindow) {
    struct Expectation {
        WindowAction action;
        std::uint32_t keyCode;
        CGRect frame;
    };
    const std::vector<Expectation> expectations{{WindowAction::leftHalf, 123, {{0, 25}, {960, 1055}}},
                                                {WindowAction::rightHalf, 124, {{960, 25}, {960, 1055}}},
                                                {WindowAction::center, 8, {{560, 253}, {800, 600}}},
                                                {WindowAction::maximize, 126, {{0, 25}, {1920, 1055}}},
                                                {WindowAction::almostMaximize, 2, {{96, 78}, {1728, 950}}},
                                                {WindowAction::maximizeHeight, 125, {{100, 25}, {800, 1055}}}};
    Application& editor = desktop.applications.add({.process = 10});
    Window& window = editor.addWindow({});
    desktop.applications.frontmost = &editor;
    make();
    for (const Expectation& expectation : expectations) {
        window.moveTo({{100, 100}, {800, 600}});
        EXPECT_EQ(desktop.hotKeyEvents.press(expectation.keyCode, 4096 + 2048), platform::noErr);
        EXPECT_EQ(window.frame(), expectation.frame) << expectation.action.rawValue();
    }
}

TEST_F(State, APressWithoutAFocusedWindowBeepsAndDoesNothingElse) {
    make();
    desktop.trace.clear();
    EXPECT_EQ(press(WindowAction::center), platform::noErr);
    EXPECT_EQ(desktop.sound.count(), 1);
    desktop.applications.frontmost = &desktop.applications.add({.process = 10});
    EXPECT_EQ(press(WindowAction::center), platform::noErr);
    EXPECT_EQ(desktop.sound.count(), 2);
    EXPECT_EQ(desktop.trace.take("write"), Lines{});
}

TEST_F(State, APressWhileThisProgramIsFrontmostBeepsAndMovesNothing) {
    Application& ourselves = desktop.applications.add({.process = platform::simulated::ProcessInfo::ownProcess});
    Window& window = ourselves.addWindow({.frame = {{100, 100}, {800, 600}}});
    desktop.applications.frontmost = &ourselves;
    make();
    EXPECT_EQ(press(WindowAction::maximize), platform::noErr);
    EXPECT_EQ(desktop.sound.count(), 1);
    EXPECT_EQ(window.frame(), (CGRect{{100, 100}, {800, 600}}));
}

TEST_F(State, AWindowThatCannotBeMovedDoesNotBeep) {
    Application& editor = desktop.applications.add({.process = 10});
    editor.addWindow({}).faults.failReads(platform::AXAttribute::position, platform::AXError::cannotComplete);
    desktop.applications.frontmost = &editor;
    make();
    EXPECT_EQ(press(WindowAction::maximize), platform::noErr);
    EXPECT_EQ(desktop.sound.count(), 0);
}

TEST_F(State, EndsItsWatchWithItself) {
    make();
    made.reset();
    EXPECT_TRUE(desktop.mainActor.waiting().empty());
    desktop.trace.clear();
    desktop.mainActor.advance(20s);
    EXPECT_EQ(desktop.trace.take(), Lines{});
}

using StateDeathTest = State;

TEST_F(StateDeathTest, TheSharedOneIsMadeOnceOverTheUsersSettings) {
    // It lives as long as its process, hence it runs in a process of its own.
    EXPECT_EXIT(
        {
            store("enabled", false);
            AppState& state = AppState::shared();
            const bool isRight = !state.isEnabled() && !state.isPreview && &state == &AppState::shared() &&
                                 desktop.mainActor.waiting().size() == 2;
            state.setEnabled(true);
            const bool isStored = stored("enabled") == PropertyListValue(true);
            std::_Exit(isRight && isStored && registeredCount() == 6 ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace tessel
