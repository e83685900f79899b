#include "FakeKWin.h"
#include "Platform/KWin/HotKeys.h"
#include "Tests/Platform/Linux/Control/MessageBus.h"
#include "Tests/Platform/Linux/HotKeyLosses.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <memory>

namespace platform::kwin {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::uint32_t leftCode = 123;
constexpr std::uint32_t cCode = 8;
constexpr std::uint32_t ctrlAlt = 0x1800;
constexpr std::int32_t keyLeft = 0x0d000012;
constexpr std::int32_t keyC = 0x0c000043;
constexpr std::int32_t keyN = 0x0c00004e;
constexpr std::int32_t keyM = 0x0c00004d;
const FakeAccel::Action first{"org.example.Other", "first", "Another program", "First"};
const FakeAccel::Action second{"org.example.Other", "second", "Another program", "Second"};
const FakeAccel::Action third{"org.example.Third", "third", "A third program", "Third"};

/// A program with the two keys of `add`, in a session where others have them.
class BorrowingTest : public testing::Test {
protected:
    MessageBus daemon;
    linux::MainLoop loop;
    LogRecord log;
    std::string note = daemon.folder / "state/tessel/borrowed-shortcuts.json";
    std::unique_ptr<FakeKWin> kwin;
    std::unique_ptr<linux::SessionBus> bus;
    std::unique_ptr<HotKeys> keys;
    std::unique_ptr<linux::HotKeyLosses> losses;
    std::vector<EventHotKeyRef> references;

    void SetUp() override {
        daemon.start();
        kwin = std::make_unique<FakeKWin>(daemon.address());
        kwin->accel.hold(first, {keyLeft, keyN});
        kwin->accel.hold(second, {keyC});
        kwin->start();
    }

    void start() {
        bus = std::make_unique<linux::SessionBus>(loop, daemon.address(), std::chrono::milliseconds(20));
        keys = std::make_unique<HotKeys>(
            loop, *bus, [](std::uint32_t, std::uint32_t) { return std::string("Ours"); }, note, log.sink());
        losses = std::make_unique<linux::HotKeyLosses>(*keys);
        ASSERT_TRUE(bus->awaitArrival(loop.now() + std::chrono::seconds(10)));
    }

    void begin(bool consent) {
        start();
        keys->setBorrows(consent);
        registerBoth();
    }

    void registerBoth() {
        for (const std::uint32_t code : {leftCode, cCode}) {
            const auto registration = keys->registerHotKey(code, ctrlAlt, {.signature = 1, .id = code});
            if (registration.reference) {
                references.push_back(*registration.reference);
            }
        }
    }

    void unregisterAll() {
        for (const EventHotKeyRef reference : std::exchange(references, {})) {
            keys->unregisterHotKey(reference);
        }
    }

    void choose(bool consent) {
        keys->setBorrows(consent);
        unregisterAll();
        registerBoth();
    }

    void end() {
        keys.reset();
        bus.reset();
        references.clear();
    }

    /// Nothing that it does in its end reaches anybody.
    void kill() {
        kwin->accel.callsLeft = 0;
        end();
        kwin->accel.callsLeft = std::numeric_limits<int>::max();
    }

    /// Our actions are known, and have no keys.
    void takeFromOurs() {
        for (const auto& [action, key] : kwin->accel.ownKeys()) {
            kwin->accel.hold({GlobalAccel::ownComponent, action, "Tessel", "Ours"}, {});
        }
    }

    [[nodiscard]] HotKeyLoan loanOf(std::uint32_t code) const { return keys->loan(code, ctrlAlt); }

    [[nodiscard]] bool hasNote() const { return std::filesystem::exists(note); }

    bool runUntil(const std::function<bool()>& holds) {
        const Instant deadline = loop.now() + std::chrono::seconds(10);
        while (!holds() && loop.now() < deadline) {
            sd_event_run(loop.handle(), std::uint64_t{2000});
        }
        return holds();
    }

