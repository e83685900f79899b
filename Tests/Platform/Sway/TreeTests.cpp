#include "Platform/Sway/Tree.h"
#include "Tests/Platform/Sway/Layouts.h"

#include <gtest/gtest.h>

namespace platform::sway {
namespace {

using compositor::Output;
using compositor::WindowKind;
using corvid::CGRect;

Tree treeOf(const std::string& text) {
    const auto json = i3ipc::parsedJson(text);
    if (!json) {
        ADD_FAILURE() << "no JSON: " << text;
        return {};
    }
    return readTree(*json).value_or(Tree{});
}

TEST(SwayTree, TheFrameOfAWindowHasItsTitleBarInIt) {
    const Tree tree = treeOf(layouts::oneOutput({{.number = 7, .rect = {100, 225, 700, 475}, .titleBar = 25}}));
    ASSERT_EQ(tree.windows.size(), 1U);
    EXPECT_EQ(tree.windows[0].identifier, "7");
    EXPECT_EQ(tree.windows[0].window.frame, (CGRect{{100, 200}, {700, 500}}));
    EXPECT_EQ(tree.windows[0].window.clues.process, 100);
    EXPECT_EQ(tree.windows[0].window.clues.applicationId, "org.example.Editor");
    EXPECT_EQ(tree.windows[0].title, "A window");
    EXPECT_EQ(tree.windows[0].window.kind, WindowKind::standard);
    EXPECT_TRUE(tree.windows[0].window.isReady);
    EXPECT_FALSE(tree.windows[0].window.isFullscreen);
}

TEST(SwayTree, WindowsAreDistinguishedByTheirPlaceInTheTree) {
    const Tree tree = treeOf(layouts::oneOutput({{.number = 7}, {.number = 8, .isFloating = true, .isFocused = true}}));
    ASSERT_EQ(tree.windows.size(), 2U);
    EXPECT_TRUE(tree.windows[0].window.isTiled);
    EXPECT_FALSE(tree.windows[1].window.isTiled);
    EXPECT_EQ(tree.focused, "8");
}

TEST(SwayTree, WindowsComeOldestFirst) {
    const Tree tree = treeOf(layouts::oneOutput({{.number = 10}, {.number = 9}, {.number = 111}}));
    ASSERT_EQ(tree.windows.size(), 3U);
    EXPECT_EQ(tree.windows[0].identifier, "9");
    EXPECT_EQ(tree.windows[1].identifier, "10");
    EXPECT_EQ(tree.windows[2].identifier, "111");
}

TEST(SwayTree, OutputsHaveTheWorkAreaOfTheWorkspaceThatTheyShow) {
    const Tree tree = treeOf(layouts::text({{"B", {1920, 0, 1280, 1024}, {{12, "2", {}}, {13, "3", {{.number = 5}}}}},
                                            {"A", {0, 0, 1920, 1080}, {{11, "1", {{.number = 4}}}}}}));
    EXPECT_EQ(tree.outputs, (std::vector<Output>{
                                {.frame = {{0, 0}, {1920, 1080}}, .workArea = {{0, 23}, {1920, 1057}}},
                                {.frame = {{1920, 0}, {1280, 1024}}, .workArea = {{1920, 23}, {1280, 1001}}},
                            }));
    ASSERT_EQ(tree.windows.size(), 2U);
    EXPECT_EQ(tree.windows[0].hiddenWorkspace, "");
    EXPECT_EQ(tree.windows[1].hiddenWorkspace, "3");
}

TEST(SwayTree, TheOutputAtTheOriginIsTheFirst) {
    const Tree tree = treeOf(layouts::text({{"A", {-1280, 0, 1280, 1024}, {}}, {"B", {0, 0, 1920, 1080}, {}}}));
    ASSERT_EQ(tree.outputs.size(), 2U);
    EXPECT_EQ(tree.outputs[0].frame.origin.x, 0);
    // Without a workspace the reserved area is unknown.
    EXPECT_EQ(tree.outputs[0].workArea, tree.outputs[0].frame);
}

TEST(SwayTree, TheOutputWithTheFocusIsTheActiveOneEvenWithoutWindows) {
    const Tree tree = treeOf(layouts::text({{"A", {0, 0, 1920, 1080}, {{11, "1", {{.number = 4}}}}, false},
                                            {"B", {1920, 0, 1280, 1024}, {{12, "2", {}}}, true}}));
    ASSERT_EQ(tree.outputs.size(), 2U);
    EXPECT_FALSE(tree.outputs[0].isActive);
    EXPECT_TRUE(tree.outputs[1].isActive);
}

TEST(SwayTree, ProgramsOfX11SayWhatTheirWindowsAre) {
    const struct {
        const char* more;
        WindowKind kind;
    } cases[] = {
        {R"(,"window":5,"window_type":"normal","window_properties":{"class":"XTerm","instance":"xterm"})",
         WindowKind::standard},
        {R"(,"window":5,"window_properties":{"class":"XTerm","transient_for":null})", WindowKind::standard},
        {R"(,"window":5,"window_properties":{"class":"XTerm","transient_for":4194305})", WindowKind::auxiliary},
        {R"(,"window":5,"window_type":"dialog")", WindowKind::auxiliary},
        {R"(,"window":5,"window_type":"splash")", WindowKind::auxiliary},
    };
    for (const auto& [more, kind] : cases) {
        const Tree tree = treeOf(layouts::oneOutput({{.number = 7, .more = more}}));
        ASSERT_EQ(tree.windows.size(), 1U) << more;
        EXPECT_EQ(tree.windows[0].window.kind, kind) << more;
    }
    const Tree tree = treeOf(layouts::oneOutput({{.number = 7, .more = cases[0].more}}));
    EXPECT_EQ(tree.windows[0].window.clues.windowClass, "XTerm");
    EXPECT_EQ(tree.windows[0].window.clues.windowInstance, "xterm");
}

TEST(SwayTree, WhatMakesNoSenseIsLeftOut) {
    EXPECT_EQ(readTree(*i3ipc::parsedJson("[]")), std::nullopt);
    EXPECT_EQ(readTree(*i3ipc::parsedJson(R"({"type":"con"})")), std::nullopt);
    for (const char* text : {
             R"({"type":"root"})",
             R"({"type":"root","nodes":17,"floating_nodes":{}})",
             R"({"type":"root","nodes":[1,"x",null,[],{}]})",
             R"({"type":"root","nodes":[{"type":"con","pid":"7","id":7}]})",
             R"({"type":"root","nodes":[{"type":"con","pid":7,"id":"7"}]})",
             R"({"type":"root","nodes":[{"type":"con","pid":7,"id":18446744073709551615}]})",
             R"({"type":"root","nodes":[{"type":"output","rect":{"x":0,"y":0,"width":-5,"height":9}}]})",
             R"({"type":"root","nodes":[{"type":"output","rect":{"x":0,"y":0,"width":1e300,"height":9}}]})",
         }) {
        EXPECT_EQ(treeOf(text), Tree{}) << text;
    }
    const Tree tree = treeOf(R"({"type":"root","nodes":[{"type":"con","pid":99999999999,"id":7,"rect":{"x":"1"},
        "name":17,"app_id":null,"fullscreen_mode":"2","window_properties":[]}]})");
    ASSERT_EQ(tree.windows.size(), 1U);
    EXPECT_EQ(tree.windows[0].window.clues.process, 0);
    EXPECT_EQ(tree.windows[0].window.frame, CGRect{});
}

TEST(SwayTree, ReadsNothingThatIsNestedWithoutEnd) {
    constexpr int depth = 100'000;
    std::string text = R"({"type":"root","nodes":)";
    for (int level = 0; level < depth; ++level) {
        text += '[';
    }
    text += std::string(depth, ']') + "}";
    EXPECT_EQ(i3ipc::parsedJson(text), std::nullopt);
}

TEST(SwayTree, ATextThatIsTooLongForANameIsNone) {
    const std::string title(100'000, 'x');
    const Tree tree = treeOf(layouts::oneOutput({{.number = 7, .title = title}}));
    ASSERT_EQ(tree.windows.size(), 1U);
    EXPECT_EQ(tree.windows[0].title, "");
}

} // namespace
} // namespace platform::sway
