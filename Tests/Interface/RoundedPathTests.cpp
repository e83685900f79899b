#include "CorvidKit/Components/RoundedPath.h"

#include <gtest/gtest.h>

namespace corvid {
namespace {

constexpr QRectF bounds(10, 20, 200, 100);

TEST(RoundedPath, StaysWithinItsBoundsAndTouchesEachSide) {
    for (const bool isContinuous : {false, true}) {
        for (const qreal radius : {0.0, 1.0, 12.0, 49.0, 50.0, 1000.0}) {
            const QRectF covered = roundedPath(bounds, radius, isContinuous).boundingRect();
            EXPECT_NEAR(covered.left(), bounds.left(), 1e-9) << radius;
            EXPECT_NEAR(covered.top(), bounds.top(), 1e-9) << radius;
            EXPECT_NEAR(covered.right(), bounds.right(), 1e-9) << radius;
            EXPECT_NEAR(covered.bottom(), bounds.bottom(), 1e-9) << radius;
        }
    }
}

TEST(RoundedPath, LeavesTheCornersOut) {
    for (const bool isContinuous : {false, true}) {
        const QPainterPath path = roundedPath(bounds, 12, isContinuous);
        EXPECT_TRUE(path.contains(bounds.center()));
        EXPECT_TRUE(path.contains(QPointF(14.5, 24.5))) << "within the arc";
        for (const QPointF corner : {bounds.topLeft() + QPointF(1, 1), bounds.topRight() + QPointF(-1, 1),
                                     bounds.bottomLeft() + QPointF(1, -1), bounds.bottomRight() + QPointF(-1, -1)}) {
            EXPECT_FALSE(path.contains(corner)) << corner.x() << " " << corner.y();
        }
    }
}

TEST(RoundedPath, IsACircleWhereTheRadiusIsHalfTheSide) {
    const QPainterPath continuous = roundedPath(QRectF(0, 0, 100, 100), 50, true);
    const QPainterPath circle = roundedPath(QRectF(0, 0, 100, 100), 50, false);
    for (int step = 0; step < 100; ++step) {
        const QPointF point = circle.pointAtPercent(step / 100.0) - QPointF(50, 50);
        EXPECT_TRUE(continuous.contains(QPointF(50, 50) + point * 0.98)) << step;
        EXPECT_FALSE(continuous.contains(QPointF(50, 50) + point * 1.02)) << step;
    }
}

} // namespace
} // namespace corvid
