#include "Platform/Linux/Tray/SymbolPicture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace platform::linux {
namespace {

ImageDescription describedSymbol(const char* name, bool isBadged = false) {
    return {.source = SystemSymbol{name}, .size = {18, 18}, .isBadged = isBadged, .accessibilityDescription = {}};
}

TEST(SymbolPicture, ThereIsOneForEveryStatusInEverySize) {
    for (const char* name : {"uiwindow.split.2x1", "rectangle.split.2x1", "exclamationmark.triangle.fill"}) {
        EXPECT_TRUE(isSymbol(name));
        std::vector<int> sizes;
        for (const SymbolPicture& picture : pictures(describedSymbol(name))) {
            sizes.push_back(picture.size);
            ASSERT_EQ(picture.alpha.size(), std::size_t{picture.size} * picture.size);
            const auto covered = std::ranges::count_if(picture.alpha, [](auto alpha) { return alpha > 127; });
            EXPECT_GT(covered, picture.alpha.size() / 10) << name << " at " << picture.size;
            EXPECT_LT(covered, picture.alpha.size() * 3 / 4) << name << " at " << picture.size;
        }
        EXPECT_EQ(sizes, (std::vector{16, 22, 24, 32, 44, 48, 64}));
    }
}

TEST(SymbolPicture, ThereIsNoneOfWhatIsNoSymbol) {
    EXPECT_FALSE(isSymbol(""));
    EXPECT_FALSE(isSymbol("no.such.symbol"));
    for (const ImageDescription& image :
         {describedSymbol("no.such.symbol"), describedSymbol(""),
          ImageDescription{.source = ThemeIcon{"uiwindow.split.2x1"}, .size = {}, .accessibilityDescription = {}}}) {
        EXPECT_TRUE(pictures(image).empty());
        EXPECT_EQ(pictureFor(image, 22), std::nullopt);
        EXPECT_EQ(symbolicIconName(image), "");
    }
}

TEST(SymbolPicture, TheLargestThatFitsIsTaken) {
    const std::vector<std::pair<std::uint16_t, int>> rows{{0, 16},  {15, 16}, {16, 16}, {21, 16},
                                                          {22, 22}, {40, 32}, {64, 64}, {1000, 64}};
    for (const auto& [room, expected] : rows) {
        EXPECT_EQ(pictureFor(describedSymbol("uiwindow.split.2x1"), room)->size, expected) << room;
    }
}

TEST(SymbolPicture, ItsIconIsNamedAfterItsSymbol) {
    EXPECT_EQ(symbolicIconName(describedSymbol("rectangle.split.2x1")),
              "org.corvid.Tessel.rectangle.split.2x1-symbolic");
    EXPECT_EQ(symbolicIconName(describedSymbol("rectangle.split.2x1", true)),
              "org.corvid.Tessel.rectangle.split.2x1.badged-symbolic");
}

TEST(SymbolBadge, IsADotInTheTopRightCornerWithAClearRingAroundIt) {
    for (const std::uint16_t size : std::vector<std::uint16_t>{16, 18, 22, 36, 64}) {
        const std::vector<std::uint8_t> full(std::size_t{size} * size, 200);
        const std::vector<std::uint8_t> result = badged(full, size);
        const double scale = size / 18.0;
        for (int row = 0; row < size; ++row) {
            for (int column = 0; column < size; ++column) {
                const double distance = std::hypot(column + 0.5 - (size - 2.5 * scale), row + 0.5 - 2.5 * scale);
                const int alpha = result[static_cast<std::size_t>(row) * size + static_cast<std::size_t>(column)];
                const auto where = testing::Message() << column << ", " << row << " of " << size;
                if (distance < 2.5 * scale - 1) {
                    EXPECT_EQ(alpha, 255) << where;
                } else if (distance > 2.5 * scale + 1 && distance < 4 * scale - 1) {
                    EXPECT_EQ(alpha, 0) << where;
                } else if (distance > 4 * scale + 1) {
                    EXPECT_EQ(alpha, 200) << where;
                }
            }
        }
    }
}

TEST(SymbolBadge, HasSmoothEdges) {
    const std::vector<std::uint8_t> empty(std::size_t{64} * 64, 0);
    const std::vector<std::uint8_t> result = badged(empty, 64);
    EXPECT_GT(std::ranges::count_if(result, [](auto alpha) { return alpha > 20 && alpha < 235; }), 30);
    // As much ink as a circle of its size has.
    double ink = 0;
    for (const std::uint8_t alpha : result) {
        ink += alpha / 255.0;
    }
    const double radius = 2.5 * 64 / 18;
    EXPECT_NEAR(ink, 3.14159 * radius * radius, 4);
}

TEST(SymbolBadge, IsPartOfThePicture) {
    const auto plain = pictureFor(describedSymbol("uiwindow.split.2x1"), 32);
    const auto dotted = pictureFor(describedSymbol("uiwindow.split.2x1", true), 32);
    EXPECT_EQ(dotted->alpha, badged(plain->alpha, 32));
    EXPECT_NE(dotted->alpha, plain->alpha);
}

} // namespace
} // namespace platform::linux
