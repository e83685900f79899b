#include "CorvidKit/Snapshot.h"
#include "Tests/Interface/ViewFixture.h"

#include <gtest/gtest.h>

#include <QJSValue>
#include <QTest>
#include <optional>
#include <string>
#include <vector>

namespace tessel {
namespace {

/// What a menu offers: a section in brackets, a divider as a dash.
std::vector<std::string> offered(const QQuickItem& menu) {
    std::vector<std::string> lines;
    const QJSValue entries = menu.property("entries").value<QJSValue>();
    for (quint32 index = 0; index < entries.property("length").toUInt(); ++index) {
        const QJSValue entry = entries.property(index);
        lines.push_back(entry.hasProperty("section") ? "[" + entry.property("section").toString().toStdString() + "]"
                        : entry.hasProperty("isDivider") ? "-"
                                                         : entry.property("title").toString().toStdString());
    }
    return lines;
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

TEST_F(ShownView, OffersOpenApplicationsOnlyWhereThereAreSomeAndAlwaysAllOthers) {
    const std::string all = "Choose from Applications…";
    show();
    QQuickItem& add = only("AddAppMenu");
    const auto menu = [&] {
        press(add);
        const std::vector<std::string> lines = offered(menuOf(add));
        press(add);
        return lines;
    };
    EXPECT_EQ(menu(), std::vector<std::string>{all});
    desktop.applications.add({.process = 10, .bundleIdentifier = "org.example.Editor", .localizedName = "Editor"});
    EXPECT_EQ(menu(), std::vector<std::string>{all}) << "it has a rule";
    desktop.applications.add({.process = 11, .bundleIdentifier = "org.example.Mail", .localizedName = "Mail"});
    EXPECT_EQ(menu(), (std::vector<std::string>{"[Open apps]", "Mail", "-", all}));
}

TEST_F(ShownView, AnApplicationWhoseRuleIsRemovedIsAmongTheOpenOnesAgain) {
    desktop.applications.add({.process = 10, .bundleIdentifier = "org.example.Editor", .localizedName = "Editor"});
    show();
    draw();
    QQuickItem& picker = *itemsOfType(*item, "MenuPicker").front();
    press(picker);
    QQuickItem& menu = menuOf(picker);
    ASSERT_EQ(offered(menu), (std::vector<std::string>{"Maximize", "Center", "-", "Remove"}));
    QMetaObject::invokeMethod(&menu, "choose", Q_ARG(QVariant, 3));
    settle();
    EXPECT_TRUE(state->rules().empty());
    draw();
    EXPECT_TRUE(itemsOfType(only("AppRuleList"), "AppRuleRow").empty() || !only("AppRuleList").isVisible());
    QQuickItem& add = only("AddAppMenu");
    press(add);
    EXPECT_EQ(offered(menuOf(add)),
              (std::vector<std::string>{"[Open apps]", "Editor", "-", "Choose from Applications…"}));
}

/// Pictures are drawn as long as it lives.
class Drawing {
public:
    Drawing() { corvid::Snapshot::isActive = true; }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;
    ~Drawing() { corvid::Snapshot::isActive = false; }
};

TEST_F(ShownView, WhatIsUnderThePointerIsHighlightedButNotWhileDrawing) {
    for (const bool isDrawing : {false, true}) {
        std::optional<Drawing> drawing;
        if (isDrawing) {
            drawing.emplace();
        }
        show();
        draw();
        QQuickItem& row = *itemsOfType(*item, "FooterRow").front();
        const QPoint middle = row.mapToScene(row.boundingRect().center()).toPoint();
        QTest::mouseMove(&shown, middle + QPoint(0, 1));
        QTest::mouseMove(&shown, middle);
        QCoreApplication::processEvents();
        EXPECT_EQ(row.property("isHovered").toBool(), !isDrawing);
        QQuickItem& rule = *itemsOfType(*item, "AppRuleRow").front();
        QTest::mouseMove(&shown, rule.mapToScene({50, 15}).toPoint());
        QCoreApplication::processEvents();
        EXPECT_EQ(rule.property("hovering").toBool(), !isDrawing);
        item.reset();
        shown.hide();
    }
}

TEST_F(ShownView, OpeningAtLoginIsShownOffAndNotAskedForWhileDrawing) {
    desktop.loginItemService.setStatus(platform::LoginItemStatus::enabled);
    show();
    EXPECT_TRUE(only("OpenAtLoginRow").property("isOn").toBool());
    item.reset();
    const Drawing drawing;
    show();
    EXPECT_FALSE(only("OpenAtLoginRow").property("isOn").toBool());
    QMetaObject::invokeMethod(item.get(), "appear");
    EXPECT_FALSE(only("OpenAtLoginRow").property("isOn").toBool());
}

TEST_F(ShownView, TheFooterNamesTheKeysToQuitAsTheyArePrintedAndInPicturesByTheirSigns) {
    show();
    EXPECT_EQ(itemsOfType(*item, "FooterRow").back()->property("detail"), "Ctrl+Q");
    item.reset();
    const Drawing drawing;
    show();
    EXPECT_EQ(itemsOfType(*item, "FooterRow").back()->property("detail"), QString::fromUtf8("⌘Q"));
}

TEST_F(ShownView, MetaQAndControlQEndTheProgram) {
    show();
    shown.requestActivate();
    for (const Qt::KeyboardModifier modifier : {Qt::MetaModifier, Qt::ControlModifier}) {
        desktop.trace.clear();
        QTest::keyClick(&shown, Qt::Key_Q, modifier);
        EXPECT_EQ(desktop.trace.take(), std::vector<std::string>{"terminate this program"}) << modifier;
    }
    QTest::keyClick(&shown, Qt::Key_Q);
    EXPECT_EQ(desktop.trace.take(), std::vector<std::string>());
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

} // namespace
} // namespace tessel
