#include "CorvidKit/Toolkit/Translations.h"
#include "Tests/Interface/DrawnView.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace tessel {
namespace {

class Edges : public DrawnView {
protected:
    static constexpr double scale = 2;

    /// A state in which every kind of row and card is shown on one tab or the other.
    void makeAll(MenuTab tab) {
        desktop.accessibility.isTrusted = false;
        makeReminderDue();
        make(tab);
        state->setRules({{"org.example.Editor", WindowAction::center}});
        settle();
        draw(1);
    }

    /// The n-th part of that type that is shown in each of these.
    std::vector<QQuickItem*> partsIn(const std::vector<const char*>& rows, const char* type) {
        std::vector<QQuickItem*> parts;
        for (const char* row : rows) {
            for (const QQuickItem* found : shownOf(*item, row)) {
                parts.push_back(shownOf(*found, type).at(0));
            }
        }
        return parts;
    }
};

TEST_F(Edges, TextsBesideAnIconBeginOnOneLine) {
    for (const MenuTab tab : {MenuTab::shortcuts, MenuTab::apps}) {
        makeAll(tab);
        const std::vector<QQuickItem*> labels = partsIn({"ShortcutRow", "OpenAtLoginRow", "AppRuleRow", "AddAppMenu",
                                                         "WarningCard", "UpdateReminderCard", "PrivacyCard"},
                                                        "Label");
        ASSERT_GE(labels.size(), 6U);
        for (QQuickItem* label : labels) {
            label->setProperty("text", QStringLiteral("HEH"));
        }
        for (const QRectF& ink : inkOf(labels, scale)) {
            // A letter begins a point further in than its text.
            EXPECT_NEAR(ink.left(), 55, 0.5);
        }
        item.reset();
    }
}

TEST_F(Edges, IconsAndSymbolsAreOnOneAxis) {
    for (const MenuTab tab : {MenuTab::shortcuts, MenuTab::apps}) {
        makeAll(tab);
        std::vector<QQuickItem*> symbols =
            partsIn({"WarningCard", "UpdateReminderCard", "PrivacyCard", "AddAppMenu"}, "Symbol");
        for (const char* type : {"AppGlyph", "ActionIcon"}) {
            for (QQuickItem* tile : shownOf(*item, type)) {
                symbols.push_back(tile);
            }
        }
        for (const QQuickItem* row : shownOf(*item, "AppRuleRow")) {
            symbols.push_back(shownOf(*row, "ApplicationIcon").at(0));
        }
        ASSERT_GE(symbols.size(), 6U);
        for (const QPointF& middle : middlesOf(symbols, scale)) {
            EXPECT_NEAR(middle.x(), 34, 0.5);
        }
        item.reset();
    }
}

TEST_F(Edges, KeysSwitchesPickersAndDetailsEndOnOneLine) {
    for (const MenuTab tab : {MenuTab::shortcuts, MenuTab::apps}) {
        makeAll(tab);
        std::vector<QQuickItem*> ends = shownOf(*item, "KeyCaps");
        ends.push_back(partsIn({"OpenAtLoginRow"}, "MenuSwitch").front());
        for (const QQuickItem* picker : shownOf(*item, "MenuPicker")) {
            ends.push_back(shownOf(*picker, "Symbol").back());
        }
        for (const QQuickItem* row : shownOf(*item, "FooterRow")) {
            ends.push_back(shownOf(*row, "Label").at(1));
            ends.back()->setProperty("text", QStringLiteral("HEH"));
        }
        ASSERT_GE(ends.size(), 4U);
        for (const QRectF& ink : inkOf(ends, scale)) {
            // A letter ends up to a point before its text.
            EXPECT_NEAR(ink.right(), 315.6, 0.8);
        }
        item.reset();
    }
}

TEST_F(Edges, WhereThereAreMoreRulesTheNextRowPeeksOutAndNoLetterIsCut) {
    make(MenuTab::apps);
    giveManyRules();
    QQuickItem& list = only("AppRuleList");
    QQuickItem& heading = *shownOf(only("AppsCard"), "Label").at(1);
    for (int lines = 1; lines <= 4; ++lines) {
        QStringList text;
        for (int line = 0; line < lines; ++line) {
            text.append(QStringLiteral("H"));
        }
        heading.setProperty("text", text.join('\n'));
        settle();
        draw(1);
        std::vector<QQuickItem*> labels;
        std::vector<QQuickItem*> icons;
        const double end = placeOf(list).bottom();
        for (QQuickItem* row : shownOf(list, "AppRuleRow")) {
            if (placeOf(*row).top() < end && placeOf(*row).bottom() > end) {
                labels.push_back(shownOf(*row, "Label").at(0));
                icons.push_back(shownOf(*row, "ApplicationIcon").at(0));
                labels.back()->setProperty("text", QStringLiteral("HlÄ"));
            }
        }
        ASSERT_EQ(labels.size(), 1U) << lines << " lines, " << list.height();
        EXPECT_FALSE(inkOf(labels, scale).front().isValid()) << lines;
        EXPECT_TRUE(inkOf(icons, scale).front().isValid()) << lines;
        EXPECT_LE(end, placeOf(only("AddAppMenu")).top());
    }
}

TEST_F(Edges, TheScrollMarkIsBesideTheHighlightOfARowAtEveryScale) {
    const auto expectApart = [this](const char* type, const char* highlighted) {
        QQuickItem& mark = *shownOf(*item, "ScrollMark").at(0);
        QQuickItem& row = *shownOf(*item, type).at(1);
        row.setProperty(highlighted, true);
        std::vector<QQuickItem*> plates;
        for (QQuickItem* part : row.childItems()) {
            if (part->isVisible() && part->height() == row.height() && part->inherits("corvid::RoundedRectangle")) {
                plates.push_back(part);
            }
        }
        ASSERT_EQ(plates.size(), 1U) << type;
        for (const double pixels : pixelsPerPoint) {
            EXPECT_LT(inkOf(plates, pixels).front().right(), inkOf({&mark}, pixels).front().left()) << type << pixels;
        }
    };
    make(MenuTab::apps);
    giveManyRules();
    expectApart("AppRuleRow", "hovering");
    makeChooser();
    expectApart("ApplicationRow", "isHovered");
}

TEST_F(Edges, TheChoosersTextsIconsAndMarksAreOnTheLinesOfThePopover) {
    makeChooser();
    applications->toggle(1);
    draw(1);
    const std::vector<QQuickItem*> rows = shownOf(*item, "ApplicationRow");
    QQuickItem& field = only("SearchField");
    std::vector<QQuickItem*> labels{shownOf(field, "Label").at(0)};
    std::vector<QQuickItem*> symbols{shownOf(field, "Symbol").at(0)};
    for (std::size_t row = 1; row < 4; ++row) {
        labels.push_back(shownOf(*rows.at(row), "Label").at(0));
        symbols.push_back(shownOf(*rows.at(row), "ApplicationIcon").at(0));
    }
    for (QQuickItem* label : labels) {
        label->setProperty("text", QStringLiteral("HEH"));
    }
    QQuickItem& chosen = *shownOf(*rows.at(1), "Symbol").at(0);
    for (const double pixels : pixelsPerPoint) {
        for (const QRectF& ink : inkOf(labels, pixels)) {
            EXPECT_NEAR(ink.left(), 55, 0.5) << pixels;
        }
        for (const QPointF& middle : middlesOf(symbols, pixels)) {
            EXPECT_NEAR(middle.x(), 34, 0.5) << pixels;
        }
        // As far from the side as keys and switches are in the popover.
        EXPECT_NEAR(item->width() - inkOf({&chosen}, pixels).front().right(), 340 - 315.6, 0.8) << pixels;
    }
    field.setProperty("text", "HEH");
    QQuickItem& clear = *shownOf(field, "Symbol").at(1);
    for (const double pixels : pixelsPerPoint) {
        EXPECT_NEAR(item->width() - inkOf({&clear}, pixels).front().right(), 340 - 315.6, 0.8) << pixels;
    }
}

TEST_F(Edges, PromisesAreOneLineInEveryLanguage) {
    for (const char* language : {"en", "de", "fr", "es", "it", "pt_BR", "ja", "ko", "zh_CN"}) {
        const auto translators = corvid::toolkit::loadTranslations({language});
        make();
        for (const QQuickItem* promise : itemsOfType(*item, "PrivacyItem")) {
            const QQuickItem& label = *itemsOfType(*promise, "Label").front();
            const QString text = label.property("text").toString();
            // Other fonts than ours write what ours lacks, every character as wide as the text is high.
            const bool isOurs = text.at(0).unicode() < 0x2000;
            if (isOurs) {
                EXPECT_EQ(label.property("lineCount").toInt(), 1) << language;
            } else {
                EXPECT_LE(static_cast<double>(text.size()) * 11, label.width()) << language;
            }
        }
        item.reset();
    }
}

TEST_F(Edges, MenusAreAsWideAsTheirLinesInEveryLanguage) {
    for (const char* language : {"en", "de", "fr", "es", "it", "pt_BR", "ja", "ko", "zh_CN"}) {
        const auto translators = corvid::toolkit::loadTranslations({language});
        make(MenuTab::apps);
        state->setRules({{"org.example.Editor", WindowAction::maximize}});
        settle();
        draw(1);
        for (const char* type : {"MenuPicker", "AddAppMenu"}) {
            QQuickItem& button = *shownOf(*item, type).at(0);
            press(button);
            draw(1);
            const std::vector<QQuickItem*> labels = shownOf(openMenu(), "Label");
            EXPECT_FALSE(labels.empty());
            for (const QQuickItem* label : labels) {
                EXPECT_FALSE(label->property("truncated").toBool())
                    << language << ": " << label->property("text").toString().toStdString();
            }
            press(button);
        }
        item.reset();
    }
}

TEST_F(Edges, TheTipAboutATakenShortcutCoversNoTitle) {
    for (const WindowAction action : WindowAction::menuOrder) {
        desktop.hotKeyEvents.refuse(action.shortcut().keyCode, action.shortcut().modifiers);
    }
    desktop.accessibility.isTrusted = true;
    make();
    const std::vector<QQuickItem*> rows = shownOf(*item, "ShortcutRow");
    for (QQuickItem* row : rows) {
        row->setProperty("taken", "Ctrl+Alt+← switches to the workspace on the left (GNOME), and cannot be borrowed");
    }
    settle();
    std::size_t tips = 0;
    for (QQuickItem* bubble : window.contentItem()->childItems()) {
        if (bubble->z() != 1000) {
            continue;
        }
        // A tip is made when it is shown.
        if (!bubble->setProperty("active", true) || bubble->width() < 20) {
            continue;
        }
        ++tips;
        for (const QQuickItem* row : rows) {
            QQuickItem& title = *shownOf(*row, "Label").at(0);
            EXPECT_FALSE(placeOf(*bubble).intersects(placeOf(title)))
                << title.property("text").toString().toStdString();
        }
        bubble->setProperty("active", false);
    }
    EXPECT_GE(tips, rows.size());
}

} // namespace
} // namespace tessel
