#include "CorvidKit/Components/Environment.h"
#include "CorvidKit/Toolkit/PopoverWindow.h"
#include "Platform/Seam/Desktop/HostedLoop.h"
#include "Platform/Simulated/Desktop.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QQmlEngine>
#include <QTest>
#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace corvid::toolkit {
namespace {

using Anchor = platform::Popover::Anchor;
using Edge = platform::Popover::Edge;

class NoLoop final : public platform::HostedLoop {
public:
    [[nodiscard]] int descriptor() const override { return -1; }

    [[nodiscard]] Outlook serve() override { return Outlook::idle; }
};

class Hanging : public testing::Test {
protected:
    void SetUp() override {
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        popover.setContentView(std::make_shared<platform::View>());
        popover.setBehavior(platform::Popover::Behavior::transient);
    }

    void open() {
        popover.show({.rect = CGRect{{500, 1070}, {0, 0}}, .isAtPointer = true}, Edge::minY);
        popover.makeKey();
        QCoreApplication::processEvents();
    }

    /// The one window that is shown.
    static QQuickWindow* window() {
        for (QWindow* each : QGuiApplication::topLevelWindows()) {
            if (each->isVisible()) {
                return qobject_cast<QQuickWindow*>(each);
            }
        }
        return nullptr;
    }

    bool wasAsked(const std::string& what) {
        return std::ranges::any_of(desktop.trace.lines(),
                                   [&](const std::string& line) { return line.starts_with(what); });
    }

    static std::unique_ptr<QQuickItem> makeContent(QSizeF size) {
        auto item = std::make_unique<QQuickItem>();
        item->setImplicitWidth(size.width());
        item->setImplicitHeight(size.height());
        return item;
    }

