#include "Tests/Platform/Sway/HotKeysFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace platform::sway {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// With the user's consent to borrow keys.
class SwayBorrowing : public SwayHotKeys {
protected:
    void openToBorrow(const std::string& configuration) {
        open(configuration);
        keys->setBorrows(true);
    }

    [[nodiscard]] HotKeyLoan loan(std::uint32_t keyCode = leftKey) const { return keys->loan(keyCode, controlOption); }

    [[nodiscard]] std::optional<LoanObstacle> obstacle(std::uint32_t keyCode = leftKey) const {
        return keys->loanObstacle(keyCode, controlOption);
    }

    /// The lists of commands that come from now on, once there are so many.
    [[nodiscard]] std::vector<std::string> nextCommands(std::size_t count) {
        std::vector<std::string> commands;
        EXPECT_TRUE(desktop.runUntil([&] {
            const auto more = desktop.sway.takeCommands();
            commands.insert(commands.end(), more.begin(), more.end());
            return commands.size() >= count;
        }));
        return commands;
    }
};

constexpr const char* leftIsUsers = "bindsym Ctrl+Mod1+Left nop of the user\n";

/// The commands that put a binding over the user's, and those that remove it.
std::string laidOver(int key, int reference) {
    std::string list;
    for (const char layout : {'1', '2', '3', '4'}) {
        list += std::string(list.empty() ? "" : "; ") + "bindcode --no-warn --no-repeat Group" + layout +
                "+Ctrl+Mod1+" + std::to_string(key) + " nop tessel " + std::to_string(reference);
    }
    return list;
}

std::string takenAway(int key) {
    std::string list;
    for (const char layout : {'1', '2', '3', '4'}) {
        list +=
            std::string(list.empty() ? "" : "; ") + "unbindcode Group" + layout + "+Ctrl+Mod1+" + std::to_string(key);
    }
    return list;
}

TEST_F(SwayBorrowing, WithoutConsentAKeyOfTheUsersIsLentAndNotTaken) {
    open(leftIsUsers);
    EXPECT_EQ(loan(), HotKeyLoan::none);
    EXPECT_EQ(add(leftKey, 1).status, eventHotKeyExistsErr);
    EXPECT_EQ(add(cKey, 2).status, noErr);
    EXPECT_EQ(loan(), HotKeyLoan::possible);
    EXPECT_EQ(loan(cKey), HotKeyLoan::none);
    EXPECT_EQ(obstacle(), std::nullopt);
    EXPECT_EQ(obstacle(cKey), std::nullopt);
}

TEST_F(SwayBorrowing, WithConsentABindingIsLaidOverTheUsersForEachLayout) {
    openToBorrow(leftIsUsers);
    const auto registration = add(leftKey, 7);
    ASSERT_EQ(registration.status, noErr);
    EXPECT_EQ(loan(), HotKeyLoan::made);
    EXPECT_THAT(desktop.sway.takeCommands(), ElementsAre(laidOver(113, 1)));
    press("nop tessel 1");
    ASSERT_TRUE(desktop.runUntil([&] { return pressed.size() == 1; }));
    EXPECT_THAT(pressed, ElementsAre(7U));

    keys->unregisterHotKey(*registration.reference);
    EXPECT_THAT(desktop.sway.takeCommands(), ElementsAre(takenAway(113)));
    EXPECT_EQ(loan(), HotKeyLoan::none);
}

TEST_F(SwayBorrowing, AFreeKeyIsBoundAsEver) {
    openToBorrow(leftIsUsers);
    EXPECT_EQ(add(cKey, 1).status, noErr);
    EXPECT_EQ(loan(cKey), HotKeyLoan::none);
    EXPECT_THAT(desktop.sway.takeCommands(), ElementsAre("bindcode --no-warn --no-repeat Ctrl+Mod1+54 nop tessel 1"));
}

TEST_F(SwayBorrowing, AllAreGivenBackAtTheEnd) {
    openToBorrow(std::string(leftIsUsers) + "bindcode Ctrl+Mod1+54 exec foot; exec foot\n");
    add(leftKey, 1);
    add(cKey, 2);
    static_cast<void>(desktop.sway.takeCommands());
    keys.reset();
    EXPECT_THAT(desktop.sway.takeCommands(), ElementsAre(takenAway(113), takenAway(54)));
}

