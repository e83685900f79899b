#include "CorvidKitCore/Geometry.h"
#include "Tests/CorvidKitCore/Printing.h"
#include "Tests/CorvidKitCore/SpecialNumbers.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using corvid::CGRect;
using corvid::infinity;
using corvid::nan;

TEST(Geometry, EdgesAndMiddlesFollowFromOriginAndSize) {
    const CGRect rect{{10, 20}, {100, 51}};
    EXPECT_EQ(rect.minX(), 10);
    EXPECT_EQ(rect.midX(), 60);
    EXPECT_EQ(rect.maxX(), 110);
    EXPECT_EQ(rect.minY(), 20);
    EXPECT_EQ(rect.midY(), 45.5);
    EXPECT_EQ(rect.maxY(), 71);
}

TEST(Geometry, ANegativeSizeCountsAsItsAbsoluteValue) {
    const CGRect rect{{110, 71}, {-100, -51}};
    EXPECT_EQ(rect.width(), 100);
    EXPECT_EQ(rect.height(), 51);
    EXPECT_EQ(rect.minX(), 10);
    EXPECT_EQ(rect.midX(), 60);
    EXPECT_EQ(rect.maxX(), 110);
    EXPECT_EQ(rect.minY(), 20);
    EXPECT_EQ(rect.midY(), 45.5);
    EXPECT_EQ(rect.maxY(), 71);
}

TEST(Geometry, IntersectionIsTheCommonPart) {
    const CGRect a{{0, 0}, {100, 100}};
    EXPECT_EQ(intersection(a, CGRect{{60, -10}, {100, 50}}), (CGRect{{60, 0}, {40, 40}}));
    EXPECT_EQ(intersection(a, CGRect{{10, 20}, {30, 40}}), (CGRect{{10, 20}, {30, 40}}));
    EXPECT_EQ(intersection(a, CGRect{{160, 40}, {-100, -50}}), (CGRect{{60, 0}, {40, 40}}));
}

TEST(Geometry, RectanglesThatOnlyTouchShareAnEdge) {
    const CGRect a{{0, 0}, {100, 100}};
    EXPECT_EQ(intersection(a, CGRect{{100, 0}, {50, 100}}), (CGRect{{100, 0}, {0, 100}}));
    EXPECT_EQ(intersection(a, CGRect{{100, 100}, {50, 50}}), (CGRect{{100, 100}, {0, 0}}));
}

TEST(Geometry, RectanglesApartHaveNoIntersection) {
    const CGRect a{{0, 0}, {100, 100}};
    EXPECT_EQ(intersection(a, CGRect{{100.5, 0}, {50, 100}}), std::nullopt);
    EXPECT_EQ(intersection(a, CGRect{{0, -60}, {50, 50}}), std::nullopt);
}

TEST(Geometry, NothingIntersectsARectangleWithANaN) {
    const CGRect whole{{0, 0}, {100, 100}};
    for (const CGRect& broken : {CGRect{{nan, 0}, {10, 10}}, CGRect{{0, nan}, {10, 10}}, CGRect{{0, 0}, {nan, 10}},
                                 CGRect{{0, 0}, {10, nan}}, CGRect{{-infinity, 0}, {infinity, 10}}}) {
        EXPECT_EQ(intersection(whole, broken), std::nullopt) << broken;
        EXPECT_EQ(intersection(broken, whole), std::nullopt) << broken;
    }
}

TEST(Geometry, AnEndlessRectangleIntersectsInTheOtherOne) {
    const CGRect a{{0, 0}, {100, 100}};
    EXPECT_EQ(intersection(CGRect{{50, 50}, {infinity, infinity}}, a), (CGRect{{50, 50}, {50, 50}}));
}

} // namespace
