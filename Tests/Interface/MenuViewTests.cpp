#include "CorvidKit/Components/Environment.h"
#include "CorvidKit/HotKeys.h"
#include "Platform/Simulated/Desktop.h"
#include "Tessel/AppState.h"
#include "Tessel/Menu/MenuViewItem.h"
#include "Tessel/MenuView.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QIcon>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickRenderControl>
#include <QQuickWindow>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessel {
namespace {

/// All items below this one whose type has that name, in the order in which they are drawn.
std::vector<QQuickItem*> itemsOfType(const QQuickItem& root, const std::string& type) {
    std::vector<QQuickItem*> found;
    for (QQuickItem* child : root.childItems()) {
        if (std::string(child->metaObject()->className()).starts_with(type + "_QML")) {
            found.push_back(child);
        }
        const std::vector<QQuickItem*> deeper = itemsOfType(*child, type);
        found.insert(found.end(), deeper.begin(), deeper.end());
    }
    return found;
}

class View : public testing::Test {
protected:
    void SetUp() override { engine.addImportPath(QStringLiteral("qrc:/qt/qml")); }

    QQuickItem& make(MenuTab tab = MenuTab::shortcuts) {
        state.emplace(desktop.standardUserDefaults, false, dispatcher);
        view.emplace(*state, tab);
        item = makeItem(*view, engine);
        if (item == nullptr) {
            throw std::runtime_error("the view cannot be made");
        }
        item->setParentItem(window.contentItem());
        item->setSize({item->implicitWidth(), item->implicitHeight()});
        settle();
        return *item;
    }

    /// What is posted and laid out later takes its place.
    void settle() {
        desktop.mainActor.run();
        for (int turn = 0; turn < 3; ++turn) {
            QCoreApplication::sendPostedEvents();
            control.polishItems();
        }
    }

    QQuickItem& only(const std::string& type) {
        const std::vector<QQuickItem*> found = itemsOfType(*item, type);
        if (found.size() != 1) {
            throw std::runtime_error(std::to_string(found.size()) + " of " + type);
        }
        return *found.front();
    }

    QRectF placeOf(QQuickItem& part) { return part.mapRectToItem(item.get(), part.boundingRect()); }

    static void press(QQuickItem& button) { QMetaObject::invokeMethod(&button, "pressed"); }

    platform::simulated::Desktop desktop;
    corvid::HotKeyDispatcher dispatcher;
    QQuickRenderControl control;
    QQuickWindow window{&control};
    QQmlEngine engine;
    std::optional<AppState> state;
    std::optional<MenuView> view;
    std::unique_ptr<QQuickItem> item;
};

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
    EXPECT_EQ(only("AppsCard").height(), 245);
    const std::vector<QQuickItem*> rows = itemsOfType(*item, "ShortcutRow");
    ASSERT_EQ(rows.size(), 6U);
    for (std::size_t row = 0; row < rows.size(); ++row) {
        EXPECT_EQ(rows[row]->height(), 40) << row;
        EXPECT_EQ(placeOf(*rows[row]).top() - placeOf(*rows.front()).top(), 41.0 * static_cast<double>(row)) << row;
    }
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
    QQuickItem& root = make();
    EXPECT_TRUE(only("WarningCard").isVisible());
    const double before = root.implicitHeight();
    press(*itemsOfType(only("WarningCard"), "PillButton").front());
    desktop.accessibility.isTrusted = true;
    desktop.mainActor.advance(std::chrono::seconds(2));
    settle();
    EXPECT_FALSE(only("WarningCard").isVisible());
    EXPECT_LT(root.implicitHeight(), before);
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
    EXPECT_EQ(rows[1]->property("detail"), QString::fromUtf8("⌘Q"));
    EXPECT_EQ(rows[0]->height(), 26);
    desktop.trace.clear();
    press(*rows[1]);
    EXPECT_EQ(desktop.trace.take(), std::vector<std::string>{"terminate this program"});
}

/// The view as it hangs in a window, which is kept while it is hidden: with room for a shadow around it.
class ShownView : public View {
protected:
    static constexpr double shadow = 20;

    void show() {
        QQuickItem& root = make(MenuTab::apps);
        state->setRules({{"org.example.Editor", WindowAction::center}});
        settle();
        root.setParentItem(shown.contentItem());
        root.setPosition({shadow, shadow});
        shown.resize(static_cast<int>(root.width() + 2 * shadow), static_cast<int>(root.height() + 2 * shadow));
        shown.show();
        QCoreApplication::processEvents();
    }

    void TearDown() override { item.reset(); }

    /// Lists make and drop their rows as they are drawn.
    void draw() {
        settle();
        ASSERT_FALSE(shown.grabWindow().isNull());
    }

    /// The menu that the button opens, once it is open.
    static QQuickItem& menuOf(QQuickItem& button) { return *itemsOfType(button, "PopupMenu").front(); }

    static bool isOpen(QQuickItem& button) { return menuOf(button).property("isOpen").toBool(); }

    /// Where the open menu is in the window; its list is drawn above everything, with five points around it.
    QRectF placeOfMenu() {
        for (QQuickItem* list : itemsOfType(*shown.contentItem(), "MenuList")) {
            if (list->isVisible()) {
                return list->mapRectToScene(list->boundingRect()).adjusted(-5, -5, 5, 5);
            }
        }
        return {};
    }

    QQuickWindow shown;
};

TEST_F(ShownView, AMenuGoesWithTheWindow) {
    show();
    QQuickItem& add = only("AddAppMenu");
    press(add);
    EXPECT_TRUE(isOpen(add));
    shown.hide();
    EXPECT_FALSE(isOpen(add)) << "it would be there, and out of date, when the popover opens again";
    shown.show();
    EXPECT_FALSE(isOpen(add));
    press(add);
    EXPECT_TRUE(isOpen(add));
}

TEST_F(ShownView, AMenuBeginsWhereItsButtonDoesOrEndsWhereItEndsAndLiesOnThePlate) {
    show();
    QQuickItem& add = only("AddAppMenu");
    press(add);
    ASSERT_TRUE(isOpen(add));
    EXPECT_EQ(placeOfMenu().left(), shadow + placeOf(add).left());
    EXPECT_GT(placeOfMenu().top(), shadow + placeOf(add).bottom());
    press(add);
    QQuickItem& picker = only("MenuPicker");
    press(picker);
    ASSERT_TRUE(isOpen(picker));
    EXPECT_EQ(placeOfMenu().right(), shadow + placeOf(picker).right());
    press(picker);

    desktop.applications.add({.bundleIdentifier = "org.example.Long", .localizedName = std::string(200, 'm')});
    press(add);
    const QRectF plate(shadow, shadow, item->width(), item->height());
    EXPECT_TRUE(plate.contains(placeOfMenu())) << placeOfMenu().left() << " to " << placeOfMenu().right();
}

TEST_F(ShownView, AMenuGoesWithItsRow) {
    show();
    const Prefs::Rules one{{"org.example.Mail", WindowAction::center}};
    for (const Prefs::Rules& left : {one, Prefs::Rules()}) {
        state->setRules({{"org.example.Editor", WindowAction::center}, {"org.example.Mail", WindowAction::center}});
        draw();
        press(*itemsOfType(*item, "MenuPicker").front());
        ASSERT_FALSE(placeOfMenu().isEmpty());
        state->setRules(left);
        draw();
        EXPECT_TRUE(placeOfMenu().isEmpty()) << "what it offers is for an application that has no rule any more";
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
