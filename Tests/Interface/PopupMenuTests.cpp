#include "CorvidKit/Components/Environment.h"

#include <gtest/gtest.h>

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <memory>
#include <string>

namespace corvid {
namespace {

constexpr int count = 40;

QQuickItem* firstOfType(const QQuickItem& root, const std::string& type) {
    for (QQuickItem* child : root.childItems()) {
        if (std::string(child->metaObject()->className()).starts_with(type + "_QML")) {
            return child;
        }
        if (QQuickItem* deeper = firstOfType(*child, type)) {
            return deeper;
        }
    }
    return nullptr;
}

/// A menu that is longer than its window.
class LongMenu : public testing::Test {
protected:
    void SetUp() override {
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        QQmlComponent component(&engine);
        component.setData(R"(
            import QtQuick
            import CorvidKit
            Item {
                id: opener
                function open() { menu.open(opener) }
                PopupMenu {
                    id: menu
                    title: "Lines"
                    entries: Array.from({ length: 40 }, (_, index) => ({ title: `Line ${index}`, action: () => {} }))
                }
            }
        )",
                          QUrl());
        opener.reset(qobject_cast<QQuickItem*>(component.create()));
        ASSERT_TRUE(opener) << component.errorString().toStdString();
        window.resize(300, 300);
        opener->setParentItem(window.contentItem());
        opener->setSize({100, 20});
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }

    /// Opens it as the keyboard or the pointer does.
    void open(bool isUsingKeyboard) {
        Environment::of(engine).setUsingKeyboard(isUsingKeyboard);
        QMetaObject::invokeMethod(opener.get(), "open");
        list = firstOfType(*window.contentItem(), "MenuList");
        ASSERT_NE(list, nullptr);
        draw();
    }

    /// Creates the lines and reports the pointer's position, which happens when a frame is drawn.
    void draw() { window.grabWindow(); }

    void press(Qt::Key key) {
        QTest::keyClick(&window, key);
        draw();
    }

    [[nodiscard]] int current() const { return list->property("currentIndex").toInt(); }

    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QQuickItem> opener;
    QQuickItem* list = nullptr;
};

TEST_F(LongMenu, APointerThatRestsOnItDoesNotDisturbTheKeys) {
    QTest::mouseMove(&window, {60, 150});
    open(true);
    EXPECT_EQ(current(), 0);
    QTest::mouseMove(&window, {60, 151});
    QTest::mouseMove(&window, {60, 152});
    const int pointedAt = current();
    EXPECT_GT(pointedAt, 0) << "it follows the pointer as it moves";
    press(Qt::Key_End);
    EXPECT_EQ(current(), count - 1);
    press(Qt::Key_Up);
    EXPECT_EQ(current(), count - 2);
    press(Qt::Key_Home);
    EXPECT_EQ(current(), 0);
    for (int line = 1; line < count; ++line) {
        press(Qt::Key_Down);
        ASSERT_EQ(current(), line);
    }
    QTest::mouseMove(&window, {60, 153});
    EXPECT_LT(current(), count - 1) << "it follows the pointer again";
}

TEST_F(LongMenu, OpenedWithThePointerItFollowsItAtOnce) {
    QTest::mouseMove(&window, {60, 10});
    open(false);
    EXPECT_EQ(current(), -1);
    QTest::mouseMove(&window, {60, 150});
    EXPECT_GT(current(), 0);
}

} // namespace
} // namespace corvid
