#include "Tests/Interface/DrawnView.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
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

    void expectContrast(const std::string& type, const char* name, double least) {
        const std::vector<QQuickItem*> parts = shownOf(*item, type);
        ASSERT_FALSE(parts.empty());
        const std::vector<double> contrasts = contrastsOf(parts);
        for (std::size_t index = 0; index < parts.size(); ++index) {
            if (parts[index]->property(name).toString().isEmpty()) {
                continue;
            }
            EXPECT_GE(contrasts[index], least) << parts[index]->property(name).toString().toStdString()
                                               << (corvid::Environment::of(engine).isDark() ? " in dark" : " in light");
        }
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
    for (const MenuTab tab : {MenuTab::shortcuts, MenuTab::apps}) {
        make(tab);
        state->setRules({{"org.example.Editor", WindowAction::center}});
        desktop.mainActor.advance(std::chrono::days(31));
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
