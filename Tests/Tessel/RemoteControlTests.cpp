#include "Platform/Simulated/Desktop.h"
#include "Tessel/RemoteControl.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace tessel {
namespace {

using corvid::CGRect;
using platform::ControlAnswer;
using platform::ControlRefusal;
using platform::ControlStatus;
using Kind = ControlRefusal::Kind;

constexpr CGRect leftHalf{{0, 25}, {960, 1055}};

class Remote : public testing::Test {
protected:
    RemoteControl& control() {
        if (!made) {
            state.emplace(desktop.standardUserDefaults, false, dispatcher);
            made.emplace(*state, RemoteControl::Context{.version = "1.2",
                                                        .localization = desktop.localization,
                                                        .application = desktop.thisApplication,
                                                        .backend = [] { return std::string("Simulated"); },
                                                        .caution = [this] { return caution; },
                                                        .open = [this] { calls.emplace_back("open"); }});
        }
        return *made;
    }

    platform::simulated::Window& addWindow() {
        auto& application = desktop.applications.add({.process = 10});
        desktop.applications.frontmost = &application;
        return application.addWindow({.frame = {{100, 100}, {300, 400}}});
    }

    /// The answer to a request that is answered at once.
    ControlAnswer<void> perform(std::string_view action) {
        std::optional<ControlAnswer<void>> answer;
        control().perform(action, [&answer](const auto& given) { answer = given; });
        return answer ? *answer : std::unexpected(ControlRefusal{.reason = "there is no answer"});
    }

    /// Asks for an action and collects the answer.
    void ask(std::string_view action) {
        control().perform(action, [this](const auto& given) { answers.push_back(given); });
    }

    /// Whether a request was refused for a reason of that kind.
    template <typename Answer>
    static bool isRefused(const Answer& answer, Kind kind) {
        return !answer && answer.error().kind == kind && !answer.error().reason.empty();
    }

