#include "CorvidKit/HotKeys.h"
#include "CorvidKit/Snapshot.h"
#include "Platform/Simulated/Desktop.h"
#include "Tessel/AppState.h"
#include "Tessel/Menu/MenuState.h"
#include "Tessel/StatusText.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <chrono>
#include <optional>
#include <string>
#include <utility>

namespace tessel {
namespace {

using namespace std::chrono_literals;

class Menu : public testing::Test {
protected:
    MenuState& make() {
        state.emplace(desktop.standardUserDefaults, false, dispatcher);
        shown.emplace(*state, &desktop.openPanel);
        return *shown;
    }

    platform::simulated::Desktop desktop;
    corvid::HotKeyDispatcher dispatcher;
    std::optional<AppState> state;
    std::optional<MenuState> shown;
};

TEST_F(Menu, SaysHowTheProgramStands) {
    MenuState& menu = make();
    desktop.mainActor.run();
    EXPECT_EQ(menu.status(), MenuState::Active);
    EXPECT_EQ(menu.statusText(), QString::fromUtf8("Active · 6 shortcuts · 0 apps"));
    state->setRule("org.example.Editor", WindowAction::center);
    EXPECT_EQ(menu.statusText(), QString::fromUtf8("Active · 6 shortcuts · 1 apps"));
    menu.setEnabled(false);
    EXPECT_EQ(menu.status(), MenuState::Paused);
    EXPECT_EQ(menu.statusText(), "Paused");
    EXPECT_FALSE(state->isEnabled());
}

TEST_F(Menu, SaysWhatIsMissing) {
    desktop.accessibility.isTrusted = false;
    MenuState& menu = make();
    EXPECT_EQ(menu.status(), MenuState::WaitingForPermission);
    EXPECT_EQ(menu.statusText(), "Waiting for permission");
    EXPECT_FALSE(menu.hasAccessibility());
    QSignalSpy changes(&menu, &MenuState::changed);
    desktop.accessibility.isTrusted = true;
    desktop.mainActor.advance(2s);
    EXPECT_TRUE(menu.hasAccessibility());
    EXPECT_GE(changes.count(), 1);
}

TEST_F(Menu, SaysAtOnceWhenSomethingElseIsMissing) {
    desktop.accessibility.isTrusted = false;
    MenuState& menu = make();
    QSignalSpy changes(&menu, &MenuState::changed);
    EXPECT_EQ(menu.permissionButton(), "");
    desktop.accessibility.reason = {.kind = platform::AccessObstacle::Kind::extensionOff};
    desktop.accessibility.announceChange();
    desktop.mainActor.advance({});
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(menu.permissionButton(), "Turn on");
    EXPECT_FALSE(menu.hasAccessibility());
}

TEST_F(Menu, HasAButtonOnlyWhereSomethingCanBeDoneAboutWhatIsMissing) {
    using enum platform::AccessObstacle::Kind;
    desktop.accessibility.isTrusted = false;
    MenuState& menu = make();
    const auto become = [this](platform::AccessObstacle::Kind kind) {
        desktop.accessibility.reason = {.kind = kind};
        desktop.accessibility.announceChange();
    };
    for (const auto& [kind, button] : {std::pair{permission, "Open System Settings"},
                                       {windowManager, ""},
                                       {silentWindowManager, ""},
                                       {silentCompositor, ""},
                                       {scriptNotRunning, ""},
                                       {extensionOff, "Turn on"},
                                       {extensionNotLoaded, ""},
                                       {extensionRefused, ""},
                                       {extensionUnfit, ""},
                                       {busNameTaken, ""},
                                       {pluginsMissing, ""},
                                       {unknownCompositor, ""}}) {
        become(kind);
        EXPECT_EQ(menu.permissionButton(), button);
    }
    const int before = desktop.accessibility.promptCount();
    become(extensionOff);
    menu.openAccessibilitySettings();
    EXPECT_EQ(desktop.accessibility.promptCount(), before + 1);
    become(permission);
    menu.openAccessibilitySettings();
    EXPECT_EQ(desktop.accessibility.promptCount(), before + 1);
}

TEST_F(Menu, SaysTheSameOfItsStatusAsTheItemInThePanel) {
    desktop.localization.texts = {{"Tessel/Active · %lld shortcuts · %lld apps", "%2, %1"},
                                  {"Tessel/%n shortcuts", "Kürzel: %n"},
                                  {"Tessel/%n apps", "Programme: %n"},
                                  {"Tessel/Paused", "Angehalten"}};
    MenuState& menu = make();
    for (const bool isEnabled : {true, false}) {
        state->setEnabled(isEnabled);
        EXPECT_EQ(menu.statusText().toStdString(), statusText(state->status(), 0, desktop.localization));
    }
    EXPECT_EQ(menu.statusText(), "Angehalten");
}

TEST_F(Menu, NamesTheShortcutsThatAreTaken) {
    const corvid::Shortcut taken = WindowAction(WindowAction::center).shortcut();
    desktop.hotKeyEvents.refuse(taken.keyCode, taken.modifiers);
    MenuState& menu = make();
    EXPECT_EQ(menu.status(), MenuState::ShortcutsTaken);
    EXPECT_EQ(menu.statusText(), "Some shortcuts are taken");
    EXPECT_EQ(menu.takenShortcuts(), (QVariantMap{{"center", "Another app is already using this shortcut"}}));
}

TEST_F(Menu, SaysWhoseATakenShortcutIsOnceTheDesktopHasSaid) {
    const corvid::Shortcut taken = WindowAction(WindowAction::center).shortcut();
    desktop.hotKeyEvents.refuse(taken.keyCode, taken.modifiers);
    desktop.shortcutHolders.holders = {{taken, {.heldBy = "GNOME", .purpose = platform::KeyPurpose::allWindows}}};
    MenuState& menu = make();
    QVariantMap reported;
    QObject::connect(&menu, &MenuState::changed, [&] { reported = menu.takenShortcuts(); });
    desktop.mainActor.advance(platform::simulated::ShortcutHolders::delay);
    EXPECT_EQ(reported, (QVariantMap{{"center", "Ctrl+Alt+C shows all windows (GNOME)"}}));
}

TEST_F(Menu, SaysWhyATakenShortcutCannotBeBorrowed) {
    const corvid::Shortcut center = WindowAction(WindowAction::center).shortcut();
    const corvid::Shortcut maximize = WindowAction(WindowAction::maximize).shortcut();
    desktop.hotKeyEvents.withhold(center.keyCode, center.modifiers, platform::LoanObstacle::particularLine);
    desktop.hotKeyEvents.withhold(maximize.keyCode, maximize.modifiers, platform::LoanObstacle::keySequence);
    desktop.shortcutHolders.holders = {{center, {.heldBy = "sway", .purpose = "kill"}}};
    desktop.localization.texts = {
        {"Tessel/Tessel cannot borrow it: it is part of a sequence of keys", "Eine Tastenfolge"}};
    const MenuState& menu = make();
    desktop.mainActor.advance(platform::simulated::ShortcutHolders::delay);
    EXPECT_EQ(
        menu.takenShortcuts(),
        (QVariantMap{{"center", "Ctrl+Alt+C: kill (sway)\nTessel cannot borrow it: its line is for one keyboard or "
                                "one layout only"},
                     {"maximize", "Another app is already using this shortcut\nEine Tastenfolge"}}));
    EXPECT_EQ(menu.lendableShortcuts(), "");
}

TEST_F(Menu, SaysWhetherBorrowingChangesTheSettings) {
    const corvid::Shortcut taken = WindowAction(WindowAction::center).shortcut();
    desktop.hotKeyEvents.lend(taken.keyCode, taken.modifiers);
    desktop.shortcutHolders.holders = {{taken, {.heldBy = "KWin", .purpose = "Kill Window"}}};
    MenuState& menu = make();
    EXPECT_EQ(menu.lendableShortcuts(),
              "Another app uses Ctrl+Alt+C. Tessel can have them while it runs; no setting is changed.");
    desktop.hotKeyEvents.lendsThroughSettings = true;
    EXPECT_EQ(menu.lendableShortcuts(), "Another app uses Ctrl+Alt+C. Tessel can have them while it runs; the system "
                                        "settings are changed for that time.");
    desktop.mainActor.advance(platform::simulated::ShortcutHolders::delay);
    EXPECT_EQ(menu.lendableShortcuts(),
              "KWin uses Ctrl+Alt+C. Tessel can have them while it runs; the system settings are changed for that "
              "time.");
}

TEST_F(Menu, ReportsAChangeAfterItHappened) {
    MenuState& menu = make();
    desktop.mainActor.run();
    QString reported;
    int count = 0;
    QObject::connect(&menu, &MenuState::changed, [&] {
        reported = menu.statusText();
        ++count;
    });
    state->setEnabled(false);
    EXPECT_EQ(count, 0) << "not before the change";
    desktop.mainActor.run();
    EXPECT_EQ(count, 1) << "once, however much changed";
    EXPECT_EQ(reported, "Paused");
}

TEST_F(Menu, ListsTheActionsInTheirOrderWithTheirKeys) {
    const QVariantList actions = make().actions();
    ASSERT_EQ(actions.size(), 6);
    QStringList titles;
    for (const QVariant& action : actions) {
        titles.append(action.toMap()["title"].toString());
    }
    EXPECT_EQ(titles,
              (QStringList{"Left half", "Right half", "Maximize", "Almost maximize", "Maximize height", "Center"}));
    const QVariantMap left = actions.first().toMap();
    EXPECT_EQ(left["id"], "leftHalf");
    EXPECT_EQ(left["symbol"], "rectangle.lefthalf.filled");
    EXPECT_EQ(left["keys"].toStringList(), (QStringList{"Ctrl", "Alt", "←"}));
    EXPECT_EQ(left["spokenKeys"], QString::fromUtf8("Ctrl+Alt+←"));
    EXPECT_EQ(shown->ruleActions().size(), 2);
}

TEST_F(Menu, NamesKeysAsTheUsersKeyboardHasThemAndInPicturesByTheirSigns) {
    desktop.localization.texts = {{"Tessel/Ctrl", "Strg"}, {"Tessel/Shift", "Umschalt"}};
    MenuState& menu = make();
    const QVariantMap left = menu.actions().first().toMap();
    EXPECT_EQ(left["keys"].toStringList(), (QStringList{"Strg", "Alt", "←"}));
    EXPECT_EQ(left["spokenKeys"], QString::fromUtf8("Strg+Alt+←"));
    corvid::Snapshot::isActive = true;
    EXPECT_EQ(menu.actions().first().toMap()["keys"].toStringList(), (QStringList{"⌃", "⌥", "←"}));
    corvid::Snapshot::isActive = false;
}

TEST_F(Menu, NewRulesMaximize) {
    MenuState& menu = make();
    menu.addRunningApp("org.example.Editor");
    EXPECT_EQ(state->rules(), (Prefs::Rules{{"org.example.Editor", WindowAction::maximize}}));
    menu.addRunningApp("");
    EXPECT_EQ(state->rules().size(), 1U);
}

TEST_F(Menu, RulesChangeAndGo) {
    MenuState& menu = make();
    menu.setRule("org.example.Editor", "center");
    EXPECT_EQ(state->rules(), (Prefs::Rules{{"org.example.Editor", WindowAction::center}}));
    desktop.mainActor.run();
    EXPECT_EQ(menu.ruleApps()->rowCount(), 1);
    menu.setRule("org.example.Editor", "no action of that name");
    EXPECT_EQ(state->rules(), (Prefs::Rules{{"org.example.Editor", WindowAction::center}}));
    menu.removeRule("org.example.Editor");
    EXPECT_TRUE(state->rules().empty());
    desktop.mainActor.run();
    EXPECT_EQ(menu.ruleApps()->rowCount(), 0);
}

TEST_F(Menu, ChoosingAsksThePanelForApplicationsToMaximize) {
    MenuState& menu = make();
    menu.chooseApp();
    ASSERT_TRUE(desktop.openPanel.shown.has_value());
    EXPECT_TRUE(desktop.openPanel.shown->allowsMultipleSelection);
    EXPECT_EQ(desktop.openPanel.shown->prompt, "Add");
}

TEST_F(Menu, LeadsToWhatHasTakenThePlaceOfTheProgram) {
    MenuState& menu = make();
    EXPECT_FALSE(menu.isReplaced());
    desktop.thisApplication.isUpdated = true;
    EXPECT_TRUE(menu.isReplaced());
    desktop.trace.clear();
    menu.restart();
    EXPECT_EQ(desktop.trace.take(), std::vector<std::string>{"restart this program"});
}

TEST_F(Menu, QuittingEndsTheProgram) {
    MenuState& menu = make();
    desktop.trace.clear();
    menu.quit();
    EXPECT_EQ(desktop.trace.take(), std::vector<std::string>{"terminate this program"});
}

TEST_F(Menu, MayBeDestroyedBeforeItsReport) {
    make();
    state->setEnabled(false);
    shown.reset();
    desktop.mainActor.run();
    EXPECT_FALSE(state->isEnabled());
}

} // namespace
} // namespace tessel