TEST_F(SwayBorrowing, ALineThatWaitsForTheReleaseDoesNotActEither) {
    openToBorrow("bindsym --release Ctrl+Mod1+Left exec foot\nbindcode --locked Ctrl+Mod1+113 kill\n");
    ASSERT_EQ(add(leftKey, 1).status, noErr);
    const std::vector<std::string> commands = desktop.sway.takeCommands();
    ASSERT_EQ(commands.size(), 1U);
    for (const char* each : {"bindcode --no-warn --no-repeat Group3+Ctrl+Mod1+113 nop tessel 1",
                             "bindcode --no-warn --release Group3+Ctrl+Mod1+113 nop tessel released"}) {
        EXPECT_THAT(commands.front(), HasSubstr(each));
    }
    press("nop tessel released");
    press("nop tessel 1");
    ASSERT_TRUE(desktop.runUntil([&] { return !pressed.empty(); }));
    EXPECT_THAT(pressed, ElementsAre(1U));
    keys.reset();
    EXPECT_THAT(desktop.sway.takeCommands(), ElementsAre(HasSubstr("unbindcode --release Group4+Ctrl+Mod1+113")));
}

TEST_F(SwayBorrowing, LinesForOneKeyboardOrOneLayoutAreNotLent) {
    open();
    keys->setBorrows(true);
    for (const char* line : {"bindsym --input-device=1:1:keyboard Ctrl+Mod1+Left nop",
                             "bindsym --input-device=\"1:1:keyboard\" Ctrl+Mod1+Left nop",
                             "bindsym Group1+Ctrl+Mod1+Left nop", "bindcode Ctrl+Mod1+Group2+113 nop",
                             "bindsym Ctrl+Mod1+Left nop\nbindsym --release --input-device=1:1:k Ctrl+Mod1+Left nop"}) {
        desktop.sway.setConfiguration(std::string(line) + "\n");
        desktop.sway.stop();
        ASSERT_TRUE(desktop.runUntil([&] { return !desktop.session.isOpen(); }));
        desktop.sway.start();
        ASSERT_TRUE(desktop.runUntil([&] { return desktop.session.isOpen(); }));
        static_cast<void>(desktop.sway.takeCommands());
        EXPECT_EQ(add(leftKey, 1).status, eventHotKeyExistsErr) << line;
        EXPECT_EQ(loan(), HotKeyLoan::none) << line;
        EXPECT_EQ(obstacle(), LoanObstacle::particularLine) << line;
        EXPECT_THAT(desktop.sway.takeCommands(), IsEmpty()) << line;
    }
}

TEST_F(SwayBorrowing, ReadingTheConfigurationAgainChangesNothing) {
    openToBorrow(leftIsUsers);
    add(leftKey, 1);
    static_cast<void>(desktop.sway.takeCommands());
    reload();
    EXPECT_THAT(nextCommands(1), ElementsAre(laidOver(113, 1)));
    EXPECT_FALSE(losses->take());
    EXPECT_EQ(loan(), HotKeyLoan::made);
}

TEST_F(SwayBorrowing, AKeyThatTheUserFreesMeanwhileIsOursAndReportedOnce) {
    openToBorrow(leftIsUsers);
    add(leftKey, 1);
    static_cast<void>(desktop.sway.takeCommands());
    desktop.sway.setConfiguration("");
    reload();
    EXPECT_THAT(nextCommands(1), ElementsAre("bindcode --no-warn --no-repeat Ctrl+Mod1+113 nop tessel 1"));
    EXPECT_TRUE(losses->take());
    EXPECT_FALSE(losses->take());
    EXPECT_EQ(loan(), HotKeyLoan::none);
}

TEST_F(SwayBorrowing, AKeyThatTheUserBindsMeanwhileIsBorrowedAtOnceAndReportedOnce) {
    openToBorrow("");
    add(leftKey, 1);
    static_cast<void>(desktop.sway.takeCommands());
    desktop.sway.setConfiguration(leftIsUsers);
    reload();
    EXPECT_THAT(nextCommands(1), ElementsAre(laidOver(113, 1)));
    EXPECT_EQ(loan(), HotKeyLoan::made);
    EXPECT_TRUE(losses->take());
    EXPECT_FALSE(losses->take());
}

