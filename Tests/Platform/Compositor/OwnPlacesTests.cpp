#include "Platform/Compositor/OwnPlaces.h"

#include <gtest/gtest.h>

#include <optional>

namespace platform::compositor {
namespace {

constexpr ProcessIdentifier ours = 7;
constexpr corvid::CGPoint corner{30, 40};

TEST(OwnPlaces, APlaceIsTakenOnce) {
    OwnPlaces places(ours);
    places.set("Menu", corner);
    EXPECT_EQ(places.take(ours, "Other"), std::nullopt);
    EXPECT_EQ(places.take(ours, "Menu"), corner);
    EXPECT_EQ(places.take(ours, "Menu"), std::nullopt);
}

TEST(OwnPlaces, AWindowOfAnotherProcessWithTheSameTitleHasNone) {
    OwnPlaces places(ours);
    places.set("Menu", corner);
    EXPECT_EQ(places.take(ours + 1, "Menu"), std::nullopt);
    EXPECT_EQ(places.take(ours, "Menu"), corner);
}

TEST(OwnPlaces, TheLastPlaceCounts) {
    OwnPlaces places(ours);
    places.set("Menu", {});
    places.set("Menu", corner);
    EXPECT_EQ(places.take(ours, "Menu"), corner);
}

} // namespace
} // namespace platform::compositor
