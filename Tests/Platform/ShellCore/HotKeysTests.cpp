#include "Platform/Compositor/Turn.h"
#include "Platform/ShellCore/HotKeys.h"
#include "Platform/ShellCore/WindowAccess.h"
#include "Tests/Platform/Linux/HotKeys/HotKeyLosses.h"
#include "Tests/Platform/Linux/Stopwatch.h"
#include "Tests/Platform/ShellCore/ShellFixture.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform::shellcore {
namespace {

constexpr std::uint32_t keyLeft = 123;
constexpr std::uint32_t keyC = 8;
constexpr std::uint32_t controlOption = 0x1800;

class HotKeysOfTheShell : public ShellTest {
protected:
    HotKeysOfTheShell() {
        shell->setCore(true);
        shell->answerWith("Grab", "b", 1);
        link->await(soon());
        hotKeys.emplace(loop, *link);
        losses.emplace(*hotKeys);
        hotKeys->installHandler(
            [](EventHandlerCall* /*next*/, const HotKeyEvent* event, void* data) {
                static_cast<std::vector<std::uint32_t>*>(data)->push_back(event->directObject()->id);
                return noErr;
            },
            &pressed);
    }

    void press(std::uint32_t number) {
        shell->send("Activated", [&](sd_bus_message* signal) { sd_bus_message_append(signal, "u", number); });
    }

    [[nodiscard]] HotKeyLoan loanOf(std::uint32_t key) const { return hotKeys->loan(key, controlOption); }

    [[nodiscard]] std::optional<LoanObstacle> obstacleTo(std::uint32_t key) const {
        return hotKeys->loanObstacle(key, controlOption);
    }

    void sendKeyHeld(std::uint32_t number, int isBorrowed) {
        shell->send("KeyHeld",
                    [&](sd_bus_message* signal) { sd_bus_message_append(signal, "ub", number, isBorrowed); });
    }

    [[nodiscard]] HotKeyEvents::Registration take(std::uint32_t key, std::uint32_t id) {
        return hotKeys->registerHotKey(key, controlOption, {.signature = 1, .id = id});
    }

