#include "Platform/Bspwm/Layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace platform::bspwm {
namespace {

using corvid::CGRect;
using testing::ElementsAre;
using testing::Pair;
using testing::UnorderedElementsAre;
using Window = x11::Layout::Window;

std::optional<x11::Layout> layoutOf(const std::string& text) {
    const auto json = compositor::parsedJson(text);
    return json ? readLayout(*json) : std::nullopt;
}

std::string leaf(int number, const std::string& state) {
    return R"({"id":)" + std::to_string(number) + R"(,"firstChild":null,"secondChild":null,"client":{"state":")" +
           state + R"("}})";
}

std::string fork(const std::string& first, const std::string& second) {
    return R"({"id":1,"firstChild":)" + first + R"(,"secondChild":)" + second + R"(,"client":null})";
}

std::string monitor(const std::string& more) {
    return R"({"rectangle":{"x":100,"y":0,"width":800,"height":600},)" + more + "}";
}

TEST(BspwmLayout, HasTheLeavesOfAllDesktops) {
    const auto layout =
        layoutOf(R"({"monitors":[)" +
                 monitor(R"("desktops":[{"id":8,"root":)" +
                         fork(leaf(11, "tiled"), fork(leaf(12, "floating"), leaf(13, "pseudo_tiled"))) +
                         R"(},{"id":9,"root":)" + leaf(14, "floating") + "},{\"id\":10,\"root\":null}]") +
                 "]}");
    ASSERT_TRUE(layout);
    EXPECT_THAT(layout->windows,
                UnorderedElementsAre(Pair(11, Window{.isTiled = true}), Pair(12, Window{.isTiled = false}),
                                     Pair(13, Window{.isTiled = true}), Pair(14, Window{.isTiled = false})));
}

TEST(BspwmLayout, WorkAreasLackThePaddingOfTheMonitorAndOfTheShownDesktop) {
    const std::string padding = R"("padding":{"top":20,"right":1,"bottom":2,"left":3})";
    const auto layout = layoutOf(R"({"monitors":[)" +
                                 monitor(padding + R"(,"focusedDesktopId":9,"desktops":[)" + R"({"id":8,)" + padding +
                                         R"(},{"id":9,"padding":{"top":-5,"right":0,"bottom":10,"left":0}}])") +
                                 "]}");
    ASSERT_TRUE(layout);
    EXPECT_THAT(layout->workAreas, ElementsAre(CGRect{{103, 15}, {796, 573}}));
}

TEST(BspwmLayout, LeavesOutWhatMakesNoSense) {
    EXPECT_EQ(layoutOf("{}"), std::nullopt);
    EXPECT_EQ(layoutOf("[]"), std::nullopt);
    for (const char* text :
         {R"({"monitors":[]})", R"({"monitors":[1,null,"x",{}]})",
          R"({"monitors":[{"rectangle":{"x":1},"desktops":3}]})",
          R"({"monitors":[{"desktops":[{"root":{"id":-1,"client":{}}},{"root":{"id":4294967296,"client":{}}}]}]})",
          R"({"monitors":[{"rectangle":{"x":0,"y":0,"width":10,"height":10},"padding":{"top":99}}]})"}) {
        EXPECT_EQ(layoutOf(text), x11::Layout{}) << text;
    }
}

TEST(BspwmLayout, TheBorderIsThatOfTheClient) {
    const auto border = [](const std::string& text) { return borderOf(*compositor::parsedJson(text)); };
    EXPECT_EQ(border(R"({"client":{"borderWidth":3}})"), 3);
    for (const char* text : {"{}", R"({"client":null})", R"({"client":{"borderWidth":-1}})",
                             R"({"client":{"borderWidth":99999}})", R"({"client":{"borderWidth":"3"}})"}) {
        EXPECT_EQ(border(text), std::nullopt) << text;
    }
}

} // namespace
} // namespace platform::bspwm