    void expectLent() {
        EXPECT_EQ(kwin->accel.keysOf(first), alone({keyN}));
        EXPECT_EQ(kwin->accel.keysOf(second), alone({}));
        EXPECT_EQ(kwin->accel.recipient(keyLeft), GlobalAccel::ownComponent);
        EXPECT_EQ(kwin->accel.recipient(keyC), GlobalAccel::ownComponent);
        EXPECT_EQ(loanOf(leftCode), HotKeyLoan::made);
        EXPECT_EQ(loanOf(cCode), HotKeyLoan::made);
    }

    void expectGivenBack() {
        EXPECT_EQ(kwin->accel.keysOf(first), alone({keyLeft, keyN}));
        EXPECT_EQ(kwin->accel.keysOf(second), alone({keyC}));
        EXPECT_FALSE(hasNote());
    }
};

TEST_F(BorrowingTest, WithoutConsentNothingIsChangedOrWrittenDown) {
    begin(false);
    EXPECT_THAT(references, IsEmpty());
    EXPECT_EQ(loanOf(leftCode), HotKeyLoan::possible);
    EXPECT_EQ(loanOf(cCode), HotKeyLoan::possible);
    EXPECT_EQ(keys->loan(2, ctrlAlt), HotKeyLoan::none);
    EXPECT_EQ(keys->lender(keyLeft), nullptr);
    expectGivenBack();
    EXPECT_FALSE(std::filesystem::exists(daemon.folder / "state"));
}

TEST_F(BorrowingTest, WithConsentAKeyAloneIsTakenAndGivenBackAtTheEnd) {
    begin(true);
    expectLent();
    ASSERT_NE(keys->lender(keyLeft), nullptr);
    EXPECT_EQ(*keys->lender(keyLeft), first);
    EXPECT_TRUE(hasNote());
    EXPECT_EQ(modeOf(note), 0600U);
    end();
    expectGivenBack();
    EXPECT_THAT(kwin->accel.ownKeys(), IsEmpty());
}

TEST_F(BorrowingTest, TheConsentActsAtOnceInEitherDirection) {
    begin(false);
    for (int times = 0; times < 2; ++times) {
        choose(true);
        expectLent();
        choose(false);
        expectGivenBack();
        EXPECT_EQ(loanOf(leftCode), HotKeyLoan::possible);
    }
}

TEST_F(BorrowingTest, WhatIsNotRegisteredAnyMoreIsGivenBack) {
    begin(true);
    unregisterAll();
    EXPECT_TRUE(runUntil([&] { return !hasNote(); }));
    expectGivenBack();
    registerBoth();
    expectLent();
}

TEST_F(BorrowingTest, OwnChangesAreNoChangesOfTheUsers) {
    begin(false);
    choose(true);
    choose(false);
    choose(true);
    // Signals arrive in order: those sent before a press have been read when the press arrives.
    int presses = 0;
    keys->installHandler(
        [](EventHandlerCall*, const HotKeyEvent*, void* data) {
            ++*static_cast<int*>(data);
            return noErr;
        },
        &presses);
    kwin->press(keyLeft);
    ASSERT_TRUE(runUntil([&] { return presses == 1; }));
    EXPECT_FALSE(losses->take());
    expectLent();
}

TEST_F(BorrowingTest, AKilledProgramsNextStartHasTheKeysAndKeepsTheFirstList) {
    begin(true);
    const std::string written = contentsOf(note);
    for (int times = 0; times < 3; ++times) {
        kill();
        begin(true);
        expectLent();
        EXPECT_EQ(contentsOf(note), written);
    }
    end();
    expectGivenBack();
}

TEST_F(BorrowingTest, AKilledProgramsNextStartWithoutConsentGivesTheKeysBack) {
    begin(true);
    kill();
    EXPECT_EQ(kwin->accel.keysOf(first), alone({keyN}));
    begin(false);
    EXPECT_THAT(references, IsEmpty());
    expectGivenBack();
}

TEST_F(BorrowingTest, AKilledProgramsNextStartGivesBackWhatItDoesNotRegister) {
    begin(true);
    kill();
    // As a program that is paused: the choice is read, and nothing is registered.
    start();
    keys->setBorrows(true);
    EXPECT_TRUE(runUntil([&] { return !hasNote(); }));
    expectGivenBack();
}

TEST_F(BorrowingTest, AServerThatIsNotThereYetGetsItsKeysWhenItComes) {
    begin(true);
    kill();
    kwin->stop();
    begin(false);
    EXPECT_TRUE(hasNote());
    kwin->start();
    EXPECT_TRUE(runUntil([&] { return !hasNote(); }));
    expectGivenBack();
}

TEST_F(BorrowingTest, AServerThatIsStartedAnewIsBorrowedFromAgain) {
    begin(true);
    kwin->press(keyLeft);
    for (const bool isListRestored : {false, true}) {
        kwin->stop();
        if (isListRestored) {
            kwin->accel.hold(first, {keyLeft, keyN});
        }
        takeFromOurs();
        kwin->start();
        ASSERT_TRUE(runUntil([&] { return kwin->accel.recipient(keyC) == GlobalAccel::ownComponent; }));
        expectLent();
    }
    end();
    expectGivenBack();
}

TEST_F(BorrowingTest, TwoKeysOfOneActionAreOneLoan) {
    kwin->accel.hold(second, {keyM});
    kwin->accel.hold(first, {keyN, keyC, keyLeft});
    begin(true);
    EXPECT_EQ(kwin->accel.keysOf(first), alone({keyN}));
    EXPECT_EQ(loanOf(leftCode), HotKeyLoan::made);
    EXPECT_EQ(loanOf(cCode), HotKeyLoan::made);
    end();
    EXPECT_EQ(kwin->accel.keysOf(first), alone({keyN, keyC, keyLeft}));
    EXPECT_FALSE(hasNote());
}

TEST_F(BorrowingTest, AListThatTheUserHasChangedIsLeftAlone) {
    begin(true);
    kwin->accel.hold(first, {keyM});
    end();
    EXPECT_EQ(kwin->accel.keysOf(first), alone({keyM}));
    EXPECT_EQ(kwin->accel.keysOf(second), alone({keyC}));
    EXPECT_FALSE(hasNote());
}

TEST_F(BorrowingTest, AListThatTheUserHasChangedAfterAKillIsLeftAlone) {
    begin(true);
    kill();
    kwin->accel.hold(first, {keyM, keyN});
    begin(true);
    EXPECT_EQ(loanOf(leftCode), HotKeyLoan::none);
    EXPECT_EQ(kwin->accel.recipient(keyLeft), GlobalAccel::ownComponent);
    EXPECT_EQ(loanOf(cCode), HotKeyLoan::made);
    end();
    EXPECT_EQ(kwin->accel.keysOf(first), alone({keyM, keyN}));
}

TEST_F(BorrowingTest, AKeyThatTheUserGivesToAThirdStaysThereUntilItIsAskedForAgain) {
    begin(true);
    kwin->assignElsewhere(keyLeft);
    ASSERT_TRUE(runUntil([&, isLost = false]() mutable { return isLost = isLost || losses->take(); }));
    unregisterAll();
    registerBoth();
    EXPECT_EQ(loanOf(leftCode), HotKeyLoan::possible);
    EXPECT_EQ(loanOf(cCode), HotKeyLoan::made);
    EXPECT_EQ(kwin->accel.recipient(keyLeft), "org.example.Other");
    end();
    EXPECT_EQ(kwin->accel.keysOf(first), alone({keyN})) << "it would be there twice";
    EXPECT_EQ(kwin->accel.keysOf(second), alone({keyC}));

    begin(true);
    EXPECT_EQ(loanOf(leftCode), HotKeyLoan::possible) << "after a start";
    choose(true);
    EXPECT_EQ(loanOf(leftCode), HotKeyLoan::made) << "asked for again";
    end();
    EXPECT_EQ(kwin->accel.recipient(keyLeft), "org.example.Other");
    EXPECT_EQ(kwin->accel.keysOf(first), alone({keyN}));
    EXPECT_FALSE(hasNote());
}

TEST_F(BorrowingTest, AKeyThatAThirdHasTakenAfterAKillIsThatOnesAtTheEnd) {
    for (const bool consent : {false, true}) {
        kwin->accel.hold(third, {});
        kwin->accel.hold(first, {keyLeft, keyN});
        begin(true);
        kill();
        takeFromOurs();
        kwin->accel.hold(third, {keyLeft});
        begin(consent);
        EXPECT_EQ(loanOf(leftCode), consent ? HotKeyLoan::made : HotKeyLoan::possible);
        end();
        EXPECT_EQ(kwin->accel.keysOf(first), alone({keyN}));
        EXPECT_EQ(kwin->accel.keysOf(second), alone({keyC}));
        EXPECT_EQ(kwin->accel.keysOf(third), alone({keyLeft}));
        EXPECT_FALSE(hasNote());
    }
}

TEST_F(BorrowingTest, WhatIsTakenIsOnTheDiskBeforeItIsTaken) {
    std::vector<std::string> written;
    kwin->accel.beforeForeignChange = [&] { written.push_back(hasNote() ? contentsOf(note) : "nothing"); };
    begin(true);
    EXPECT_THAT(written, ElementsAre(HasSubstr("\"first\""), HasSubstr("\"second\"")));
    written.clear();
    const std::string all = contentsOf(note);
    end();
    EXPECT_THAT(written, ElementsAre(all, HasSubstr("\"second\""))) << "it is forgotten only when it is given back";
}

TEST_F(BorrowingTest, OfAKeyThatIsGrantedToSeveralEachGetsItBack) {
    kwin->accel.sharesKeys = true;
    kwin->accel.hold(third, {keyM, keyLeft});
    begin(true);
    expectLent();
    EXPECT_EQ(kwin->accel.keysOf(third), alone({keyM}));
    EXPECT_EQ(*keys->lender(keyLeft), first) << "who had the presses";
    end();
    EXPECT_THAT(kwin->accel.keysOf(first), testing::UnorderedElementsAreArray(alone({keyLeft, keyN})));
    EXPECT_EQ(kwin->accel.keysOf(second), alone({keyC}));
    EXPECT_THAT(kwin->accel.keysOf(third), testing::UnorderedElementsAreArray(alone({keyM, keyLeft})));
    EXPECT_FALSE(hasNote());
    EXPECT_EQ(kwin->accel.recipient(keyLeft), first.component);
}

TEST_F(BorrowingTest, AKeyInARowWithOthersCannotBeBorrowed) {
    kwin->accel.holdSequences(first, {{keyLeft, keyN, 0, 0}});
    kwin->accel.holdSequences(second, {{keyC, keyN, 0, 0}, {keyM, 0, 0, 0}});
    begin(true);
    end();
    EXPECT_EQ(kwin->accel.keysOf(first), (KeySequences{{keyLeft, keyN, 0, 0}}));
    EXPECT_EQ(kwin->accel.keysOf(second), (KeySequences{{keyC, keyN, 0, 0}, {keyM, 0, 0, 0}}));
}

TEST_F(BorrowingTest, NothingIsTakenThatCannotBeWrittenDown) {
    write(daemon.folder / "state", "no folder");
    begin(true);
    EXPECT_THAT(references, IsEmpty());
    EXPECT_EQ(loanOf(leftCode), HotKeyLoan::none);
    EXPECT_EQ(kwin->accel.keysOf(first), alone({keyLeft, keyN}));
    EXPECT_EQ(kwin->accel.keysOf(second), alone({keyC}));
    EXPECT_THAT(log.lines, testing::Contains(HasSubstr("cannot be written")));
}

TEST_F(BorrowingTest, ANoteThatCannotBeReadIsKeptBeside) {
    std::filesystem::create_directories(daemon.folder / "state/tessel");
    write(note, "{\"loans\": 7}");
    begin(true);
    expectLent();
    EXPECT_THAT(log.lines, ElementsAre(HasSubstr("is kept as " + note + ".unreadable-")));
    end();
    expectGivenBack();
    EXPECT_THAT(namesIn(daemon.folder / "state/tessel"), ElementsAre(HasSubstr("unreadable-")));
}

TEST_F(BorrowingTest, AnActionThatIsNotKnownNowGetsItsKeyWhenItIs) {
    begin(true);
    kill();
    kwin->accel.forgetOthers();
    begin(false);
    EXPECT_TRUE(hasNote());
    end();
    kwin->accel.hold(second, {});
    begin(false);
    EXPECT_EQ(kwin->accel.keysOf(second), alone({keyC}));
}

} // namespace
} // namespace platform::kwin