    platform::simulated::Desktop desktop;
    NoLoop loop;
    QQmlEngine engine;
    QQuickItem* content = nullptr;
    int made = 0;
    /// Runs while the content is made.
    std::function<void()> meanwhile;
    PopoverWindow popover{
        {.mainLoop = loop,
         .mainActor = desktop.mainActor,
         .appearance = desktop.appearance,
         .ownWindows = &desktop.ownWindows,
         .screens = desktop.screens,
         .sessionLock = &desktop.sessionLock,
         .languages = {}},
        engine,
        [this](const platform::View& /*view*/, QQmlEngine& /*engine*/, const PopoverWindow* /*popover*/) {
            ++made;
            if (meanwhile) {
                meanwhile();
            }
            auto item = makeContent({300, 200});
            content = item.get();
            return item;
        }};
};

TEST_F(Hanging, MakesNothingBeforeItIsFirstShown) {
    EXPECT_TRUE(popover.hasContentView());
    EXPECT_FALSE(popover.isShown());
    EXPECT_EQ(made, 0);
    open();
    EXPECT_TRUE(popover.isShown());
    EXPECT_EQ(made, 1);
}

TEST_F(Hanging, KeepsWhatItMadeForTheNextTime) {
    open();
    popover.performClose();
    EXPECT_FALSE(popover.isShown());
    open();
    EXPECT_TRUE(popover.isShown());
    EXPECT_EQ(made, 1);
}

TEST_F(Hanging, IsAsLargeAsItsContentAndItsShadow) {
    open();
    ASSERT_NE(window(), nullptr);
    EXPECT_EQ(window()->size(), QSize(340, 240)) << "20 points of shadow on each side";
    content->setImplicitHeight(100);
    EXPECT_EQ(window()->size(), QSize(340, 140));
}

TEST_F(Hanging, HasNoShadowWhereNothingShinesThrough) {
    desktop.ownWindows.hasCompositor = false;
    open();
    ASSERT_NE(window(), nullptr);
    EXPECT_EQ(window()->size(), QSize(300, 200));
}

TEST_F(Hanging, OnALowScreenItScrollsToWhatHasTheKeyboard) {
    desktop.screens.attach({{.frame = {{0, 0}, {1920, 180}}, .visibleFrame = {{0, 0}, {1920, 156}}}});
    open();
    ASSERT_NE(window(), nullptr);
    EXPECT_EQ(window()->size(), QSize(340, 184)) << "156 without 6 above and below, and the shadow";
    EXPECT_EQ(content->size(), QSizeF(300, 200)) << "nothing of it is squeezed";
    const auto topOf = [](QQuickItem* item) { return item->mapToScene(QPointF()).y(); };
    EXPECT_EQ(topOf(content), 20);
    QQuickItem first(content);
    first.setSize({300, 20});
    QQuickItem last(content);
    last.setPosition({0, 170});
    last.setSize({300, 20});
    last.forceActiveFocus();
    EXPECT_EQ(topOf(content), 20 - (200 - 144)) << "its end is to be seen";
    first.forceActiveFocus();
    EXPECT_EQ(topOf(content), 20);
    last.forceActiveFocus();
    popover.performClose();
    open();
    EXPECT_EQ(topOf(content), 20) << "it opens at its beginning";
    desktop.screens.attach({{.frame = {{0, 0}, {1920, 1080}}, .visibleFrame = {{0, 0}, {1920, 1056}}}});
    popover.performClose();
    open();
    EXPECT_EQ(window()->size(), QSize(340, 240));
}

TEST_F(Hanging, IsPlacedHoweverLongItsContentTakesToMake) {
    desktop.screens.attach({{.frame = {{0, 0}, {1920, 1080}}, .visibleFrame = {{0, 0}, {1920, 1056}}}});
    // The desktop answers no more requests in this turn.
    meanwhile = [this] {
        desktop.screens.attach({});
        desktop.ownWindows.hasCompositor = false;
    };
    open();
    ASSERT_NE(window(), nullptr);
    EXPECT_EQ(window()->size(), QSize(340, 240));
    EXPECT_TRUE(wasAsked("place window " + std::to_string(window()->winId()) + " at (330, 10)"))
        << testing::PrintToString(desktop.trace.lines());
}

TEST_F(Hanging, IsPlacedBelowItsAnchorAndGivenTheKeyboard) {
    desktop.screens.attach({{.frame = {{0, 0}, {1920, 1080}}, .visibleFrame = {{0, 0}, {1920, 1056}}}});
    open();
    // The plate's left edge is at 350, its upper one 6 below the visible frame's, 30 from the top; the shadow goes 20
    // beyond.
    EXPECT_TRUE(wasAsked("place window " + std::to_string(window()->winId()) + " at (330, 10)"))
        << testing::PrintToString(desktop.trace.lines());
    EXPECT_TRUE(wasAsked("give window"));
}

TEST_F(Hanging, APressBesideItClosesIt) {
    open();
    QTest::mouseClick(window(), Qt::LeftButton, {}, QPoint(100, 100));
    EXPECT_TRUE(popover.isShown());
    QTest::mousePress(window(), Qt::LeftButton, {}, QPoint(5, 100));
    EXPECT_FALSE(popover.isShown()) << "on the shadow";
    open();
    QTest::mousePress(window(), Qt::LeftButton, {}, QPoint(-500, 700));
    EXPECT_FALSE(popover.isShown()) << "far away";
}

TEST_F(Hanging, ALockOfTheSessionClosesItAndIsWatchedForOnlyWhileItIsOpen) {
    EXPECT_FALSE(desktop.sessionLock.isWatched());
    open();
    EXPECT_TRUE(desktop.sessionLock.isWatched());
    desktop.sessionLock.lock();
    EXPECT_FALSE(popover.isShown());
    EXPECT_FALSE(desktop.sessionLock.isWatched());
    open();
    EXPECT_TRUE(popover.isShown()) << "it opens again";
    popover.performClose();
    EXPECT_FALSE(desktop.sessionLock.isWatched());
}

TEST_F(Hanging, ComesWithATransitionUnlessItsUserWantsLessMotion) {
    popover.setAnimates(true);
    // The content is in a scrolling holder on the plate.
    const auto plate = [this] { return content->parentItem()->parentItem()->parentItem(); };
    open();
    EXPECT_LT(plate()->opacity(), 1) << "it is there at once";
    EXPECT_TRUE(QTest::qWaitFor([&] { return plate()->opacity() == 1; }));
    popover.performClose();
    Environment::of(engine).setReducesMotion(true);
    open();
    EXPECT_EQ(plate()->opacity(), 1);
    popover.performClose();
    Environment::of(engine).setReducesMotion(false);
    popover.setAnimates(false);
    open();
    EXPECT_EQ(plate()->opacity(), 1);
}

TEST_F(Hanging, EscapeClosesIt) {
    open();
    QTest::keyClick(window(), Qt::Key_Escape);
    EXPECT_FALSE(popover.isShown());
}

TEST_F(Hanging, ShowingItTwiceIsShowingItOnce) {
    open();
    desktop.trace.clear();
    popover.show({}, Edge::minY);
    EXPECT_FALSE(wasAsked("place window"));
}

TEST_F(Hanging, AnotherViewTakesThePlaceOfTheFirst) {
    open();
    popover.setContentView(std::make_shared<platform::View>());
    EXPECT_FALSE(popover.isShown());
    open();
    EXPECT_EQ(made, 2);
}

class HangingOnWayland : public Hanging {
protected:
    void SetUp() override {
        Hanging::SetUp();
        desktop.ownWindows.spoken = platform::OwnWindows::Protocol::wayland;
        desktop.screens.attach({{.frame = {{0, 0}, {1920, 1080}}, .visibleFrame = {{0, 0}, {1920, 1056}}}});
    }

