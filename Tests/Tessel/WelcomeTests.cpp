#include "CorvidKit/HotKeys.h"
#include "CorvidKitCore/InMemoryPreferenceStore.h"
#include "Platform/Simulated/Desktop.h"
#include "Tessel/Welcome.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tessel {
namespace {

using namespace std::chrono_literals;
using Lines = std::vector<std::string>;

/// Longer than a start takes for anything.
constexpr platform::Duration aWhile = 2min;

class Welcoming : public testing::Test {
protected:
    /// A start of the program, with a desktop of its own, on which it ends.
    class Start {
    public:
        explicit Start(Welcoming& test)
            : desktop(test.prepare(made))
            , welcome(test.store)
            , state(test.store, false, dispatcher) {
            welcome.begin(state, {.open = [&test] { ++test.opened; },
                                  .notify = [&test](const std::string& text) { test.said.push_back(text); },
                                  .watchLock =
                                      [this](std::function<void()> locked) {
                                          return desktop.sessionLock.watch(std::move(locked));
                                      }});
        }

        void advance(platform::Duration duration) { desktop.mainActor.advance(duration); }

    private:
        platform::simulated::Desktop made;
        corvid::HotKeyDispatcher dispatcher;

    public:
        platform::simulated::Desktop& desktop;
        Welcome welcome;
        AppState state;
    };

    platform::simulated::Desktop& prepare(platform::simulated::Desktop& desktop) const {
        desktop.accessibility.isTrusted = isTrusted;
        desktop.accessibility.reason.kind = missing;
        desktop.localization.texts["Tessel/Tessel is ready"] = "Bereit";
        if (isTaken) {
            const corvid::Shortcut shortcut = WindowAction(WindowAction::center).shortcut();
            desktop.hotKeyEvents.refuse(shortcut.keyCode, shortcut.modifiers);
        }
        return desktop;
    }

    /// How often a start opens the popover within a while.
    int openedByStart() {
        Start start(*this);
        start.advance(aWhile);
        EXPECT_FALSE(start.desktop.sessionLock.isWatched()) << "that costs a connection";
        return std::exchange(opened, 0);
    }

    void set(const char* key, corvid::PropertyListValue value) { store.set(std::move(value), key); }

