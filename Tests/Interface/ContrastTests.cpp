#include "Tests/Interface/DrawnView.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>
#include <vector>

namespace tessel {
namespace {

/// Web Content Accessibility Guidelines 2.1, "relative luminance".
double luminanceOf(QRgb colour) {
    const auto linear = [](int value) {
        const double part = value / 255.0;
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) + 0.0722 * linear(qBlue(colour));
}

/// The same, "contrast ratio": from 1 to 21.
double contrastOf(QRgb one, QRgb other) {
    const auto [darker, lighter] = std::minmax({luminanceOf(one), luminanceOf(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

class Contrast : public DrawnView {
protected:
    // Large enough that the thinnest line of a letter covers whole pixels.
    static constexpr double scale = 4;

    static QRect pixelsOf(const QRectF& place) {
        return QRectF(place.topLeft() * scale, place.size() * scale).toAlignedRect();
    }

    /// The least contrast of these items to what is behind them, among the pixels that they cover wholly; 0 for none.
    std::vector<double> contrastsOf(const std::vector<QQuickItem*>& parts) {
        const QImage with = draw(scale);
        for (QQuickItem* part : parts) {
            part->setOpacity(0);
        }
        const QImage without = draw(scale);
        std::vector<double> contrasts;
        for (QQuickItem* part : parts) {
            part->setOpacity(1);
            contrasts.push_back(leastContrast(with, without, pixelsOf(placeOf(*part)) & with.rect()));
        }
        return contrasts;
    }

    /// That each of these, which do not cover each other, has that contrast, but for what shows nothing.
    void expectContrast(const std::vector<QQuickItem*>& parts, const char* name, double least,
                        const std::string& when = {}) {
        const std::vector<double> contrasts = contrastsOf(parts);
        for (std::size_t index = 0; index < parts.size(); ++index) {
            const QVariant shown = parts[index]->property(name);
            if (shown.isValid() && shown.toString().isEmpty()) {
                continue;
            }
            EXPECT_GE(contrasts[index], least)
                << parts[index]->metaObject()->className() << " " << shown.toString().toStdString() << " in "
                << parts[index]->parentItem()->metaObject()->className()
                << (corvid::Environment::of(engine).isDark() ? " in dark " : " in light ") << when;
        }
    }

    void expectContrast(const std::string& type, const char* name, double least) {
        ASSERT_FALSE(shownOf(*item, type).empty()) << type;
        expectContrast(shownOf(*item, type), name, least);
    }

    /// The same of the texts and symbols in these, in both schemes.
    void expectContrastWithin(const std::vector<QQuickItem*>& roots, const std::string& when) {
        std::vector<QQuickItem*> texts;
        std::vector<QQuickItem*> symbols;
        for (const QQuickItem* root : roots) {
            std::ranges::copy(shownOf(*root, "Label"), std::back_inserter(texts));
            std::ranges::copy(shownOf(*root, "Symbol"), std::back_inserter(symbols));
        }
        ASSERT_FALSE(texts.empty() && symbols.empty()) << when;
        for (const bool isDark : {false, true}) {
            setDark(isDark);
            expectContrast(texts, "text", 4.5, when);
            expectContrast(symbols, "name", 3, when);
        }
    }

    /// The contrast of these under the pointer, pressed, and with the focus.
    void expectContrastWith(const char* property, const std::vector<QQuickItem*>& roots) {
        for (QQuickItem* root : roots) {
            EXPECT_TRUE(root->setProperty(property, true)) << root->metaObject()->className();
        }
        expectContrastWithin(roots, property);
        for (QQuickItem* root : roots) {
            root->setProperty(property, false);
        }
    }

    std::vector<QQuickItem*> shownOfAll(const std::vector<const char*>& types) {
        std::vector<QQuickItem*> all;
        for (const char* type : types) {
            std::ranges::copy(shownOf(*item, type), std::back_inserter(all));
        }
        return all;
    }

    /// How well an end of a switch can be told from what it lies on: the best of its outermost points.
    static double contrastAt(const QImage& with, const QImage& without, const QRectF& place, double from, double to) {
        double best = 1;
        const int y = static_cast<int>(std::lround(place.center().y() * scale));
        for (int x = static_cast<int>(from * scale); x < static_cast<int>(to * scale); ++x) {
            best = std::max(best, contrastOf(with.pixel(x, y), without.pixel(x, y)));
        }
        return best;
    }

    void expectContrastOfSwitches() {
        const std::vector<QQuickItem*> switches = shownOf(*item, "MenuSwitch");
        const QImage with = draw(scale);
        for (QQuickItem* part : switches) {
            part->setOpacity(0);
        }
        const QImage without = draw(scale);
        for (QQuickItem* part : switches) {
            part->setOpacity(1);
            const QRectF place = placeOf(*part);
            EXPECT_GE(contrastAt(with, without, place, place.left(), place.left() + 1.5), 3) << place.left();
            EXPECT_GE(contrastAt(with, without, place, place.right() - 1.5, place.right()), 3) << place.left();
        }
    }

private:
    static double leastContrast(const QImage& with, const QImage& without, const QRect& pixels) {
        const auto distance = [&](int x, int y) {
            const QRgb one = with.pixel(x, y);
            const QRgb other = without.pixel(x, y);
            return std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                             std::abs(qBlue(one) - qBlue(other))});
        };
        int most = 0;
        for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
            for (int x = pixels.left(); x <= pixels.right(); ++x) {
                most = std::max(most, distance(x, y));
            }
        }
        // Edges are mixed with what is behind them; within a shape a pixel is as its neighbours, but for a gradient.
        const auto isWithin = [&](int x, int y) {
            constexpr double shape = 0.8;
            constexpr int gradient = 4;
            const int here = distance(x, y);
            const auto isAlike = [&](int otherX, int otherY) {
                return with.valid(otherX, otherY) && std::abs(distance(otherX, otherY) - here) <= gradient;
            };
            return here >= shape * most && isAlike(x - 1, y) && isAlike(x + 1, y) && isAlike(x, y - 1) &&
                   isAlike(x, y + 1);
        };
        double least = 0;
        for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
            for (int x = pixels.left(); x <= pixels.right(); ++x) {
                if (isWithin(x, y)) {
                    const double contrast = contrastOf(with.pixel(x, y), without.pixel(x, y));
                    least = least == 0 ? contrast : std::min(least, contrast);
                }
            }
        }
        return least;
    }
};

TEST_F(Contrast, OfEveryTextIsFourAndAHalfAndOfEverySymbolAndSwitchThree) {
    desktop.accessibility.isTrusted = false;
    makeReminderDue();
    for (const MenuTab tab : {MenuTab::shortcuts, MenuTab::apps}) {
        make(tab);
        state->setRules({{"org.example.Editor", WindowAction::center}});
        settle();
        draw(1);
        for (const bool isDark : {false, true}) {
            setDark(isDark);
            expectContrast("Label", "text", 4.5);
            expectContrast("Symbol", "name", 3);
            expectContrastOfSwitches();
        }
        item.reset();
    }
}

TEST_F(Contrast, HoldsUnderThePointerAndAPressedButton) {
    desktop.accessibility.isTrusted = false;
    makeReminderDue();
    for (const MenuTab tab : {MenuTab::shortcuts, MenuTab::apps}) {
        make(tab);
        state->setRules({{"org.example.Editor", WindowAction::center}});
        settle();
        draw(1);
        const std::vector<QQuickItem*> rows = shownOf(*item, "AppRuleRow");
        for (QQuickItem* row : rows) {
            row->setProperty("hovering", true);
        }
        if (!rows.empty()) {
            expectContrastWithin(rows, "hovering");
        }
        std::vector<QQuickItem*> buttons = shownOfAll({"FooterRow", "PillButton", "TabButton"});
        if (tab == MenuTab::apps) {
            std::ranges::copy(shownOfAll({"MenuPicker", "AddAppMenu"}), std::back_inserter(buttons));
        }
        expectContrastWith("isHovered", buttons);
        for (QQuickItem* button : buttons) {
            // A press is with the pointer on it.
            button->setProperty("isHovered", true);
        }
        expectContrastWith("isPressed", buttons);
        item.reset();
    }
}

TEST_F(Contrast, OfTheFocusIsThree) {
    desktop.accessibility.isTrusted = false;
    makeReminderDue();
    for (const MenuTab tab : {MenuTab::shortcuts, MenuTab::apps}) {
        make(tab);
        state->setRules({{"org.example.Editor", WindowAction::center}});
        settle();
        draw(1);
        std::vector<QQuickItem*> rings = itemsOfType(*item, "FocusRing");
        // Those on the other tab, and of cards that are not there.
        std::erase_if(rings, [](const QQuickItem* ring) { return !ring->parentItem()->isVisible(); });
        ASSERT_GE(rings.size(), 6U);
        for (QQuickItem* ring : rings) {
            ring->setVisible(true);
        }
        for (const bool isDark : {false, true}) {
            setDark(isDark);
            expectContrast(rings, "", 3, "focus");
        }
        item.reset();
    }
}

TEST_F(Contrast, HoldsInEveryMenuWhicheverLineIsMarked) {
    desktop.accessibility.isTrusted = true;
    desktop.applications.add({.process = 10, .bundleIdentifier = "org.example.Mail", .localizedName = "Mail"});
    make(MenuTab::apps);
    state->setRules({{"org.example.Editor", WindowAction::center}});
    settle();
    draw(1);
    for (QQuickItem* button : shownOfAll({"MenuPicker", "AddAppMenu"})) {
        press(*button);
        draw(1);
        QQuickItem& menu = openMenu();
        const int lines = menu.property("count").toInt();
        ASSERT_GE(lines, 4);
        for (int line = -1; line < lines; ++line) {
            menu.setProperty("currentIndex", line);
            expectContrastWithin({&menu}, "line " + std::to_string(line));
        }
        press(*button);
    }
}

TEST_F(Contrast, HoldsInEveryTip) {
    for (const WindowAction action : WindowAction::menuOrder) {
        desktop.hotKeyEvents.refuse(action.shortcut().keyCode, action.shortcut().modifiers);
    }
    desktop.accessibility.isTrusted = true;
    make();
    draw(1);
    std::size_t tips = 0;
    for (QQuickItem* bubble : window.contentItem()->childItems()) {
        // A tip is made when it is shown.
        if (bubble->z() == 1000 && bubble->setProperty("active", true) && bubble->width() > 20) {
            expectContrastWithin({bubble}, "tip");
            ++tips;
        }
        bubble->setProperty("active", false);
    }
    // Of every shortcut, and of the switch.
    EXPECT_GT(tips, WindowAction::menuOrder.size());
}

TEST_F(Contrast, HoldsInTheChooser) {
    makeChooser();
    for (int row = 1; row < 5; ++row) {
        applications->toggle(row);
    }
    draw(1);
    const std::vector<QQuickItem*> rows = shownOf(*item, "ApplicationRow");
    ASSERT_GE(rows.size(), 6U);
    rows[1]->setProperty("isHovered", true);
    rows[2]->setProperty("isCurrent", true);
    rows[2]->setProperty("hasKeyboard", true);
    rows[5]->setProperty("isHovered", true);
    QQuickItem& field = only("SearchField");
    const std::vector<QQuickItem*> shown{rows[0], rows[1], rows[2], rows[3], rows[5], &field};
    expectContrastWithin(shown, "chooser");
    for (const char* property : {"isHovered", "isPressed"}) {
        expectContrastWith(property, shownOf(*item, "PillButton"));
    }
    field.setProperty("text", "HEH");
    expectContrastWithin({shownOf(field, "Symbol").at(1)->parentItem()}, "with a text");
    for (const bool isDark : {false, true}) {
        setDark(isDark);
        for (QQuickItem* part : field.findChildren<QQuickItem*>()) {
            if (part->inherits("QQuickTextInput")) {
                expectContrast({part}, "text", 4.5);
            }
        }
        expectContrast("ScrollMark", "", 3);
    }
    applications->setSearchText("nothing of that name");
    draw(1);
    // One cannot press the button now, and nobody has to read it: the same guidelines leave it out.
    std::vector<QQuickItem*> labels = shownOf(*item, "Label");
    std::erase_if(labels, [](const QQuickItem* label) { return !label->isEnabled(); });
    for (const bool isDark : {false, true}) {
        setDark(isDark);
        expectContrast(labels, "text", 4.5, "nothing found");
    }
}

TEST_F(Contrast, OfTheScrollMarkIsThree) {
    make(MenuTab::apps);
    giveManyRules();
    for (const bool isDark : {false, true}) {
        setDark(isDark);
        expectContrast("ScrollMark", "", 3);
    }
}

TEST_F(Contrast, OfTheDotIsThreeInEveryStatus) {
    make();
    for (const bool isTrusted : {false, true}) {
        for (const bool isEnabled : {false, true}) {
            desktop.accessibility.isTrusted = isTrusted;
            state->setHasAccessibility(isTrusted);
            state->setEnabled(isEnabled);
            settle();
            std::vector<QQuickItem*> dots;
            for (QQuickItem* part : only("MenuHeader").findChildren<QQuickItem*>()) {
                if (part->width() == 7 && part->height() == 7) {
                    dots.push_back(part);
                }
            }
            ASSERT_EQ(dots.size(), 1U);
            for (const bool isDark : {false, true}) {
                setDark(isDark);
                EXPECT_GE(contrastsOf(dots).front(), 3)
                    << only("MenuHeader").property("status").toString().toStdString();
            }
        }
    }
}

} // namespace
} // namespace tessel