    /// Opens it with the keyboard focus that its compositor assigns.
    void openWithKeyboard() {
        open();
        ASSERT_NE(window(), nullptr);
        window()->requestActivate();
        QCoreApplication::processEvents();
        ASSERT_TRUE(window()->isActive());
    }

    /// Another program takes the keyboard focus; our windows get no further event.
    void loseKeyboard() {
        desktop.ownWindows.keyboardOwner.reset();
        QWindow other;
        other.show();
        other.requestActivate();
        QCoreApplication::processEvents();
    }
};

TEST_F(HangingOnWayland, IsPlacedByItsTitleBeforeItIsShownAndWhenItGrows) {
    open();
    ASSERT_NE(window(), nullptr);
    EXPECT_EQ(window()->flags() & Qt::BypassWindowManagerHint, 0);
    EXPECT_EQ(window()->size(), QSize(340, 240));
    EXPECT_EQ(window()->maximumSize(), QSize(340, 240)) << "or it would be tiled";
    const std::string title = window()->title().toStdString();
    EXPECT_TRUE(wasAsked("place window " + title + " at (330, 10)")) << testing::PrintToString(desktop.trace.lines());
    desktop.trace.clear();
    content->setImplicitWidth(400);
    EXPECT_EQ(window()->size(), QSize(440, 240));
    EXPECT_TRUE(wasAsked("place window " + title + " at (280, 10)")) << testing::PrintToString(desktop.trace.lines());
}

TEST_F(HangingOnWayland, WithoutAPointerItGoesToTheScreenThatIsWorkedOn) {
    desktop.screens.attach({{.frame = {{0, 0}, {1920, 1080}}, .visibleFrame = {{0, 0}, {1920, 1056}}},
                            {.frame = {{1920, 56}, {1280, 1024}}, .visibleFrame = {{1920, 56}, {1280, 1024}}}});
    desktop.ownWindows.pointerPosition.reset();
    desktop.ownWindows.activeScreenFrame = CGRect{{1920, 56}, {1280, 1024}};
    popover.show({.rect = std::nullopt, .isAtPointer = true}, Edge::minY);
    // 6 from the right edge, 300 wide, with 20 of shadow; 6 from the upper edge.
    EXPECT_TRUE(wasAsked("place window " + window()->title().toStdString() + " at (2874, -14)"))
        << testing::PrintToString(desktop.trace.lines());
    popover.performClose();
    desktop.ownWindows.activeScreenFrame.reset();
    desktop.trace.clear();
    popover.show({.rect = std::nullopt, .isAtPointer = true}, Edge::minY);
    EXPECT_TRUE(wasAsked("place window " + window()->title().toStdString() + " at (1594, 10)"))
        << testing::PrintToString(desktop.trace.lines());
}

TEST_F(HangingOnWayland, LosingTheKeyboardClosesIt) {
    openWithKeyboard();
    loseKeyboard();
    EXPECT_FALSE(popover.isShown());
}

TEST_F(HangingOnWayland, LosingTheKeyboardBeforeTheToolkitHasNoticedClosesIt) {
    openWithKeyboard();
    desktop.mainActor.advance(std::chrono::milliseconds(1500));
    EXPECT_TRUE(popover.isShown());
    desktop.ownWindows.keyboardOwner.reset();
    EXPECT_TRUE(window()->isActive()) << "as far as the toolkit knows";
    desktop.mainActor.advance(std::chrono::seconds(1));
    EXPECT_FALSE(popover.isShown());
}

TEST_F(HangingOnWayland, OneThatIsNotDrawnYetIsWaitedFor) {
    open();
    desktop.ownWindows.keyboardOwner.reset();
    desktop.mainActor.advance(std::chrono::milliseconds(800));
    EXPECT_TRUE(popover.isShown()) << "it is about to get the keyboard";
}

TEST_F(HangingOnWayland, TheClickWhosePressHasClosedItDoesNotOpenItAgain) {
    openWithKeyboard();
    loseKeyboard();
    desktop.mainActor.advance(std::chrono::milliseconds(200));
    open();
    EXPECT_FALSE(popover.isShown());
    desktop.mainActor.advance(std::chrono::milliseconds(200));
    open();
    EXPECT_TRUE(popover.isShown());
    QTest::keyClick(window(), Qt::Key_Escape);
    EXPECT_FALSE(popover.isShown());
    open();
    EXPECT_TRUE(popover.isShown()) << "a popover that its user has closed can be opened at once";
}

TEST_F(Hanging, WithoutAScreenItStaysWhereItIs) {
    desktop.screens.attach({});
    open();
    EXPECT_TRUE(popover.isShown());
    EXPECT_FALSE(wasAsked("place window"));
}

} // namespace
} // namespace corvid::toolkit
