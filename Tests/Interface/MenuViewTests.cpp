#include "Tests/Interface/ViewFixture.h"

#include <gtest/gtest.h>

#include <QIcon>
#include <QQmlEngine>
#include <QQmlProperty>
#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

namespace tessel {
namespace {

TEST_F(View, Is340PointsWideAndAsHighAsItsParts) {
    const QQuickItem& root = make();
    EXPECT_EQ(root.implicitWidth(), 340);
    const QRectF footer = placeOf(only("MenuFooter"));
    EXPECT_EQ(root.implicitHeight(), footer.bottom() + 14);
}

TEST_F(View, PartsAreTwelvePointsApartWithinAMarginOfFourteen) {
    make();
    double below = 14;
    for (const char* type : {"MenuHeader", "TabSwitcher", "ShortcutsCard"}) {
        const QRectF place = placeOf(only(type));
        EXPECT_EQ(place.left(), 14) << type;
        EXPECT_EQ(place.width(), 312) << type;
        EXPECT_EQ(place.top(), below) << type;
        below = place.bottom() + 12;
    }
    EXPECT_EQ(placeOf(only("OpenAtLoginRow")).top(), below);
    EXPECT_EQ(placeOf(only("OpenAtLoginRow")).height(), 38);
    EXPECT_EQ(placeOf(only("PrivacyCard")).top(), below + 38 + 12);
    EXPECT_EQ(placeOf(only("MenuFooter")).top(), placeOf(only("PrivacyCard")).bottom() + 12);
}

TEST_F(View, CardsOfTheTabsAre245PointsHigh) {
    make();
    EXPECT_EQ(only("ShortcutsCard").height(), 245);
    item->setProperty("tab", "apps");
    EXPECT_EQ(only("AppsCard").height(), 245);
    item->setProperty("tab", "shortcuts");
    const std::vector<QQuickItem*> rows = itemsOfType(*item, "ShortcutRow");
    ASSERT_EQ(rows.size(), 6U);
    for (std::size_t row = 0; row < rows.size(); ++row) {
        EXPECT_EQ(rows[row]->height(), 40) << row;
        EXPECT_EQ(placeOf(*rows[row]).top() - placeOf(*rows.front()).top(), 41.0 * static_cast<double>(row)) << row;
    }
}

TEST_F(View, MakesTheApplicationsWhenTheyAreFirstLookedAtAndKeepsThem) {
    make();
    EXPECT_TRUE(itemsOfType(*item, "AppsCard").empty());
    item->setProperty("tab", "apps");
    const QQuickItem* card = &only("AppsCard");
    EXPECT_TRUE(card->isVisible());
    item->setProperty("tab", "shortcuts");
    EXPECT_EQ(&only("AppsCard"), card);
    EXPECT_FALSE(card->isVisible());
}

TEST_F(View, ShowsTheTabThatItBeginsWithAndTheOneThatIsPressed) {
    make(MenuTab::apps);
    EXPECT_TRUE(only("AppsCard").isVisible());
    EXPECT_FALSE(only("ShortcutsCard").isVisible());
    press(*itemsOfType(*item, "TabButton").front());
    EXPECT_FALSE(only("AppsCard").isVisible());
    EXPECT_TRUE(only("ShortcutsCard").isVisible());
}

TEST_F(View, TheWarningIsThereWhileThePermissionIsMissing) {
    desktop.accessibility.isTrusted = false;
    desktop.accessibility.reason = {.kind = platform::AccessObstacle::Kind::permission};
    QQuickItem& root = make();
    EXPECT_TRUE(permissionCard().isVisible());
    EXPECT_EQ(only("MenuHeader").property("status"), "Waiting for permission");
    const double before = root.implicitHeight();
    desktop.trace.clear();
    press(*itemsOfType(permissionCard(), "PillButton").front());
    EXPECT_EQ(desktop.trace.take(),
              (std::vector<std::string>{
                  "open x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"}));
    desktop.accessibility.isTrusted = true;
    desktop.mainActor.advance(std::chrono::seconds(2));
    settle();
    EXPECT_FALSE(permissionCard().isVisible());
    EXPECT_LT(root.implicitHeight(), before);
}

TEST_F(View, TheWarningHasNoButtonWhereNoPageOfSettingsHelps) {
    desktop.accessibility.isTrusted = false;
    desktop.accessibility.reason = {.kind = platform::AccessObstacle::Kind::windowManager};
    make();
    EXPECT_TRUE(permissionCard().isVisible());
    EXPECT_FALSE(itemsOfType(permissionCard(), "PillButton").front()->isVisible());
}

TEST_F(View, ShortcutsThatCanBeBorrowedAreOneClickAway) {
    for (const WindowAction action : {WindowAction::leftHalf, WindowAction::center}) {
        desktop.hotKeyEvents.lend(action.shortcut().keyCode, action.shortcut().modifiers);
    }
    QQuickItem& root = make();
    EXPECT_TRUE(borrowingCard().isVisible());
    EXPECT_EQ(borrowingCard().property("message"),
              "Another app uses Ctrl+Alt+←, Ctrl+Alt+C. Tessel can have them while it runs; no setting is changed.");
    const double before = root.implicitHeight();
    press(*itemsOfType(borrowingCard(), "PillButton").front());
    settle();
    EXPECT_FALSE(borrowingCard().isVisible());
    EXPECT_EQ(only("MenuHeader").property("status"), "Active · 6 shortcuts · 0 apps");
    EXPECT_LT(root.implicitHeight(), before);
    const std::vector<QQuickItem*> rows = itemsOfType(root, "SettingRow");
    const auto borrowed = std::ranges::find_if(
        rows, [](const QQuickItem* row) { return row->property("title") == "Borrowed shortcuts: 2"; });
    ASSERT_NE(borrowed, rows.end());
    EXPECT_TRUE((*borrowed)->isVisible());
    press(*itemsOfType(**borrowed, "PillButton").front());
    settle();
    EXPECT_FALSE((*borrowed)->isVisible());
    EXPECT_TRUE(borrowingCard().isVisible());
}

TEST_F(View, KeysThatTheHolderKeepsAreNamedBeforeOneBorrows) {
    using Keys = std::optional<platform::ShortcutHolder::Keys>;
    constexpr auto super = corvid::Shortcut::command;
    for (const auto& [action, otherKeys] :
         {std::pair(WindowAction(WindowAction::leftHalf), Keys{{super, "Page Up"}}),
          std::pair(WindowAction(WindowAction::rightHalf), Keys{{super, "Page Down"}}),
          std::pair(WindowAction(WindowAction::center), Keys{{super, "Page Down"}}),
          std::pair(WindowAction(WindowAction::maximize), Keys())}) {
        desktop.hotKeyEvents.lend(action.shortcut().keyCode, action.shortcut().modifiers);
        desktop.shortcutHolders.holders.insert_or_assign(
            action.shortcut(), platform::ShortcutHolder{.heldBy = "GNOME", .purpose = "", .otherKeys = otherKeys});
    }
    make();
    desktop.mainActor.advance(platform::simulated::ShortcutHolders::delay);
    settle();
    EXPECT_EQ(
        borrowingCard().property("message"),
        "GNOME uses Ctrl+Alt+←, Ctrl+Alt+→, Ctrl+Alt+C, Ctrl+Alt+↑. Tessel can have them while it runs; no setting is "
        "changed. "
        "Other keys for the same keep working: Super+Page\u00a0Up, Super+Page\u00a0Down.");
}

TEST_F(View, NamesTheHoldingConfigurationOnce) {
    int line = 40;
    for (const WindowAction action : {WindowAction::leftHalf, WindowAction::center}) {
        desktop.hotKeyEvents.lend(action.shortcut().keyCode, action.shortcut().modifiers);
        desktop.shortcutHolders.holders.emplace(
            action.shortcut(), platform::ShortcutHolder{.heldBy = "sway, ~/config:" + std::to_string(++line),
                                                        .purpose = "exec foot",
                                                        .otherKeys = {}});
    }
    make();
    desktop.mainActor.advance(platform::simulated::ShortcutHolders::delay);
    settle();
    EXPECT_EQ(borrowingCard().property("message"),
              "sway uses Ctrl+Alt+←, Ctrl+Alt+C. Tessel can have them while it runs; no setting is changed.");
}

TEST_F(View, NothingIsSaidOfBorrowingWhileNothingIsTaken) {
    make();
    EXPECT_FALSE(borrowingCard().isVisible());
}

TEST_F(View, OffersToRestartWhereTheProgramWasReplaced) {
    QQuickItem& root = make();
    EXPECT_FALSE(only("UpdatedCard").isVisible());
    const double before = root.implicitHeight();
    desktop.thisApplication.isUpdated = true;
    QMetaObject::invokeMethod(item.get(), "appear");
    settle();
    EXPECT_TRUE(only("UpdatedCard").isVisible());
    EXPECT_GT(root.implicitHeight(), before);
    desktop.trace.clear();
    press(*itemsOfType(only("UpdatedCard"), "PillButton").front());
    EXPECT_EQ(desktop.trace.take(), std::vector<std::string>{"restart this program"});
}

TEST_F(View, TheStatusIsGreyOrangeOrGreen) {
    const auto colour = [this] {
        settle();
        return only("MenuHeader").property("statusColor").value<QColor>();
    };
    const QColor grey(0x80, 0x80, 0x85);
    const QColor orange(0xc4, 0x66, 0x00);
    const QColor green(0x1c, 0x96, 0x3b);
    desktop.accessibility.isTrusted = false;
    make();
    EXPECT_EQ(colour(), orange) << "waiting for permission";
    const corvid::Shortcut taken = WindowAction(WindowAction::maximize).shortcut();
    desktop.hotKeyEvents.refuse(taken.keyCode, taken.modifiers);
    desktop.accessibility.isTrusted = true;
    desktop.mainActor.advance(std::chrono::seconds(2));
    ASSERT_EQ(state->status(), AppStatus::shortcutsTaken);
    EXPECT_EQ(colour(), orange) << "some shortcuts are taken";
    state->setEnabled(false);
    EXPECT_EQ(colour(), grey) << "paused";
    desktop.hotKeyEvents.release(taken.keyCode, taken.modifiers);
    state->setEnabled(true);
    EXPECT_EQ(colour(), green) << "active";
}

TEST_F(View, WithoutRulesTheAppsCardSaysSo) {
    make(MenuTab::apps);
    const auto isReported = [this] {
        const std::vector<QQuickItem*> labels = itemsOfType(only("AppsCard"), "Label");
        const auto label = std::ranges::find_if(
            labels, [](const QQuickItem* each) { return each->property("text") == "No apps yet"; });
        return label != labels.end() && (*label)->isVisible();
    };
    EXPECT_TRUE(isReported());
    EXPECT_FALSE(only("AppRuleList").isVisible());
    state->setRule("org.example.Editor", WindowAction::center);
    settle();
    EXPECT_FALSE(isReported());
    EXPECT_TRUE(only("AppRuleList").isVisible());
}

TEST_F(View, TheReminderGoesWhenItIsDismissed) {
    make();
    EXPECT_FALSE(only("UpdateReminderCard").isVisible());
    state->updates().dismissUpdateReminder();
    desktop.mainActor.advance(std::chrono::hours(24 * 30 + 1));
    settle();
    EXPECT_TRUE(only("UpdateReminderCard").isVisible());
    const std::vector<QQuickItem*> buttons = itemsOfType(only("UpdateReminderCard"), "PillButton");
    ASSERT_EQ(buttons.size(), 2U);
    press(*buttons.back());
    settle();
    EXPECT_FALSE(only("UpdateReminderCard").isVisible());
}

TEST_F(View, TheMasterSwitchShowsTheStateThatHolds) {
    make();
    QQuickItem& header = only("MenuHeader");
    EXPECT_TRUE(header.property("isOn").toBool());
    EXPECT_EQ(header.property("switchHelp"), "Turn off");
    EXPECT_EQ(header.property("status"), QString::fromUtf8("Active · 6 shortcuts · 0 apps"));
    QMetaObject::invokeMethod(itemsOfType(header, "MenuSwitch").front(), "toggle");
    settle();
    EXPECT_FALSE(state->isEnabled());
    EXPECT_FALSE(header.property("isOn").toBool());
    EXPECT_EQ(header.property("switchHelp"), "Turn on");
    EXPECT_EQ(header.property("status"), "Paused");
}

TEST_F(View, OnlyTheRowOfATakenShortcutIsMarked) {
    const corvid::Shortcut taken = WindowAction(WindowAction::maximize).shortcut();
    desktop.hotKeyEvents.refuse(taken.keyCode, taken.modifiers);
    make();
    const std::vector<QQuickItem*> rows = itemsOfType(*item, "ShortcutRow");
    ASSERT_EQ(rows.size(), 6U);
    for (std::size_t row = 0; row < rows.size(); ++row) {
        EXPECT_EQ(rows[row]->property("isTaken").toBool(), row == 2) << row;
    }
}

TEST_F(View, TheSignOfATakenShortcutSaysWhoseItIs) {
    const corvid::Shortcut taken = WindowAction(WindowAction::maximize).shortcut();
    desktop.hotKeyEvents.refuse(taken.keyCode, taken.modifiers);
    desktop.shortcutHolders.holders = {{taken, {.heldBy = "openbox", .purpose = platform::KeyPurpose::workspaceAbove}}};
    make();
    desktop.mainActor.advance(platform::simulated::ShortcutHolders::delay);
    settle();
    QQuickItem* row = itemsOfType(*item, "ShortcutRow").at(2);
    const QString wanted = QString::fromUtf8("Ctrl+Alt+↑ switches to the workspace above (openbox)");
    EXPECT_EQ(itemsOfType(*row, "ToolTip").front()->property("text"), wanted);
    QQuickItem* sign = itemsOfType(*row, "ToolTip").front()->parentItem();
    EXPECT_EQ(QQmlProperty::read(sign, "Accessible.name", qmlContext(sign)), wanted);
}

TEST_F(View, TwoHundredRulesAreOneListOfWhichAFewRowsExist) {
    make(MenuTab::apps);
    Prefs::Rules rules;
    for (int number = 0; number < 200; ++number) {
        rules.emplace("org.example.App" + std::to_string(number), WindowAction::center);
    }
    state->setRules(rules);
    settle();
    QQuickItem& list = only("AppRuleList");
    EXPECT_EQ(list.property("count").toInt(), 200);
    const std::size_t made = itemsOfType(*item, "AppRuleRow").size();
    ASSERT_GT(made, 3U);
    EXPECT_LT(made, 40U);
    EXPECT_EQ(itemsOfType(*item, "AppRuleRow").front()->height(), 30);
}

TEST_F(View, AnApplicationWhoseIconIsNowhereToBeFoundHasTheOutlineOfOne) {
    const QStringList themes = QIcon::themeSearchPaths();
    const QStringList more = QIcon::fallbackSearchPaths();
    QIcon::setThemeSearchPaths({});
    QIcon::setFallbackSearchPaths({});
    const std::vector<std::pair<std::string, bool>> icons{
        {"", true}, {"no-such-icon", true}, {"/no/such/file.png", true}, {":/preview/mail.svg", false}};
    for (const auto& [icon, isMissing] : icons) {
        desktop.applicationCatalogue.install("/applications/Editor", {"org.example.Editor", "Editor", icon});
        make(MenuTab::apps);
        state->setRules({{"org.example.Editor", WindowAction::center}});
        settle();
        const QQuickItem& shown = only("ApplicationIcon");
        EXPECT_EQ(shown.size(), QSizeF(20, 20));
        const QQuickItem& outline = *shown.childItems().back();
        EXPECT_EQ(outline.property("name"), "app.dashed");
        EXPECT_EQ(outline.size(), QSizeF(20, 20));
        EXPECT_EQ(outline.isVisible(), isMissing) << icon;
        item.reset();
    }
    QIcon::setThemeSearchPaths(themes);
    QIcon::setFallbackSearchPaths(more);
}

TEST_F(View, OpeningAtLoginShowsTheStateThatHolds) {
    make();
    QQuickItem& row = only("OpenAtLoginRow");
    QQuickItem& toggle = *itemsOfType(row, "MenuSwitch").front();
    EXPECT_EQ(toggle.size(), QSizeF(26, 15));
    EXPECT_FALSE(row.property("isOn").toBool());
    desktop.loginItemService.requiresApproval = true;
    QMetaObject::invokeMethod(&toggle, "toggle");
    EXPECT_FALSE(row.property("isOn").toBool()) << "not before the user approves";
    desktop.loginItemService.requiresApproval = false;
    QMetaObject::invokeMethod(&toggle, "toggle");
    EXPECT_TRUE(row.property("isOn").toBool());
    desktop.loginItemService.setStatus(platform::LoginItemStatus::notRegistered);
    QMetaObject::invokeMethod(item.get(), "appear");
    EXPECT_FALSE(row.property("isOn").toBool()) << "changed elsewhere";
}

TEST_F(View, TheFooterLeadsToNewerVersionsAndToTheEnd) {
    make();
    const std::vector<QQuickItem*> rows = itemsOfType(*item, "FooterRow");
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0]->property("title"), "Check for Updates");
    EXPECT_EQ(rows[0]->property("detail"), "Version 1.2");
    EXPECT_EQ(rows[1]->property("title"), "Quit");
    EXPECT_EQ(rows[1]->property("detail"), "Ctrl+Q");
    EXPECT_EQ(rows[0]->height(), 26);
    desktop.trace.clear();
    press(*rows[1]);
    EXPECT_EQ(desktop.trace.take(), std::vector<std::string>{"terminate this program"});
}

