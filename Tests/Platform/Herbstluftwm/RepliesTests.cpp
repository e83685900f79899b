#include "Platform/Herbstluftwm/Replies.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace platform::herbstluftwm {
namespace {

using corvid::CGPoint;
using corvid::CGRect;
using testing::ElementsAre;
using testing::IsSupersetOf;

// Recorded from herbstluftwm 0.9.5 with two monitors, pads, and titles of 18.
const std::string recorded = "client 0x60000c 708x524+1263-198 700x498+1267-172 true true 2\n"
                             "client 0x80000c 960x1050+0+30 952x1024+4+52 false false my tag\n"
                             "client 0x60000c 708x524+1263-198 700x498+1267-172 true true 2\n"
                             "area 960x1050+0+30 my tag\n"
                             "area 948x1054+967+20 2\n"
                             "area 948x1054+967+20 2\n"
                             "focus 0x80000c\n"
                             "active 5 4 0 2 0 12 3 always\n"
                             "normal 3 0 0 0 1 12 3 one_tab\n";

TEST(HerbstluftwmReplies, HaveWindowsAndMonitors) {
    const State state = readState(recorded);
    EXPECT_EQ(state.clients.size(), 2U);
    EXPECT_EQ(state.clients.at(0x60000C), (Client{.decorated = {{1263, -198}, {708, 524}},
                                                  .content = {{1267, -172}, {700, 498}},
                                                  .isTiled = false,
                                                  .roundsByHints = true,
                                                  .tag = "2"}));
    EXPECT_EQ(state.clients.at(0x80000C).tag, "my tag");
    const x11::Layout layout = layoutOf(state);
    EXPECT_EQ(layout.windows.at(0x80000C),
              (x11::Layout::Window{.isTiled = true,
                                   .bordersOutside = x11::Extents{.left = 9, .right = 5, .top = 22, .bottom = 5}}));
    EXPECT_TRUE(layout.windows.at(0x60000C).roundsByHints);
    EXPECT_THAT(layout.workAreas, ElementsAre(CGRect{{967, 20}, {948, 1054}}, CGRect{{0, 30}, {960, 1050}}));
}

TEST(HerbstluftwmReplies, TheThemeTellsTheDecorationOfFloatingWindows) {
    const State state = readState(recorded);
    EXPECT_EQ(extentsOutside(0x80000C, state), (x11::Extents{.left = 9, .right = 5, .top = 22, .bottom = 5}));
    // A title for one tab or more is none: a floating window has no tabs.
    EXPECT_EQ(extentsOutside(0x60000C, state), (x11::Extents{.left = 3, .right = 3, .top = 3, .bottom = 4}));
    EXPECT_EQ(readState("active 1 0 0 0 0 0 3 always\n").aroundFocused,
              (x11::Extents{.left = 1, .right = 1, .top = 1, .bottom = 1}))
        << "without a height there is no title";
    for (const char* text : {"", "active\n", "active 1 2 3 4 5 6 always\n", "active 1 2 3 4 5 6 x always\n",
                             "active 1 2 3 4 5 6 7x always\n", "active 99999 2 3 4 5 6 7 always\n"}) {
        EXPECT_EQ(extentsOutside(0x5, readState(text)), std::nullopt) << text;
    }
}

TEST(HerbstluftwmReplies, LinesThatMakeNoSenseAreLeftOut) {
    for (const char* text :
         {"", "\n", "client", "client 0x 1x1+0+0 1x1+0+0 true 1", "client 5 1x1+0+0 1x1+0+0 true 1",
          "client 0x5 1x1+0 1x1+0+0 true 1", "client 0x5 1x1+0+0 axb+0+0 true 1", "client 0x0 1x1+0+0 1x1+0+0 true 1",
          "client 0x123456789 1x1+0+0 1x1+0+0 true 1", "client 0x5 99999x1+0+0 1x1+0+0 true 1", "area 0x5+1+1 2",
          "area 5x5+1+1+ 2", "area -5x5+1+1 2", "areas 5x5+1+1 2"}) {
        EXPECT_EQ(readState(text), State{}) << text;
    }
}

TEST(HerbstluftwmReplies, APlaceIsTheContentsAndRelativeToTheMonitor) {
    const State state = readState(recorded);
    const Client& tiled = state.clients.at(0x80000C);
    EXPECT_EQ(originOf(tiled, state), (CGPoint{0, 30}));
    const auto words = placeCommand(0x80000C, tiled, originOf(tiled, state), {{-10, 40}, {408, 326}});
    EXPECT_THAT(words,
                IsSupersetOf({"clients.0x80000c.floating_geometry", "400x300+-6+32", "clients.0x80000c.floating"}));
    EXPECT_LT(std::ranges::find(words, "clients.0x80000c.floating_geometry"),
              std::ranges::find(words, "clients.0x80000c.floating"))
        << "it must not be seen where it floated before";
    const Client& floating = state.clients.at(0x60000C);
    EXPECT_EQ(originOf(floating, state), (CGPoint{967, 20}));
    EXPECT_THAT(placeCommand(0x60000C, floating, originOf(floating, state), {{967, 20}, {408, 326}}),
                testing::Not(testing::Contains("clients.0x60000c.floating")));
}

TEST(HerbstluftwmReplies, AHiddenTagComesToAnyMonitor) {
    const State state = readState("area 960x1050+0+30 1\n");
    Client client;
    client.tag = "hidden";
    EXPECT_EQ(originOf(client, state), (CGPoint{0, 30}));
}

} // namespace
} // namespace platform::herbstluftwm
