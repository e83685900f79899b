#include "Platform/Hyprland/Layout.h"

#include <gtest/gtest.h>

namespace platform::hyprland {
namespace {

using compositor::Json;
using compositor::Output;
using corvid::CGRect;
using corvid::CGSize;

Json client(const std::string& changes) {
    Json object = Json::parse(R"({"address":"0x7","mapped":true,"hidden":false,"at":[10,20],"size":[300,200],
        "floating":true,"class":"org.editor","title":"Text","pid":42,"xwayland":false,"pinned":false,
        "fullscreen":0,"stableId":"18000002"})");
    object.merge_patch(Json::parse(changes));
    return object;
}

Client only(const std::string& changes) {
    const auto clients = readClients(Json::array({client(changes)}));
    return clients && clients->size() == 1 ? clients->front() : Client{};
}

TEST(HyprlandLayout, ReadsAWindow) {
    const Client read = only("{}");
    EXPECT_EQ(read.identifier, "0x7");
    EXPECT_EQ(read.title, "Text");
    EXPECT_EQ(read.window.clues.process, 42);
    EXPECT_EQ(read.window.clues.applicationId, "org.editor");
    EXPECT_EQ(read.window.frame, (CGRect{{10, 20}, {300, 200}}));
    EXPECT_TRUE(read.window.isReady);
    EXPECT_FALSE(read.window.isTiled);
    EXPECT_FALSE(read.window.isFullscreen);
}

TEST(HyprlandLayout, AWindowOfX11HasAClass) {
    const Client read = only(R"({"xwayland":true,"class":"XTerm"})");
    EXPECT_EQ(read.window.clues.windowClass, "XTerm");
    EXPECT_EQ(read.window.clues.applicationId, "");
}

TEST(HyprlandLayout, ReadsTheStatesOfAWindow) {
    EXPECT_TRUE(only(R"({"floating":false})").window.isTiled);
    EXPECT_FALSE(only(R"({"hidden":true})").window.isReady);
    const Client maximized = only(R"({"fullscreen":1})");
    EXPECT_TRUE(maximized.isMaximized);
    EXPECT_TRUE(maximized.window.isTiled);
    EXPECT_FALSE(maximized.window.isFullscreen);
    for (const char* fullscreen : {R"({"fullscreen":2})", R"({"fullscreen":3})", R"({"fullscreen":true})"}) {
        EXPECT_TRUE(only(fullscreen).window.isFullscreen) << fullscreen;
        EXPECT_FALSE(only(fullscreen).isMaximized) << fullscreen;
    }
}

TEST(HyprlandLayout, LeavesOutWhatMakesNoSense) {
    for (const char* changes :
         {R"({"mapped":false})", R"({"address":"7"})", R"({"address":"0x7;exec"})", R"({"at":[1]})", R"({"at":null})",
          R"({"size":[-1,5]})", R"({"size":["a",5]})", R"({"size":[1e300,5]})"}) {
        EXPECT_TRUE(readClients(Json::array({client(changes)}))->empty()) << changes;
    }
    EXPECT_TRUE(readClients(Json::parse(R"([17,null,"x",[]])"))->empty());
    EXPECT_EQ(readClients(Json::parse("{}")), std::nullopt);
}

TEST(HyprlandLayout, OlderWindowsComeFirst) {
    const auto read = readClients(Json::array(
        {client(R"({"address":"0x9","stableId":"18000010"})"), client(R"({"address":"0x8","stableId":"18000009"})")}));
    ASSERT_EQ(read->size(), 2U);
    EXPECT_EQ(read->front().identifier, "0x8");
}

struct OutputExpectation {
    std::string what;
    std::string monitor;
    CGRect frame;
    CGRect workArea;
};

TEST(HyprlandLayout, OutputsAreInPointsOfTheLayout) {
    const std::vector<OutputExpectation> expectations{
        {.what = "plain",
         .monitor = R"({"x":0,"y":0,"width":1920,"height":1080,"scale":1.00,"transform":0,"reserved":[0,32,0,0]})",
         .frame = {{0, 0}, {1920, 1080}},
         .workArea = {{0, 32}, {1920, 1048}}},
        {.what = "scaled by one and a half",
         .monitor = R"({"x":10,"y":-5,"width":1920,"height":1080,"scale":1.5,"transform":0,"reserved":[5,32,7,9]})",
         .frame = {{10, -5}, {1280, 720}},
         .workArea = {{15, 27}, {1268, 679}}},
        {.what = "a scale that gives no whole points",
         .monitor = R"({"x":0,"y":0,"width":1920,"height":1080,"scale":1.07,"transform":0})",
         .frame = {{0, 0}, {1794, 1009}},
         .workArea = {{0, 0}, {1794, 1009}}},
        {.what = "turned by a quarter",
         .monitor = R"({"x":0,"y":0,"width":2560,"height":1440,"scale":2,"transform":1,"reserved":[0,0,0,40]})",
         .frame = {{0, 0}, {720, 1280}},
         .workArea = {{0, 0}, {720, 1240}}},
        {.what = "turned by half",
         .monitor = R"({"x":0,"y":0,"width":2560,"height":1440,"scale":1,"transform":2})",
         .frame = {{0, 0}, {2560, 1440}},
         .workArea = {{0, 0}, {2560, 1440}}},
        {.what = "flipped and turned by three quarters",
         .monitor = R"({"x":0,"y":0,"width":2560,"height":1440,"scale":1,"transform":7})",
         .frame = {{0, 0}, {1440, 2560}},
         .workArea = {{0, 0}, {1440, 2560}}},
        {.what = "all of it reserved",
         .monitor = R"({"x":0,"y":0,"width":800,"height":600,"scale":1,"transform":0,"reserved":[0,600,0,0]})",
         .frame = {{0, 0}, {800, 600}},
         .workArea = {{0, 0}, {800, 600}}},
        {.what = "a negative reserve",
         .monitor = R"({"x":0,"y":0,"width":800,"height":600,"scale":1,"transform":0,"reserved":[0,-9,0,0]})",
         .frame = {{0, 0}, {800, 600}},
         .workArea = {{0, 0}, {800, 600}}},
    };
    for (const OutputExpectation& each : expectations) {
        const auto outputs = readMonitors(Json::array({Json::parse(each.monitor)}));
        ASSERT_TRUE(outputs && outputs->size() == 1) << each.what;
        EXPECT_EQ(outputs->front(), (Output{.frame = each.frame, .workArea = each.workArea})) << each.what;
    }
}

TEST(HyprlandLayout, AScaleOfTwoDigitsIsTheOneThatGivesWholePoints) {
    // 1.07 is 128/120, 1.33 is 160/120, 1.67 is 200/120.
    EXPECT_EQ(logicalSize({1920, 1200}, 1.07), (CGSize{1800, 1125}));
    EXPECT_EQ(logicalSize({2560, 1440}, 1.33), (CGSize{1920, 1080}));
    EXPECT_EQ(logicalSize({3840, 2160}, 1.67), (CGSize{2304, 1296}));
    EXPECT_EQ(logicalSize({2560, 1440}, 1.3333334), (CGSize{1920, 1080}));
    for (const double none : {0.0, -1.0, 1e-300, 1e6}) {
        EXPECT_EQ(logicalSize({1920, 1080}, none), (CGSize{1920, 1080})) << none;
    }
}

TEST(HyprlandLayout, TheOutputAtTheOriginComesFirst) {
    const auto outputs =
        readMonitors(Json::parse(R"([{"x":1920,"y":0,"width":800,"height":600},{"x":0,"y":0,"width":1920,"height":1080},
                        {"x":0,"y":0,"width":1920,"height":1080,"mirrorOf":"1"},
                        {"x":0,"y":0,"width":1920,"height":1080,"disabled":true},{"x":0,"width":7},5])"));
    ASSERT_EQ(outputs->size(), 2U);
    EXPECT_EQ(outputs->front().frame, (CGRect{{0, 0}, {1920, 1080}}));
    EXPECT_EQ(readMonitors(Json::parse("{}")), std::nullopt);
}

} // namespace
} // namespace platform::hyprland
