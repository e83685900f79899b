#include "CorvidKit/Toolkit/Translations.h"
#include "Tests/Interface/DrawnView.h"

#include <gtest/gtest.h>

#include <QTest>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

namespace tessel {
namespace {

/// The two lists with more rows than fit, and what a hand does to them.
class Scrolling : public DrawnView {
protected:
    static constexpr double scale = 2;

    void useRules() {
        make(MenuTab::apps);
        giveManyRules();
        list = &only("AppRuleList");
        rowType = "AppRuleRow";
    }

    void useChooser() {
        makeChooser();
        list = shownOf(*item, "RowList").empty() ? nullptr : shownOf(*item, "RowList").front();
        rowType = "ApplicationRow";
        ASSERT_NE(list, nullptr);
    }

    void wheel(QPoint pixels, QPoint notches, Qt::ScrollPhase phase) {
        const QPointF place = list->mapToScene({60, 60});
        // Qt takes distances in pixels from touchpads only, and those come from the system's own gestures.
        QWheelEvent event(place, place, pixels, notches, Qt::NoButton, Qt::NoModifier, phase, false,
                          pixels.isNull() ? Qt::MouseEventNotSynthesized : Qt::MouseEventSynthesizedBySystem);
        event.setTimestamp(milliseconds += 16);
        QCoreApplication::sendEvent(&window, &event);
    }

    /// Two fingers, up to where they are lifted.
    void moveFingers(int down) {
        wheel({0, -1}, {0, -1}, Qt::ScrollBegin);
        for (int step = 0; step < down; ++step) {
            wheel({0, -1}, {0, -1}, Qt::ScrollUpdate);
        }
    }

    void waitForRest() {
        ASSERT_TRUE(QTest::qWaitFor([this] { return !list->property("isInMotion").toBool(); }));
        draw(1);
    }

    [[nodiscard]] double position() const { return list->property("contentY").toDouble(); }

    /// Letters of all heights, also of scripts without capitals.
    void writeTallLetters() {
        for (QQuickItem* row : shownOf(*list, rowType)) {
            shownOf(*row, "Label").at(0)->setProperty("text", QStringLiteral("HlÄg漢字가"));
        }
    }

    /// That what is to be seen of each row's letters is all of them or nothing.
    void expectWholeLetters(const std::string& when, double pixels = scale) {
        writeTallLetters();
        const QRectF view = placeOf(*list);
        std::vector<QQuickItem*> labels;
        for (QQuickItem* row : shownOf(*list, rowType)) {
            if (placeOf(*row).intersects(view)) {
                labels.push_back(shownOf(*row, "Label").at(0));
            }
        }
        ASSERT_GE(labels.size(), 4U) << when;
        const std::vector<QRectF> inks = inkOf(labels, pixels);
        double whole = 0;
        for (const QRectF& ink : inks) {
            whole = std::max(whole, ink.height());
        }
        EXPECT_GT(whole, 8) << when;
        for (std::size_t index = 0; index < inks.size(); ++index) {
            // The soft edge of an accent may colour one line of pixels.
            EXPECT_TRUE(inks[index].height() <= 1 / pixels || inks[index].height() > whole - 0.5)
                << when << ": " << inks[index].height() << " of " << whole << " in row at "
                << placeOf(*labels[index]->parentItem()).top() - view.top();
        }
    }

    /// Where there is more below, the next row peeks out.
    void expectPeek(const std::string& when) {
        const double rowHeight = list->property("rowHeight").toDouble();
        const double shown = std::fmod(position() + list->height(), rowHeight);
        EXPECT_GT(shown, 5) << when;
        EXPECT_LT(shown, rowHeight / 2) << when;
    }

    void expectRestAtRows() {
        expectWholeLetters("at the start");
        expectPeek("at the start");
        const double rowHeight = list->property("rowHeight").toDouble();
        for (const int down : {40, 77, 131}) {
            moveFingers(down);
            wheel({}, {}, Qt::ScrollEnd);
            waitForRest();
            EXPECT_GT(position(), 0);
            EXPECT_EQ(std::fmod(position(), rowHeight), 0) << "after fingers";
            expectWholeLetters("after fingers");
            expectPeek("after fingers");
        }
        const double before = position();
        wheel({}, {0, -120}, Qt::NoScrollPhase);
        waitForRest();
        EXPECT_GT(position(), before);
        expectWholeLetters("after a wheel");
        expectPeek("after a wheel");
        for (const int row : {25, 3, 12, 0, 39}) {
            QMetaObject::invokeMethod(list, "reveal", Q_ARG(int, row));
            draw(1);
            const double top = row * rowHeight - position();
            EXPECT_GE(top, 0) << row;
            EXPECT_LE(top + rowHeight, list->height()) << row;
            expectWholeLetters("at row " + std::to_string(row));
        }
        EXPECT_EQ(position() + list->height(), 40 * rowHeight + list->property("peek").toDouble()) << "the end";
        moveFingers(100);
        wheel({}, {}, Qt::ScrollEnd);
        waitForRest();
        expectWholeLetters("at the end");
    }

