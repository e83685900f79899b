#include "Tests/Interface/DrawnView.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

namespace tessel {
namespace {

class Centring : public DrawnView {
protected:
    /// A state in which nearly all there is is shown on one tab or the other.
    void makeAll(MenuTab tab) {
        desktop.accessibility.isTrusted = false;
        makeReminderDue();
        make(tab);
        state->setRules({{"org.example.Editor", WindowAction::center}, {"org.example.Mail", WindowAction::maximize}});
        settle();
        draw(1);
    }

    /// The text whose capitals stand for those of every text, in place of the one that is there.
    static void setCapitals(QQuickItem& label) { label.setProperty("text", QStringLiteral("HEH")); }

    /// The first label and the first symbol below the item that are to be seen.
    static QQuickItem* labelOf(const QQuickItem& row) { return shownOf(row, "Label").at(0); }
    static QQuickItem* symbolOf(const QQuickItem& row) { return shownOf(row, "Symbol").at(0); }
};

TEST_F(Centring, SymbolsAreInTheMiddleOfTheirTilesAtEveryScale) {
    makeAll(MenuTab::shortcuts);
    std::vector<QQuickItem*> tiles = shownOf(*item, "AppGlyph");
    std::ranges::copy(shownOf(*item, "ActionIcon"), std::back_inserter(tiles));
    ASSERT_EQ(tiles.size(), 8U);
    std::vector<QQuickItem*> symbols;
    std::ranges::transform(tiles, std::back_inserter(symbols), [](QQuickItem* tile) { return symbolOf(*tile); });
    for (const double scale : pixelsPerPoint) {
        const std::vector<QPointF> expected = middlesOf(tiles, scale);
        const std::vector<QPointF> found = middlesOf(symbols, scale);
        for (std::size_t index = 0; index < tiles.size(); ++index) {
            const QPointF off = found[index] - expected[index];
            // The drawings' own edges are soft.
            EXPECT_NEAR(off.x(), 0, 0.2) << symbols[index]->property("name").toString().toStdString() << scale;
            EXPECT_NEAR(off.y(), 0, 0.2) << symbols[index]->property("name").toString().toStdString() << scale;
        }
    }
}

TEST_F(Centring, CapitalsAreAsHighAsTheSymbolOrTileBesideThemAtEveryScale) {
    for (const MenuTab tab : {MenuTab::shortcuts, MenuTab::apps}) {
        makeAll(tab);
        std::vector<QQuickItem*> labels;
        std::vector<QQuickItem*> beside;
        const auto add = [&](const char* type, const char* neighbour) {
            for (const QQuickItem* row : shownOf(*item, type)) {
                labels.push_back(labelOf(*row));
                labels.back()->setProperty("text", QStringLiteral("HEH"));
                beside.push_back(shownOf(*row, neighbour).at(0));
            }
        };
        add("ShortcutRow", "ActionIcon");
        add("OpenAtLoginRow", "ActionIcon");
        add("AppRuleRow", "ApplicationIcon");
        for (const char* type : {"TabButton", "MenuPicker", "AddAppMenu", "PrivacyItem", "WarningCard"}) {
            add(type, "Symbol");
        }
        ASSERT_GE(labels.size(), 10U);
        for (const double scale : pixelsPerPoint) {
            // Letters and pictures begin on whole pixels, each for itself.
            const double slack = 1 / scale + 0.1;
            const std::vector<QPointF> expected = middlesOf(beside, scale);
            const std::vector<QPointF> found = middlesOf(labels, scale);
            for (std::size_t index = 0; index < labels.size(); ++index) {
                EXPECT_NEAR(found[index].y(), expected[index].y(), slack)
                    << "beside " << beside[index]->metaObject()->className() << " in "
                    << beside[index]->parentItem()->metaObject()->className() << " at " << scale;
            }
        }
    }
}

TEST_F(Centring, KeysAreInTheMiddleOfTheirCapsAtEveryScale) {
    make();
    QQuickItem& keys = *itemsOfType(*item, "KeyCaps").front();
    keys.setProperty("keys", QStringList{"H", "⌃", "⌥", "⇧", "⌘", "←", "↑", "HIEH"});
    settle();
    const std::vector<QQuickItem*> labels = itemsOfType(keys, "Label");
    ASSERT_EQ(labels.size(), 8U);
    std::vector<QQuickItem*> caps;
    std::ranges::transform(labels, std::back_inserter(caps), [](QQuickItem* label) { return label->parentItem(); });
    for (const double scale : pixelsPerPoint) {
        const std::vector<QPointF> expected = middlesOf(caps, scale);
        const std::vector<QPointF> found = middlesOf(labels, scale);
        for (std::size_t index = 0; index < labels.size(); ++index) {
            const std::string name = labels[index]->property("text").toString().toStdString();
            EXPECT_NEAR(found[index].x(), expected[index].x(), 0.5 / scale + 0.1) << name << " at " << scale;
            EXPECT_NEAR(found[index].y(), expected[index].y(), 0.5 / scale + 0.1) << name << " at " << scale;
        }
    }
}

TEST_F(Centring, CapitalsOfTheChooserAreAsHighAsWhatIsBesideThemAtEveryScale) {
    makeChooser();
    for (int row = 0; row < 4; ++row) {
        applications->toggle(row);
    }
    draw(1);
    std::vector<QQuickItem*> parts;
    std::vector<QQuickItem*> beside;
    const auto add = [&](QQuickItem* part, QQuickItem* neighbour) {
        if (part->property("text").isValid()) {
            part->setProperty("text", QStringLiteral("HEH"));
        }
        parts.push_back(part);
        beside.push_back(neighbour);
    };
    const std::vector<QQuickItem*> rows = shownOf(*item, "ApplicationRow");
    for (std::size_t index = 0; index < 4; ++index) {
        QQuickItem* icon = shownOf(*rows.at(index), "ApplicationIcon").at(0);
        // Its name, the action of its rule, and the sign that it is chosen.
        add(shownOf(*rows.at(index), "Label").at(0), icon);
        add(shownOf(*rows.at(index), "Label").at(1), icon);
        add(shownOf(*rows.at(index), "Symbol").at(0), icon);
    }
    QQuickItem& field = only("SearchField");
    add(shownOf(field, "Label").at(0), shownOf(field, "Symbol").at(0));
    for (QQuickItem* button : shownOf(*item, "PillButton")) {
        add(shownOf(*button, "Label").at(0), button);
    }
    const auto expectLevel = [&] {
        for (const double scale : pixelsPerPoint) {
            const double slack = 1 / scale + 0.1;
            const std::vector<QPointF> found = middlesOf(parts, scale);
            for (std::size_t index = 0; index < parts.size(); ++index) {
                // The glass has a handle below its circle; its square is in the middle of the field.
                const double expected = placeOf(*beside[index]).center().y();
                EXPECT_NEAR(found[index].y(), expected, slack)
                    << parts[index]->metaObject()->className() << " beside " << beside[index]->metaObject()->className()
                    << " at " << scale;
            }
        }
    };
    expectLevel();
    // The typed text stands where the hint stood.
    field.setProperty("text", "HEH");
    parts.clear();
    beside.clear();
    for (QQuickItem* part : field.findChildren<QQuickItem*>()) {
        if (part->inherits("QQuickTextInput")) {
            add(part, shownOf(field, "Symbol").at(0));
        }
    }
    ASSERT_EQ(parts.size(), 1U);
    expectLevel();
}

} // namespace
} // namespace tessel