    platform::simulated::Desktop desktop;
    corvid::HotKeyDispatcher dispatcher;
    std::optional<AppState> state;
    std::optional<RemoteControl> made;
    std::vector<std::string> calls;
    std::vector<ControlAnswer<void>> answers;
    std::string caution;
};

TEST_F(Remote, ReportsTheStatus) {
    desktop.hotKeyEvents.refuse(WindowAction(WindowAction::center).shortcut().keyCode,
                                WindowAction(WindowAction::center).shortcut().modifiers);
    control();
    state->setRules({{"org.example.Editor", WindowAction::maximize}, {"org.example.Player", WindowAction::center}});
    const ControlStatus expected{
        .status = "shortcutsTaken",
        .statusText = "Some shortcuts are taken: center",
        .isEnabled = true,
        .isTrusted = true,
        .version = "1.2",
        .backend = "Simulated",
        .shortcuts = {{"leftHalf", "Ctrl+Alt+←", "active"},
                      {"rightHalf", "Ctrl+Alt+→", "active"},
                      {"center", "Ctrl+Alt+C", "taken"},
                      {"maximize", "Ctrl+Alt+↑", "active"},
                      {"almostMaximize", "Ctrl+Alt+D", "active"},
                      {"maximizeHeight", "Ctrl+Alt+↓", "active"}},
        .rules = {{"org.example.Editor", "maximize"}, {"org.example.Player", "center"}},
    };
    EXPECT_EQ(control().status(), expected);
}

TEST_F(Remote, NamesTheHolderOfATakenShortcutInTheLanguageOfTheUser) {
    const corvid::Shortcut taken = WindowAction(WindowAction::center).shortcut();
    desktop.hotKeyEvents.refuse(taken.keyCode, taken.modifiers);
    desktop.shortcutHolders.holders = {{taken, {.heldBy = "GNOME", .purpose = platform::KeyPurpose::showDesktop}}};
    desktop.localization.texts = {{"Tessel/shows the desktop", "zeigt den Schreibtisch"}};
    control();
    const auto center = [&] { return control().status()->shortcuts.at(2); };
    EXPECT_EQ(center(), (ControlStatus::Shortcut{"center", "Ctrl+Alt+C", "taken", "", ""})) << "nobody has said yet";
    desktop.mainActor.advance(platform::simulated::ShortcutHolders::delay);
    EXPECT_EQ(center(), (ControlStatus::Shortcut{"center", "Ctrl+Alt+C", "taken", "GNOME", "zeigt den Schreibtisch"}));
    state->setEnabled(false);
    EXPECT_EQ(center(), (ControlStatus::Shortcut{"center", "Ctrl+Alt+C", "off", "", ""}));
}

TEST_F(Remote, ReportsEveryShortcutAsOffWhilePausedOrWithoutPermission) {
    control();
    state->setEnabled(false);
    const auto paused = control().status();
    EXPECT_EQ(paused->status, "paused");
    EXPECT_FALSE(paused->isEnabled);
    EXPECT_THAT(paused->shortcuts, testing::Each(testing::Field(&ControlStatus::Shortcut::state, "off")));
    EXPECT_EQ(paused->shortcuts.size(), WindowAction::allCases.size());
}

TEST_F(Remote, ReportsThatAnotherBuildIsInItsPlace) {
    control();
    EXPECT_FALSE(control().status()->isReplaced);
    desktop.thisApplication.isUpdated = true;
    EXPECT_TRUE(control().status()->isReplaced);
}

TEST_F(Remote, PerformsLikeAPress) {
    platform::simulated::Window& window = addWindow();
    EXPECT_TRUE(perform("leftHalf"));
    EXPECT_EQ(window.frame(), leftHalf);
}

TEST_F(Remote, PerformsAPlacementThatHasNoShortcut) {
    platform::simulated::Window& window = addWindow();
    EXPECT_TRUE(perform("bottomRight"));
    EXPECT_EQ(window.frame(), (CGRect{{960, 552}, {960, 528}}));
}

TEST_F(Remote, RestoresTheFrameBeforeAndSaysWhereThereIsNone) {
    platform::simulated::Window& window = addWindow();
    const CGRect before = window.frame();
    EXPECT_TRUE(isRefused(perform("restore"), Kind::failed));
    EXPECT_TRUE(perform("leftHalf"));
    EXPECT_TRUE(perform("restore"));
    EXPECT_EQ(window.frame(), before);
    EXPECT_TRUE(isRefused(perform("restore"), Kind::failed));
    EXPECT_EQ(window.frame(), before);
}

TEST_F(Remote, AnotherDisplayWhereThereIsNoneIsNoFailure) {
    platform::simulated::Window& window = addWindow();
    const CGRect before = window.frame();
    control();
    desktop.trace.take();
    EXPECT_TRUE(perform("nextDisplay"));
    EXPECT_TRUE(perform("previousDisplay"));
    EXPECT_EQ(window.frame(), before);
    EXPECT_TRUE(desktop.trace.take("write").empty());
}

TEST_F(Remote, AnActionIsAnsweredOnceTheDesktopHasCarriedItOut) {
    platform::simulated::Window& window = addWindow();
    window.faults.failReads(platform::AXAttribute::position, platform::AXError::cannotComplete);
    ask("leftHalf");
    EXPECT_TRUE(answers.empty());
    window.faults.clear();
    desktop.mainActor.advance(std::chrono::seconds(1));
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_TRUE(answers[0]);
    EXPECT_EQ(window.frame(), leftHalf);
}

TEST_F(Remote, AnActionThatADesktopDoesNotAnswerIsNotDone) {
    platform::simulated::Window& window = addWindow();
    window.faults.failReads(platform::AXAttribute::position, platform::AXError::cannotComplete);
    ask("leftHalf");
    desktop.mainActor.advance(std::chrono::seconds(1));
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_TRUE(isRefused(answers[0], Kind::failed));
    desktop.mainActor.advance(std::chrono::seconds(10));
    EXPECT_EQ(answers.size(), 1U);
}

TEST_F(Remote, AnActionThatIsReplacedWhileItIsRetriedIsNotDone) {
    platform::simulated::Window& window = addWindow();
    window.faults.failReads(platform::AXAttribute::position, platform::AXError::cannotComplete);
    ask("rightHalf");
    window.faults.clear();
    ask("leftHalf");
    ASSERT_EQ(answers.size(), 2U);
    EXPECT_TRUE(isRefused(answers[0], Kind::failed));
    EXPECT_TRUE(answers[1]);
    EXPECT_EQ(window.frame(), leftHalf);
}

TEST_F(Remote, AnActionIsAnsweredAlsoIfItIsCancelled) {
    platform::simulated::Window& window = addWindow();
    window.faults.failReads(platform::AXAttribute::position, platform::AXError::cannotComplete);
    ask("rightHalf");
    state->setEnabled(false);
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_TRUE(isRefused(answers[0], Kind::failed));
}

TEST_F(Remote, AWindowThatTakesNoStepIsNotMoved) {
    platform::simulated::Window& window = addWindow();
    // As a fullscreen window does.
    window.faults.failWrites(platform::AXAttribute::position, platform::AXError::cannotComplete);
    window.faults.failWrites(platform::AXAttribute::size, platform::AXError::cannotComplete);
    EXPECT_TRUE(isRefused(perform("leftHalf"), Kind::failed));
}

TEST_F(Remote, PerformsNothingWhilePaused) {
    platform::simulated::Window& window = addWindow();
    control();
    state->setEnabled(false);
    const CGRect before = window.frame();
    EXPECT_TRUE(isRefused(perform("leftHalf"), Kind::paused));
    EXPECT_EQ(window.frame(), before);
}

TEST_F(Remote, PerformsNothingWithoutPermission) {
    desktop.accessibility.isTrusted = false;
    platform::simulated::Window& window = addWindow();
    const CGRect before = window.frame();
    EXPECT_TRUE(isRefused(perform("leftHalf"), Kind::notTrusted));
    EXPECT_EQ(window.frame(), before);
    EXPECT_EQ(control().status()->status, "waitingForPermission");
}

TEST_F(Remote, SaysWhatIsMissing) {
    desktop.accessibility.isTrusted = false;
    desktop.accessibility.reason = {.kind = platform::AccessObstacle::Kind::silentCompositor, .desktop = "Simulated"};
    caution = "of no interest then";
    EXPECT_EQ(control().status()->statusText, "Waiting for permission: Simulated does not answer");
    EXPECT_EQ(perform("leftHalf").error().reason, "waiting for permission: Simulated does not answer");
    state->setEnabled(false);
    EXPECT_EQ(control().status()->statusText, "Paused");
    state->setEnabled(true);
    desktop.accessibility.reason = {.kind = platform::AccessObstacle::Kind::windowManager};
    desktop.accessibility.announceChange();
    EXPECT_EQ(control().status()->statusText,
              "Waiting for permission: no window manager here moves windows on request");
}

TEST_F(Remote, SaysWhatTheUserHadBetterKnowWhileItWorks) {
    caution = "not tried on Simulated 52 yet";
    EXPECT_EQ(control().status()->statusText, "Active; not tried on Simulated 52 yet");
    EXPECT_EQ(control().status()->status, "active");
}

TEST_F(Remote, SaysThatNoWindowHasTheFocusInsteadOfBeeping) {
    EXPECT_TRUE(isRefused(perform("leftHalf"), Kind::noWindow));
    EXPECT_EQ(desktop.sound.count(), 0);
}

TEST_F(Remote, PerformsNothingThatItDoesNotKnow) {
    addWindow();
    for (const std::string& action : {std::string(), std::string("left-half"), std::string("LeftHalf"),
                                      std::string("top-half"), std::string("none"), std::string(100000, 'x')}) {
        EXPECT_TRUE(isRefused(perform(action), Kind::invalid)) << action.substr(0, 20);
    }
}

TEST_F(Remote, SetsChangesAndRemovesARule) {
    using Rules = Prefs::Rules;
    EXPECT_TRUE(control().setRule("org.example.Editor", "maximize"));
    EXPECT_EQ(state->rules(), (Rules{{"org.example.Editor", WindowAction::maximize}}));
    EXPECT_TRUE(control().setRule("org.example.Editor.desktop", "center"));
    EXPECT_EQ(state->rules(), (Rules{{"org.example.Editor", WindowAction::center}}));
    EXPECT_TRUE(control().setRule("org.example.Editor", "none"));
    EXPECT_EQ(state->rules(), Rules{});
}

TEST_F(Remote, RefusesRulesThatMakeNoSense) {
    struct Row {
        std::string identifier;
        std::string action;
    };
    const std::vector<Row> rows{{"org.example.Editor", "leftHalf"},
                                {"org.example.Editor", "topHalf"},
                                {"org.example.Editor", ""},
                                {"org.example.Editor", "Maximize"},
                                {"", "maximize"},
                                {".desktop", "maximize"},
                                {"a/b", "maximize"},
                                {"a\nb", "maximize"},
                                {std::string(256, 'a'), "maximize"},
                                {std::string(1000000, 'a'), "none"}};
    for (const Row& row : rows) {
        EXPECT_TRUE(isRefused(control().setRule(row.identifier, row.action), Kind::invalid))
            << row.identifier.substr(0, 20) << " " << row.action;
    }
    EXPECT_TRUE(state->rules().empty());
    EXPECT_TRUE(control().setRule(std::string(255, 'a'), "maximize"));
}

TEST_F(Remote, TakesOnlySoManyRules) {
    Prefs::Rules rules;
    for (std::size_t count = 0; count < RemoteControl::mostRules; ++count) {
        rules.emplace("application" + std::to_string(count), WindowAction::center);
    }
    control();
    state->setRules(rules);
    EXPECT_TRUE(isRefused(control().setRule("another", "maximize"), Kind::failed));
    EXPECT_TRUE(control().setRule("application7", "maximize"));
    EXPECT_TRUE(control().setRule("application8", "none"));
    EXPECT_TRUE(control().setRule("another", "maximize"));
}

TEST_F(Remote, TakesAndGivesBackTheShortcutsThatAreLent) {
    const corvid::Shortcut center = WindowAction(WindowAction::center).shortcut();
    const corvid::Shortcut maximize = WindowAction(WindowAction::maximize).shortcut();
    desktop.hotKeyEvents.lend(center.keyCode, center.modifiers);
    desktop.hotKeyEvents.refuse(maximize.keyCode, maximize.modifiers);
    using Shortcut = ControlStatus::Shortcut;
    const auto stands = [&](std::size_t place) {
        const Shortcut shortcut = control().status()->shortcuts.at(place);
        return std::tuple(shortcut.state, shortcut.isBorrowed, shortcut.canBeBorrowed);
    };
    using Standing = std::tuple<std::string, bool, bool>;
    EXPECT_FALSE(control().status()->borrowsShortcuts);
    EXPECT_EQ(stands(2), (Standing{"taken", false, true}));
    EXPECT_EQ(stands(3), (Standing{"taken", false, false}));
    EXPECT_TRUE(control().setBorrowsShortcuts(true));
    EXPECT_TRUE(control().status()->borrowsShortcuts);
    EXPECT_EQ(stands(2), (Standing{"active", true, false}));
    EXPECT_EQ(stands(3), (Standing{"taken", false, false})) << "what is not lent stays taken";
    EXPECT_TRUE(control().setBorrowsShortcuts(false));
    EXPECT_FALSE(control().status()->borrowsShortcuts);
    EXPECT_EQ(stands(2), (Standing{"taken", false, true}));
}

TEST_F(Remote, RefusesToTakeShortcutsThatAreTakenWithoutBeingLent) {
    const corvid::Shortcut center = WindowAction(WindowAction::center).shortcut();
    desktop.hotKeyEvents.refuse(center.keyCode, center.modifiers);
    EXPECT_TRUE(isRefused(control().setBorrowsShortcuts(true), Kind::failed));
    EXPECT_FALSE(state->borrowsShortcuts()) << "what was refused is kept all the same";
    EXPECT_TRUE(control().setBorrowsShortcuts(false)) << "there is nothing to refuse in giving back";
}

TEST_F(Remote, SaysWhyTakenShortcutsCannotBeBorrowed) {
    const corvid::Shortcut center = WindowAction(WindowAction::center).shortcut();
    const corvid::Shortcut maximize = WindowAction(WindowAction::maximize).shortcut();
    const corvid::Shortcut left = WindowAction(WindowAction::leftHalf).shortcut();
    desktop.hotKeyEvents.withhold(left.keyCode, left.modifiers, platform::LoanObstacle::keySequence);
    desktop.hotKeyEvents.withhold(center.keyCode, center.modifiers, platform::LoanObstacle::keySequence);
    desktop.hotKeyEvents.refuse(maximize.keyCode, maximize.modifiers);
    const ControlStatus report = *control().status();
    EXPECT_EQ(report.shortcuts.at(2).notBorrowable, "keySequence");
    EXPECT_EQ(report.shortcuts.at(2).whyNot, "Tessel cannot borrow it: it is part of a sequence of keys");
    EXPECT_EQ(report.shortcuts.at(3).notBorrowable, "") << "nobody has said";
    EXPECT_EQ(report.shortcuts.at(3).whyNot, "");
    const auto answer = control().setBorrowsShortcuts(true);
    ASSERT_TRUE(isRefused(answer, Kind::failed));
    EXPECT_EQ(answer.error().reason, "none of the taken shortcuts can be borrowed on this desktop; Ctrl+Alt+←, "
                                     "Ctrl+Alt+C: Tessel cannot borrow it: it is part of a sequence of keys");
}

TEST_F(Remote, SaysWhichShortcutsCouldNotBeBorrowedWhenThatWasTried) {
    const corvid::Shortcut center = WindowAction(WindowAction::center).shortcut();
    const corvid::Shortcut left = WindowAction(WindowAction::leftHalf).shortcut();
    desktop.hotKeyEvents.lend(left.keyCode, left.modifiers);
    desktop.hotKeyEvents.withhold(center.keyCode, center.modifiers, platform::LoanObstacle::notWrittenDown, true);
    EXPECT_TRUE(control().status()->shortcuts.at(2).canBeBorrowed);
    for (int times = 0; times < 2; ++times) {
        const auto answer = control().setBorrowsShortcuts(true);
        ASSERT_TRUE(isRefused(answer, Kind::failed));
        EXPECT_EQ(answer.error().reason, "not all shortcuts could be borrowed; Ctrl+Alt+C: Tessel cannot borrow it: "
                                         "the note on whose it is cannot be saved");
        EXPECT_TRUE(state->borrowsShortcuts()) << "the others are borrowed";
        EXPECT_TRUE(control().status()->shortcuts.at(0).isBorrowed);
    }
    desktop.hotKeyEvents.release(center.keyCode, center.modifiers);
    desktop.hotKeyEvents.lend(center.keyCode, center.modifiers);
    EXPECT_TRUE(control().setBorrowsShortcuts(true)) << "asked once more, it is tried once more";
    EXPECT_TRUE(control().status()->shortcuts.at(2).isBorrowed);
}

TEST_F(Remote, KeepsTheConsentWhereNothingSpeaksAgainstIt) {
    // No shortcut is taken, or that is unknown: the consent applies later.
    EXPECT_TRUE(control().setBorrowsShortcuts(true));
    EXPECT_TRUE(state->borrowsShortcuts());
    EXPECT_TRUE(control().setBorrowsShortcuts(false));
    const corvid::Shortcut center = WindowAction(WindowAction::center).shortcut();
    desktop.hotKeyEvents.refuse(center.keyCode, center.modifiers);
    state->setEnabled(false);
    EXPECT_TRUE(control().setBorrowsShortcuts(true));
    EXPECT_TRUE(state->borrowsShortcuts());
}

TEST_F(Remote, OpeningAndQuittingAreLeftToTheProgram) {
    EXPECT_TRUE(control().open());
    EXPECT_TRUE(control().quit());
    EXPECT_EQ(calls, std::vector<std::string>{"open"});
    EXPECT_EQ(desktop.trace.take("terminate").size(), 1U);
}

} // namespace
} // namespace tessel