    std::vector<std::uint32_t> pressed;
    std::optional<HotKeys> hotKeys;
    std::optional<linux::HotKeyLosses> losses;
};

TEST_F(HotKeysOfTheShell, AreGrabbedByTheirPositionOnTheKeyboardAndReportTheirPresses) {
    ASSERT_EQ(take(keyLeft, 31).status, noErr);
    ASSERT_EQ(take(keyC, 32).status, noErr);
    EXPECT_TRUE(shell->wasCalled("Grab 1 <Control><Alt>0x71"));
    EXPECT_TRUE(shell->wasCalled("Grab 2 <Control><Alt>0x36"));
    press(2);
    press(1);
    press(77);
    catchUp();
    EXPECT_EQ(pressed, (std::vector<std::uint32_t>{32, 31}));
}

TEST_F(HotKeysOfTheShell, ThatAnotherClientHoldsAreRefused) {
    shell->answerWith("Grab", "b", 0);
    const auto registration = take(keyLeft, 31);
    EXPECT_EQ(registration.status, eventHotKeyExistsErr);
    EXPECT_FALSE(registration.reference);
    press(1);
    catchUp();
    EXPECT_TRUE(pressed.empty());
}

TEST_F(HotKeysOfTheShell, ThatABusyShellDoesNotAnswerForAreAskedForAgain) {
    shell->answer("Grab", [](sd_bus_message* /*call*/) {});
    const linux::Stopwatch stopwatch;
    ASSERT_EQ(take(keyLeft, 31).status, noErr);
    ASSERT_EQ(take(keyC, 32).status, noErr);
    EXPECT_LT(stopwatch.elapsed(), 2 * linux::TurnDeadline::turnLimit) << "all of a turn wait together";
    press(1);
    catchUp();
    EXPECT_EQ(pressed, std::vector<std::uint32_t>{31});
    shell->answerWith("Grab", "b", 1);
    ASSERT_TRUE(until([&] { return shell->wasCalled("Grab 2 <Control><Alt>0x36"); }));
    catchUp();
    EXPECT_FALSE(losses->take());
}

TEST_F(HotKeysOfTheShell, WaitWithinTheSameLimitAsTheWindowsOfTheirTurn) {
    const auto silence = [](sd_bus_message* /*call*/) {};
    shell->answer("Grab", silence);
    shell->answer("Frames", silence);
    compositor::WindowTable table;
    WindowAccess access(*link, table, {.show = [] {}, .obstacle = [] { return AccessObstacle{}; }});
    shell->setCore(true, "second");
    ASSERT_TRUE(until([&] { return table.isOpen(); }));
    shell->send("Moved");
    catchUp();
    compositor::Turn turn(table, access, loop.turnDeadline());
    loop.turnDeadline().begin();
    const linux::Stopwatch stopwatch;
    EXPECT_NE(turn.table(), nullptr);
    EXPECT_TRUE(loop.turnDeadline().hasPassed()) << "nothing was waited for";
    ASSERT_EQ(take(keyLeft, 31).status, noErr);
    EXPECT_LT(stopwatch.elapsed(), 2 * linux::TurnDeadline::turnLimit);
}

TEST_F(HotKeysOfTheShell, ThatABusyShellRefusesInTheEndAreALoss) {
    shell->answer("Grab", [](sd_bus_message* /*call*/) {});
    ASSERT_EQ(take(keyLeft, 31).status, noErr);
    shell->answerWith("Grab", "b", 0);
    EXPECT_TRUE(until([&] { return losses->take(); }));
}

TEST_F(HotKeysOfTheShell, ThatNoKeyboardHasAreInvalid) {
    EXPECT_EQ(take(0xffff, 31).status, eventHotKeyInvalidErr);
}

TEST_F(HotKeysOfTheShell, AreInvalidWhileTheExtensionIsNotThere) {
    shell->setCore(false);
    ASSERT_TRUE(until([&] { return !link->isOpen(); }));
    EXPECT_EQ(take(keyLeft, 31).status, eventHotKeyInvalidErr);
}

TEST_F(HotKeysOfTheShell, AreSilentOnceTheyAreGivenBack) {
    const auto registration = take(keyLeft, 31);
    ASSERT_TRUE(registration.reference);
    hotKeys->unregisterHotKey(*registration.reference);
    hotKeys->unregisterHotKey(*registration.reference);
    EXPECT_TRUE(until([&] { return shell->wasCalled("Ungrab 1"); }));
    press(1);
    catchUp();
    EXPECT_TRUE(pressed.empty());
}

TEST_F(HotKeysOfTheShell, AreTakenAgainWhenTheExtensionBeginsAnew) {
    ASSERT_EQ(take(keyLeft, 31).status, noErr);
    shell->setCore(false);
    ASSERT_TRUE(until([&] { return !link->isOpen(); }));
    shell->setCore(true, "second");
    ASSERT_TRUE(until([&] {
        const auto calls = shell->calls();
        return std::ranges::count(calls, "Grab 1 <Control><Alt>0x71") == 2;
    }));
    catchUp();
    EXPECT_FALSE(losses->take());
}

TEST_F(HotKeysOfTheShell, ThatAnotherClientTookMeanwhileAreReportedLostOnce) {
    ASSERT_EQ(take(keyLeft, 31).status, noErr);
    shell->answerWith("Grab", "b", 0);
    shell->setCore(true, "second");
    ASSERT_TRUE(until([&] { return losses->take(); }));
    EXPECT_FALSE(losses->take());
}

TEST_F(HotKeysOfTheShell, AreGivenBackAtTheEnd) {
    ASSERT_EQ(take(keyLeft, 31).status, noErr);
    press(1);
    hotKeys.reset();
    EXPECT_TRUE(until([&] { return shell->wasCalled("Ungrab 1"); }));
    catchUp();
    EXPECT_TRUE(pressed.empty());
}

TEST_F(HotKeysOfTheShell, ThatItCouldLendAreLeftToItWithoutConsent) {
    shell->answerWith("Grab", "b", 0);
    shell->answer("LoanObstacle", [](sd_bus_message* call) {
        const char* key = nullptr;
        sd_bus_message_read(call, "s", &key);
        sd_bus_reply_method_return(call, "s", std::string_view(key).ends_with("0x71") ? "" : "others");
    });
    EXPECT_EQ(take(keyLeft, 31).status, eventHotKeyExistsErr);
    EXPECT_EQ(take(keyC, 32).status, eventHotKeyExistsErr);
    EXPECT_EQ(loanOf(keyLeft), HotKeyLoan::possible);
    EXPECT_EQ(loanOf(keyC), HotKeyLoan::none);
    EXPECT_EQ(obstacleTo(keyLeft), std::nullopt);
    EXPECT_EQ(obstacleTo(keyC), LoanObstacle::reserved);
    shell->answerWith("Grab", "b", 1);
    ASSERT_EQ(take(keyLeft, 33).status, noErr);
    EXPECT_EQ(loanOf(keyLeft), HotKeyLoan::none) << "it is free by now";
    const auto calls = shell->calls();
    EXPECT_TRUE(std::ranges::none_of(calls, [](const auto& call) { return call.starts_with("Borrow"); }));
    EXPECT_EQ(std::ranges::count(calls, "LoanObstacle <Control><Alt>0x71"), 1) << "asked only of what is refused";
}

TEST_F(HotKeysOfTheShell, ThatItLendsAreOursWithConsent) {
    hotKeys->setBorrows(true);
    shell->answerWith("Borrow", "bb", 1, 1);
    ASSERT_EQ(take(keyLeft, 31).status, noErr);
    shell->answerWith("Borrow", "bb", 1, 0);
    const auto free = take(keyC, 32);
    ASSERT_EQ(free.status, noErr);
    EXPECT_TRUE(shell->wasCalled("Borrow 1 <Control><Alt>0x71"));
    EXPECT_EQ(loanOf(keyLeft), HotKeyLoan::made);
    EXPECT_EQ(loanOf(keyC), HotKeyLoan::none);
    press(1);
    catchUp();
    EXPECT_EQ(pressed, std::vector<std::uint32_t>{31});
    hotKeys->unregisterHotKey({1});
    EXPECT_TRUE(until([&] { return shell->wasCalled("Ungrab 1"); }));
    EXPECT_EQ(loanOf(keyLeft), HotKeyLoan::none);
}

TEST_F(HotKeysOfTheShell, ThatItDoesNotLendAreRefusedWithConsent) {
    hotKeys->setBorrows(true);
    shell->answerWith("Borrow", "bb", 0, 0);
    for (const auto& [word, obstacle] :
         {std::pair{"own", LoanObstacle::notLent}, std::pair{"others", LoanObstacle::reserved},
          std::pair{"shell", LoanObstacle::unknownShell}, std::pair{"a later word", LoanObstacle::notLent}}) {
        shell->answerWith("LoanObstacle", "s", word);
        EXPECT_EQ(take(keyLeft, 31).status, eventHotKeyExistsErr);
        EXPECT_EQ(loanOf(keyLeft), HotKeyLoan::none);
        EXPECT_EQ(obstacleTo(keyLeft), obstacle) << word;
    }
    shell->answerWith("Borrow", "bb", 1, 1);
    EXPECT_EQ(take(keyLeft, 31).status, noErr);
    EXPECT_EQ(obstacleTo(keyLeft), std::nullopt) << "it is lent by now";
}

TEST_F(HotKeysOfTheShell, AreNotLentByAShellThatFailsToSayWhetherTheyAre) {
    shell->answerWith("Grab", "b", 0);
    shell->answer("LoanObstacle", [](sd_bus_message* call) {
        sd_bus_reply_method_errorf(call, "org.corvid.Tessel.Windows1.Failed", "an exception");
    });
    EXPECT_EQ(take(keyLeft, 31).status, eventHotKeyExistsErr);
    EXPECT_EQ(loanOf(keyLeft), HotKeyLoan::none);
    EXPECT_EQ(obstacleTo(keyLeft), LoanObstacle::unknownShell);
}

TEST_F(HotKeysOfTheShell, AreTakenFromAnEarlierExtensionThatKnowsNoLoans) {
    const auto unknown = [](sd_bus_message* call) {
        sd_bus_reply_method_errorf(call, SD_BUS_ERROR_UNKNOWN_METHOD, "no such method");
    };
    hotKeys->setBorrows(true);
    shell->answer("Borrow", unknown);
    shell->answer("LoanObstacle", unknown);
    ASSERT_EQ(take(keyLeft, 31).status, noErr);
    EXPECT_TRUE(shell->wasCalled("Grab 1 <Control><Alt>0x71"));
    shell->answerWith("Grab", "b", 0);
    EXPECT_EQ(take(keyC, 32).status, eventHotKeyExistsErr);
    EXPECT_EQ(loanOf(keyC), HotKeyLoan::none);
    EXPECT_EQ(obstacleTo(keyC), LoanObstacle::oldExtension);
}

TEST_F(HotKeysOfTheShell, ThatABusyShellLendsInTheEndAreBorrowed) {
    hotKeys->setBorrows(true);
    shell->answer("Borrow", [](sd_bus_message* /*call*/) {});
    ASSERT_EQ(take(keyLeft, 31).status, noErr);
    EXPECT_EQ(loanOf(keyLeft), HotKeyLoan::none);
    shell->answerWith("Borrow", "bb", 1, 1);
    EXPECT_TRUE(until([&] { return loanOf(keyLeft) == HotKeyLoan::made; }));
    EXPECT_FALSE(losses->take());
    EXPECT_FALSE(shell->wasCalled("Grab 1 <Control><Alt>0x71"));
}

TEST_F(HotKeysOfTheShell, OfWhichABusyShellDoesNotSayWhetherItLendsThemAreAskedForAgain) {
    shell->answerWith("Grab", "b", 0);
    shell->answer("LoanObstacle", [](sd_bus_message* /*call*/) {});
    ASSERT_EQ(take(keyLeft, 31).status, noErr);
    shell->answerWith("LoanObstacle", "s", "");
    EXPECT_TRUE(until([&] { return losses->take(); })) << "then all are registered anew";
}

TEST_F(HotKeysOfTheShell, StandAsTheExtensionSaysWhenSettingsChange) {
    hotKeys->setBorrows(true);
    shell->answerWith("Borrow", "bb", 1, 1);
    ASSERT_EQ(take(keyLeft, 31).status, noErr);
    sendKeyHeld(1, 0);
    sendKeyHeld(77, 1);
    catchUp();
    EXPECT_EQ(loanOf(keyLeft), HotKeyLoan::none);
    sendKeyHeld(1, 1);
    catchUp();
    EXPECT_EQ(loanOf(keyLeft), HotKeyLoan::made);
    shell->send("KeyHeld");
    shell->sendAsStranger("KeyLost", [](sd_bus_message* signal) { sd_bus_message_append(signal, "u", 1U); });
    shell->send("KeyLost", [](sd_bus_message* signal) { sd_bus_message_append(signal, "u", 77U); });
    catchUp();
    EXPECT_FALSE(losses->take());
    shell->send("KeyLost", [](sd_bus_message* signal) { sd_bus_message_append(signal, "u", 1U); });
    catchUp();
    EXPECT_TRUE(losses->take());
}

TEST_F(HotKeysOfTheShell, AreBorrowedAgainWhenTheExtensionBeginsAnew) {
    hotKeys->setBorrows(true);
    shell->answerWith("Borrow", "bb", 1, 1);
    ASSERT_EQ(take(keyLeft, 31).status, noErr);
    shell->setCore(false);
    ASSERT_TRUE(until([&] { return !link->isOpen(); }));
    shell->answerWith("Borrow", "bb", 1, 0);
    shell->setCore(true, "second");
    ASSERT_TRUE(until([&] { return loanOf(keyLeft) == HotKeyLoan::none; }));
    EXPECT_FALSE(losses->take());
}

TEST_F(HotKeysOfTheShell, DoNotHearWhatIsNoPress) {
    ASSERT_EQ(take(keyLeft, 31).status, noErr);
    shell->send("Activated");
    shell->send("Activated", [](sd_bus_message* signal) { sd_bus_message_append(signal, "s", "1"); });
    shell->sendAsStranger("Activated", [](sd_bus_message* signal) { sd_bus_message_append(signal, "u", 1U); });
    catchUp();
    EXPECT_TRUE(pressed.empty());
}

} // namespace
} // namespace platform::shellcore
