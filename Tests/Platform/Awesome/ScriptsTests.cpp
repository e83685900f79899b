#include "Platform/Awesome/Scripts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace platform::awesome {
namespace {

using corvid::CGRect;
using testing::ElementsAre;
using testing::Pair;
using testing::StartsWith;
using testing::UnorderedElementsAre;
using Window = x11::Layout::Window;

TEST(AwesomeScripts, ALayoutHasWindowsAndWorkAreas) {
    const auto layout = readLayout(R"({"windows":[{"id":6291468,"isTiled":true},{"id":4194316,"isTiled":false}],)"
                                   R"("screens":[{"workArea":[0,21,1920,1059]},{"workArea":[1920,0,1280,1024]}]})");
    ASSERT_TRUE(layout);
    EXPECT_THAT(layout->windows,
                UnorderedElementsAre(Pair(6291468, Window{.isTiled = true}), Pair(4194316, Window{.isTiled = false})));
    EXPECT_THAT(layout->workAreas, ElementsAre(CGRect{{0, 21}, {1920, 1059}}, CGRect{{1920, 0}, {1280, 1024}}));
}

TEST(AwesomeScripts, ImplausibleEntriesAreLeftOut) {
    EXPECT_EQ(readLayout(R"({"windows":[1,{},{"id":0},{"id":-5},{"id":4294967296},{"id":"7"}],)"
                         R"("screens":[1,{},{"workArea":[1,2,3]},{"workArea":[0,0,0,5]},{"workArea":["a",2,3,4]}]})"),
              x11::Layout{});
}

TEST(AwesomeScripts, AnythingElseIsNoLayout) {
    for (const char* text : {"", "Error during execution: [string]:1: attempt to index a nil value", "{}", "[]",
                             R"({"windows":[]})", R"({"screens":[]})", R"({"windows":{},"screens":[]})"}) {
        EXPECT_EQ(readLayout(text), std::nullopt) << text;
    }
}

TEST(AwesomeScripts, NumbersOfAPlaceAreWholeAndPlausible) {
    EXPECT_THAT(placeScript(6291468, {{-10, 20.6}, {400, 300}}),
                StartsWith("local id, x, y, width, height = 6291468, -10, 21, 400, 300\n"));
    EXPECT_THAT(placeScript(1, {{1e9, -1e9}, {1e9, 0}}),
                StartsWith("local id, x, y, width, height = 1, 32767, -32767, 32767, 0\n"));
}

TEST(AwesomeScripts, AWindowIsPlacedIfAwesomeSaysSo) {
    EXPECT_TRUE(isPlaced("placed"));
    EXPECT_FALSE(isPlaced("unknown"));
    EXPECT_FALSE(isPlaced(""));
}

} // namespace
} // namespace platform::awesome
