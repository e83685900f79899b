#include "Platform/I3/Layout.h"
#include "Tests/Platform/I3/Layouts.h"

#include <gtest/gtest.h>

namespace platform::i3 {
namespace {

using corvid::CGRect;
using layouts::around;
using layouts::output;
using layouts::rect;
using layouts::root;
using layouts::window;
using layouts::workspace;
using x11::Layout;

Layout read(const std::string& text) {
    const auto json = i3ipc::parsedJson(text);
    if (!json) {
        ADD_FAILURE() << "no JSON: " << text;
        return {};
    }
    return readLayout(*json).value_or(Layout{});
}

Layout readOne(const std::string& tiled, const std::string& floating = {}) {
    return read(root(output("A", rect(0, 0, 800, 600), 3, workspace(3, rect(0, 20, 800, 580), tiled, floating))));
}

TEST(I3Layout, TheFrameOfATiledWindowHasItsTitleBarInIt) {
    const Layout layout = readOne(window(5, rect(0, 20, 400, 580)));
    ASSERT_EQ(layout.windows.size(), 1U);
    EXPECT_EQ(layout.windows.at(5),
              (Layout::Window{.frame = CGRect{{0, 20}, {400, 580}},
                              .drawn = CGRect{{0, 20}, {400, 580}},
                              .isTiled = true,
                              .bordersOutside = x11::Extents{.left = 2, .right = 2, .top = 18, .bottom = 2}}));
}

TEST(I3Layout, AWindowInTheLayoutHasAllOfItsBordersOutside) {
    struct Example {
        std::string style;
        int width;
        int title;
        std::optional<x11::Extents> borders;
    };

    for (const Example& example : std::vector<Example>{
             {"none", 0, 0, x11::Extents{}},
             // The tab that replaces the title bar does not belong to the frame.
             {"none", 2, 18, x11::Extents{}},
             {"pixel", 3, 0, x11::Extents{.left = 3, .right = 3, .top = 3, .bottom = 3}},
             {"pixel", 3, 18, x11::Extents{.left = 3, .right = 3, .top = 3, .bottom = 3}},
             {"normal", 4, 22, x11::Extents{.left = 4, .right = 4, .top = 22, .bottom = 4}},
             {"normal", 0, 22, x11::Extents{.left = 0, .right = 0, .top = 22, .bottom = 0}},
             // Not drawn yet, or with the default border of floating windows, or not plausible.
             {"normal", 4, 0, std::nullopt},
             {"normal", -1, 22, std::nullopt},
             {"pixel", 100000, 0, std::nullopt},
             {"normal", 4, 100000, std::nullopt},
             {"unheard of", 4, 22, std::nullopt},
         }) {
        const std::string node =
            layouts::decorated(5, rect(0, 20, 400, 580), example.style, example.width, example.title);
        const Layout tiled = readOne(node);
        ASSERT_EQ(tiled.windows.size(), 1U);
        EXPECT_EQ(tiled.windows.at(5).bordersOutside, example.borders)
            << example.style << ' ' << example.width << ' ' << example.title;
        const Layout floating = readOne("", around("floating_con", rect(0, 20, 400, 580), node));
        EXPECT_EQ(floating.windows.at(5).bordersOutside, std::nullopt) << "it shows what it has";
    }
}

TEST(I3Layout, TheFrameOfAFloatingWindowIsItsContainers) {
    // On a hidden workspace, only that one follows the requests.
    const Layout layout =
        readOne("", around("floating_con", rect(100, 110, 500, 300), window(5, rect(30, 40, 200, 150))));
    ASSERT_EQ(layout.windows.size(), 1U);
    EXPECT_EQ(layout.windows.at(5),
              (Layout::Window{
                  .frame = CGRect{{100, 110}, {500, 300}}, .drawn = CGRect{{30, 40}, {200, 150}}, .isTiled = false}));
}

TEST(I3Layout, WindowsThatFloatTogetherHaveALayoutAmongThem) {
    const Layout layout =
        readOne("", around("floating_con", rect(100, 110, 500, 300),
                           around("con", rect(100, 110, 500, 300),
                                  window(5, rect(100, 110, 250, 300)) + "," + window(6, rect(350, 110, 250, 300)))));
    ASSERT_EQ(layout.windows.size(), 2U);
    EXPECT_TRUE(layout.windows.at(5).isTiled);
    EXPECT_EQ(layout.windows.at(6).frame, (CGRect{{350, 110}, {250, 300}}));
}

TEST(I3Layout, TheWorkAreaIsThatOfTheWorkspaceThatIsShown) {
    const Layout layout = read(root(output("A", rect(0, 0, 800, 600), 4,
                                           workspace(3, rect(0, 20, 800, 580), window(5, rect(0, 20, 800, 580))) + "," +
                                               workspace(4, rect(7, 27, 786, 566), "")) +
                                    "," +
                                    output("B", rect(800, 0, 640, 480), 6,
                                           workspace(6, rect(800, 0, 640, 440), window(7, rect(800, 0, 640, 440))))));
    EXPECT_EQ(layout.workAreas, (std::vector<CGRect>{{{7, 27}, {786, 566}}, {{800, 0}, {640, 440}}}));
    EXPECT_EQ(layout.windows.size(), 2U);
}

TEST(I3Layout, BarsAndWhatIsPutAwayAreNoWindows) {
    const std::string away = workspace(2, rect(0, 0, 0, 0), "",
                                       around("floating_con", rect(1, 2, 300, 200), window(9, rect(1, 2, 300, 200))));
    const Layout layout = read(root(output("__i3", rect(0, 0, 800, 600), 2, away) + "," +
                                    output("A", rect(0, 0, 800, 600), 3, workspace(3, rect(0, 20, 800, 580), ""))));
    EXPECT_EQ(layout.windows, Layout{}.windows);
    EXPECT_EQ(layout.workAreas, (std::vector<CGRect>{{{0, 20}, {800, 580}}}));
}

TEST(I3Layout, WhatMakesNoSenseIsLeftOut) {
    EXPECT_EQ(readLayout(*i3ipc::parsedJson("[]")), std::nullopt);
    EXPECT_EQ(readLayout(*i3ipc::parsedJson(R"({"type":"con"})")), std::nullopt);
    for (const char* text : {
             R"({"type":"root"})",
             R"({"type":"root","nodes":17,"floating_nodes":{}})",
             R"({"type":"root","nodes":[1,"x",null,[],{}]})",
             R"({"type":"root","nodes":[{"type":"output","nodes":[{"type":"con","focus":["3"],"nodes":[{"id":3}]}]}]})",
         }) {
        EXPECT_EQ(read(text), Layout{}) << text;
    }
    for (const char* number : {"-5", "0", "4294967296", "18446744073709551615", "5.5", R"("5")", "null", "[5]"}) {
        const Layout layout =
            readOne(R"({"type":"con","rect":{"x":0,"y":0,"width":9,"height":9},"window":)" + std::string(number) + "}");
        EXPECT_EQ(layout.windows, Layout{}.windows) << number;
    }
    for (const std::string& place : {rect(0, 0, 0, 5), rect(0, 0, 5, -5), std::string("[]"), std::string("{}")}) {
        EXPECT_EQ(readOne(window(5, place)).windows, Layout{}.windows) << place;
        EXPECT_EQ(readOne("", around("floating_con", place, window(5, rect(0, 0, 5, 5)))).windows, Layout{}.windows);
    }
}

} // namespace
} // namespace platform::i3