    /// How far from the ground the colours are in the first and the last line of pixels of the list, beside its mark.
    std::vector<int> coloursAtTheEdges() {
        const QImage picture = draw(scale);
        const QRect view = QRectF(placeOf(*list).topLeft() * scale, placeOf(*list).size() * scale).toRect();
        std::vector<int> most;
        for (const int y : {view.top(), view.bottom()}) {
            int& here = most.emplace_back(0);
            const QColor ground = picture.pixelColor(view.left() + 4, y);
            for (int x = view.left() + 4; x < view.right() - 14; ++x) {
                const QColor pixel = picture.pixelColor(x, y);
                here = std::max({here, std::abs(pixel.red() - ground.red()), std::abs(pixel.green() - ground.green()),
                                 std::abs(pixel.blue() - ground.blue())});
            }
        }
        return most;
    }

    /// That letters fade at the edges that they cross.
    void expectFadeInMotion() {
        const double rowHeight = list->property("rowHeight").toDouble();
        const double peek = list->property("peek").toDouble();
        // The middle of one row's letters at the top, then of another's at the bottom.
        for (const bool isTop : {true, false}) {
            const double down = 5 * rowHeight + (isTop ? rowHeight / 2 : rowHeight / 2 - peek);
            moveFingers(40);
            ASSERT_TRUE(list->property("isInMotion").toBool());
            list->setProperty("contentY", down);
            const std::vector<QQuickItem*> fades = itemsOfType(*list, "EdgeFade");
            ASSERT_EQ(fades.size(), 2U);
            ASSERT_TRUE(QTest::qWaitFor([&] {
                return std::ranges::all_of(fades, [](const QQuickItem* fade) { return fade->opacity() == 1; });
            }));
            writeTallLetters();
            const std::size_t edge = isTop ? 0 : 1;
            EXPECT_LT(coloursAtTheEdges()[edge], 24) << isTop;
            for (QQuickItem* fade : fades) {
                fade->setVisible(false);
            }
            EXPECT_GT(coloursAtTheEdges()[edge], 90) << "what would be cut there";
            for (QQuickItem* fade : fades) {
                fade->setVisible(true);
            }
            wheel({}, {}, Qt::ScrollEnd);
            waitForRest();
        }
    }

    QQuickItem* list = nullptr;
    std::string rowType;
    quint64 milliseconds = 1000;
};

TEST_F(Scrolling, OfTheRulesEndsWhereNoRowIsCutThroughItsLetters) {
    useRules();
    expectRestAtRows();
}

TEST_F(Scrolling, OfTheChooserEndsWhereNoRowIsCutThroughItsLetters) {
    useChooser();
    expectRestAtRows();
}

TEST_F(Scrolling, OfTheRulesFadesTheRowsAtItsEdges) {
    useRules();
    expectFadeInMotion();
}

TEST_F(Scrolling, OfTheChooserFadesTheRowsAtItsEdges) {
    useChooser();
    expectFadeInMotion();
}

TEST_F(Scrolling, CutsNoLettersInAnyLanguage) {
    for (const char* language : {"en", "de", "fr", "es", "it", "pt_BR", "ja", "ko", "zh_CN"}) {
        const auto translators = corvid::toolkit::loadTranslations({language});
        useRules();
        expectWholeLetters(language, 1);
        expectPeek(language);
        QMetaObject::invokeMethod(list, "reveal", Q_ARG(int, 20));
        expectWholeLetters(language, 1);
        expectPeek(language);
        item.reset();
    }
}

TEST_F(Scrolling, CutsNoLettersInAChooserOfAnyHeight) {
    useChooser();
    for (const int height : {240, 251, 300, 474, 475, 700}) {
        item->setHeight(height);
        draw(1);
        expectWholeLetters(std::to_string(height));
        expectPeek(std::to_string(height));
        EXPECT_LE(placeOf(*list).bottom(), placeOf(*shownOf(*item, "PillButton").at(0)).top());
    }
}

} // namespace
} // namespace tessel