TEST_F(View, AFooterShowsItsCaptionOrWithNothingElseToShowItTheVersion) {
    struct Row {
        QString caption;
        bool canCheck;
        QString line;
        std::size_t rows;
    };
    const std::vector<Row> rows{
        {"", false, "Version 1.2", 1}, {"", true, "", 2}, {"Trial", false, "Trial", 1}, {"Trial", true, "Trial", 2}};
    make();
    QQuickItem& footer = only("MenuFooter");
    for (const Row& row : rows) {
        footer.setProperty("caption", row.caption);
        footer.setProperty("canCheckForUpdates", row.canCheck);
        settle();
        const QQuickItem& line = *footer.childItems().front();
        EXPECT_EQ(line.isVisible(), !row.line.isEmpty());
        EXPECT_EQ(line.childItems().front()->property("text"), row.line);
        if (line.isVisible()) {
            EXPECT_EQ(line.height(), 26);
            EXPECT_EQ(line.width(), footer.width());
        }
        const auto footerRows = itemsOfType(footer, "FooterRow");
        EXPECT_EQ(std::ranges::count_if(footerRows, &QQuickItem::isVisible),
                  std::ssize(footerRows) - (row.canCheck ? 0 : 1));
        EXPECT_TRUE(footerRows.back()->isVisible());
    }
}

TEST_F(View, TakesItsColoursFromTheBrandAndTheScheme) {
    make();
    auto& environment = corvid::Environment::of(engine);
    EXPECT_EQ(environment.appBrand()->property("name"), "Tessel");
    EXPECT_EQ(environment.appBrand()->property("accent").value<QColor>(), QColor(0x00, 0x7a, 0xff));
    environment.setDark(true);
    EXPECT_EQ(environment.appBrand()->property("accent").value<QColor>(), QColor(0x0a, 0x84, 0xff));
}

TEST_F(View, AnotherKindOfViewIsNotItsBusiness) {
    const platform::View unknown;
    EXPECT_EQ(makeItem(unknown, engine), nullptr);
}

} // namespace
} // namespace tessel