    corvid::InMemoryPreferenceStore store{{}};
    bool isTrusted = true;
    bool isTaken = false;
    platform::AccessObstacle::Kind missing = platform::AccessObstacle::Kind::windowManager;
    int opened = 0;
    Lines said;
};

TEST_F(Welcoming, TheFirstStartOpensThePopoverOnceThePanelHasTheItem) {
    Start start(*this);
    start.advance(Welcome::settling - 1ms);
    EXPECT_EQ(opened, 0);
    start.advance(1ms);
    EXPECT_EQ(opened, 1);
    start.advance(aWhile);
    EXPECT_EQ(opened, 1);
}

TEST_F(Welcoming, LaterStartsDoNot) {
    EXPECT_EQ(openedByStart(), 1);
    EXPECT_EQ(openedByStart(), 0);
}

TEST_F(Welcoming, EachThingThatIsMissingOpensItAtOneStart) {
    EXPECT_EQ(openedByStart(), 1);
    isTrusted = false;
    EXPECT_EQ(openedByStart(), 1);
    EXPECT_EQ(openedByStart(), 0);
    isTrusted = true;
    EXPECT_EQ(openedByStart(), 0);
    isTaken = true;
    EXPECT_EQ(openedByStart(), 1);
    EXPECT_EQ(openedByStart(), 0);
    isTrusted = false;
    EXPECT_EQ(openedByStart(), 0);
}

TEST_F(Welcoming, WhatTheFirstStartHasShownIsNotShownAgain) {
    isTaken = true;
    EXPECT_EQ(openedByStart(), 1);
    EXPECT_EQ(openedByStart(), 0);
}

TEST_F(Welcoming, AWindowManagerThatComesLateIsNotMissing) {
    EXPECT_EQ(openedByStart(), 1);
    isTrusted = false;
    Start start(*this);
    start.advance(Welcome::patience - 5s);
    start.desktop.accessibility.isTrusted = true;
    start.advance(aWhile);
    EXPECT_EQ(opened, 0);
}

TEST_F(Welcoming, OneThatVersionsBeforeHaveServedIsNotNew) {
    set("updateReminderVersion", corvid::PropertyListValue(std::string("1.0")));
    EXPECT_EQ(openedByStart(), 0);
    isTaken = true;
    EXPECT_EQ(openedByStart(), 1);
}

TEST_F(Welcoming, AFirstStartThatEndsBeforeIsMadeUpFor) {
    {
        Start start(*this);
    }
    EXPECT_EQ(opened, 0);
    EXPECT_EQ(openedByStart(), 1);
}

TEST_F(Welcoming, ItStaysClosedWhileTheProgramIsSwitchedOff) {
    isTaken = true;
    set("enabled", corvid::PropertyListValue(false));
    EXPECT_EQ(openedByStart(), 0);
    set("enabled", corvid::PropertyListValue(true));
    EXPECT_EQ(openedByStart(), 1);
}

TEST_F(Welcoming, ItStaysClosedInALockedSession) {
    {
        Start start(*this);
        start.desktop.sessionLock.lock();
        EXPECT_FALSE(start.desktop.sessionLock.isWatched());
        start.advance(Welcome::patience - 1s);
        EXPECT_EQ(opened, 0);
    }
    EXPECT_EQ(openedByStart(), 1);
}

TEST_F(Welcoming, AStartThatHasNothingToShowWaitsForNothing) {
    isTaken = true;
    EXPECT_EQ(openedByStart(), 1);
    isTrusted = false;
    EXPECT_EQ(openedByStart(), 1);
    isTrusted = true;
    const auto waiting = [this](bool isWelcomed) {
        platform::simulated::Desktop desktop;
        corvid::HotKeyDispatcher dispatcher;
        Welcome welcome(store);
        AppState state(store, false, dispatcher);
        if (isWelcomed) {
            welcome.begin(state, {});
        }
        return desktop.mainActor.waiting().size();
    };
    EXPECT_EQ(waiting(true), waiting(false));
}

TEST_F(Welcoming, SaysThatItIsReadyOnceTheUserHasLoggedInAgain) {
    isTrusted = false;
    missing = platform::AccessObstacle::Kind::extensionNotLoaded;
    EXPECT_EQ(openedByStart(), 1);
    EXPECT_EQ(said, Lines());
    {
        Start start(*this);
        start.advance(1s);
        EXPECT_EQ(said, Lines());
        start.desktop.accessibility.isTrusted = true;
        start.advance(3s);
        EXPECT_EQ(said, Lines{"Bereit"});
    }
    openedByStart();
    EXPECT_EQ(said, Lines{"Bereit"});
}

TEST_F(Welcoming, SaysThatItIsReadyWhenItIsStartedByHandAfterTheLogin) {
    isTrusted = false;
    missing = platform::AccessObstacle::Kind::extensionNotLoaded;
    EXPECT_EQ(openedByStart(), 1);
    // The extension has been there since the session began.
    isTrusted = true;
    EXPECT_EQ(openedByStart(), 0);
    EXPECT_EQ(said, Lines{"Bereit"});
    EXPECT_EQ(openedByStart(), 0);
    EXPECT_EQ(said, Lines{"Bereit"}) << "once";
}

TEST_F(Welcoming, SaysItAlsoToAUserWhoLogsOutSoonAfterALaterStart) {
    EXPECT_EQ(openedByStart(), 1);
    isTrusted = false;
    missing = platform::AccessObstacle::Kind::extensionNotLoaded;
    {
        Start start(*this);
        start.advance(10s);
        EXPECT_EQ(opened, 0);
    }
    isTrusted = true;
    openedByStart();
    EXPECT_EQ(said, Lines{"Bereit"});
}

TEST_F(Welcoming, SaysNothingAfterALoginAtWhichTheExtensionComesALittleLater) {
    EXPECT_EQ(openedByStart(), 1);
    isTrusted = false;
    missing = platform::AccessObstacle::Kind::extensionNotLoaded;
    Start start(*this);
    start.advance(1s);
    start.desktop.accessibility.isTrusted = true;
    start.advance(aWhile);
    EXPECT_EQ(said, Lines());
}

TEST_F(Welcoming, SaysNothingOfAWindowManagerThatIsThereAgain) {
    isTrusted = false;
    Start start(*this);
    start.advance(aWhile);
    start.desktop.accessibility.isTrusted = true;
    start.advance(aWhile);
    EXPECT_EQ(said, Lines());
}

} // namespace
} // namespace tessel