TEST_F(SwayBorrowing, ALineThatIsNoLongerLentIsReportedOnce) {
    open(leftIsUsers);
    EXPECT_EQ(add(leftKey, 1).status, eventHotKeyExistsErr);
    desktop.sway.setConfiguration("bindsym Group1+Ctrl+Mod1+Left nop of the user\n");
    reload();
    ASSERT_TRUE(desktop.runUntil([&] { return losses->take(); }));
    EXPECT_EQ(add(leftKey, 1).status, eventHotKeyExistsErr);
    EXPECT_EQ(loan(), HotKeyLoan::none);
}

TEST_F(SwayBorrowing, BorrowedKeysBelongToTheDefaultMode) {
    openToBorrow(leftIsUsers);
    desktop.sway.setMode("resize");
    const auto registration = add(leftKey, 1);
    EXPECT_THAT(desktop.sway.takeCommands(),
                ElementsAre("mode \"default\"; " + laidOver(113, 1) + "; mode \"resize\""));
    keys->unregisterHotKey(*registration.reference);
    EXPECT_THAT(desktop.sway.takeCommands(), ElementsAre("mode \"default\"; " + takenAway(113) + "; mode \"resize\""));
}

TEST_F(SwayBorrowing, ASwayThatRefusesOneOfThemIsLeftWithNone) {
    openToBorrow(leftIsUsers);
    desktop.sway.refuse("bindcode --no-warn --no-repeat Group3");
    EXPECT_EQ(add(leftKey, 1).status, eventHotKeyInvalidErr);
    EXPECT_EQ(loan(), HotKeyLoan::none);
    EXPECT_THAT(desktop.sway.takeCommands(), ElementsAre(laidOver(113, 1), takenAway(113)));
}

TEST_F(SwayBorrowing, ACompositorThatStartsAnewLendsAgain) {
    openToBorrow(leftIsUsers);
    add(leftKey, 1);
    desktop.sway.stop();
    ASSERT_TRUE(desktop.runUntil([&] { return !desktop.session.isOpen(); }));
    static_cast<void>(desktop.sway.takeCommands());
    desktop.sway.start();
    EXPECT_THAT(nextCommands(1), ElementsAre(laidOver(113, 1)));
    EXPECT_EQ(loan(), HotKeyLoan::made);
}

TEST_F(SwayBorrowing, OnlyBorrowedBindingsAreLeftForRemoval) {
    openToBorrow(std::string(leftIsUsers) + "bindcode Ctrl+Mod1+54 kill\n");
    const auto registration = add(leftKey, 1);
    add(2, 2);
    EXPECT_THAT(left, ElementsAre(takenAway(113)));
    add(cKey, 3);
    EXPECT_EQ(left.back(), takenAway(113) + "; " + takenAway(54));
    keys->unregisterHotKey(*registration.reference);
    EXPECT_EQ(left.back(), takenAway(54));
    desktop.sway.setConfiguration("");
    reload();
    ASSERT_TRUE(desktop.runUntil([&] { return left.back().empty(); }));
    desktop.sway.setConfiguration(leftIsUsers);
    reload();
    ASSERT_TRUE(desktop.runUntil([&] { return losses->take(); }));
    const std::size_t reported = left.size();
    keys.reset();
    EXPECT_EQ(left.size(), reported) << "nothing was borrowed any more";
}

TEST_F(SwayBorrowing, NothingIsLeftAfterTheEnd) {
    openToBorrow(leftIsUsers);
    add(leftKey, 1);
    keys.reset();
    EXPECT_EQ(left.back(), "");
}

TEST_F(SwayBorrowing, BindingsOfAKilledProgramAreRemovedWithoutConsent) {
    open(leftIsUsers);
    EXPECT_EQ(add(leftKey, 1).status, eventHotKeyExistsErr);
    const std::vector<std::string> commands = desktop.sway.takeCommands();
    ASSERT_EQ(commands.size(), 1U);
    for (const char* each : {"unbindcode Group1+Ctrl+Mod1+113", "unbindcode --release Group4+Ctrl+Mod1+113"}) {
        EXPECT_THAT(commands.front(), HasSubstr(each));
    }
}

} // namespace
} // namespace platform::sway
