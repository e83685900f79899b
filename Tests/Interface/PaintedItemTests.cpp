#include "CorvidKit/Components/PaintedItem.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QPainter>
#include <QQuickWindow>

namespace corvid {
namespace {

/// Counts how often it is painted.
class CountedItem : public PaintedItem {
public:
    using PaintedItem::PaintedItem;

    void paint(QPainter* /*painter*/) override { ++count; }

    int count = 0;
};

class PaintedItemInAWindow : public testing::Test {
protected:
    void SetUp() override {
        holder.setParentItem(window.contentItem());
        item.setParentItem(&holder);
        item.setSize({10, 10});
        window.resize(20, 20);
        window.show();
    }

    /// How often the item has been painted by the time that the window is drawn.
    int painted() {
        QCoreApplication::processEvents();
        EXPECT_FALSE(window.grabWindow().isNull());
        return item.count;
    }

    QQuickWindow window;
    QQuickItem holder;
    CountedItem item;
};

TEST_F(PaintedItemInAWindow, IsNotPaintedBeforeItCanBeSeen) {
    holder.setVisible(false);
    EXPECT_EQ(painted(), 0);
    holder.setVisible(true);
    EXPECT_EQ(painted(), 1);
}

TEST_F(PaintedItemInAWindow, IsPaintedAgainOnlyIfItHasChangedMeanwhile) {
    EXPECT_EQ(painted(), 1);
    item.setVisible(false);
    EXPECT_EQ(painted(), 1);
    item.setVisible(true);
    EXPECT_EQ(painted(), 1);
    item.setVisible(false);
    item.update();
    EXPECT_EQ(painted(), 1);
    item.setVisible(true);
    EXPECT_EQ(painted(), 2);
}

} // namespace
} // namespace corvid
