#include "Platform/ShellCore/Messages.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace platform::shellcore {
namespace {

using compositor::WindowKind;

TEST(ShellMessages, AWindowIsReadWithAllItsProperties) {
    const auto window = parseWindow(
        R"({"id":18446744073709551615,"pid":42,"applicationId":"org.example.Editor","windowClass":"Editor",)"
        R"("windowInstance":"editor","kind":"auxiliary","skipsTaskBars":true,"isFullscreen":true,)"
        R"("frame":[-10,20,300,200]})");
    ASSERT_TRUE(window);
    EXPECT_EQ(window->first, "18446744073709551615");
    const compositor::Window expected{.clues = {.process = 42,
                                                .applicationId = "org.example.Editor",
                                                .windowClass = "Editor",
                                                .windowInstance = "editor"},
                                      .kind = WindowKind::auxiliary,
                                      .skipsTaskBars = true,
                                      .isFullscreen = true,
                                      .isReady = true,
                                      .frame = {{-10, 20}, {300, 200}}};
    EXPECT_EQ(window->second, expected);
}

TEST(ShellMessages, AWindowWithoutNumberOrFrameIsNone) {
    const std::vector<std::string> texts{
        "",
        "null",
        "[]",
        "7",
        "{",
        R"({"id":7})",
        R"({"frame":[1,2,3,4]})",
        R"({"id":-7,"frame":[1,2,3,4]})",
        R"({"id":7.5,"frame":[1,2,3,4]})",
        R"({"id":"7","frame":[1,2,3,4]})",
        R"({"id":7,"frame":[1,2,3]})",
        R"({"id":7,"frame":[1,2,3,"4"]})",
        R"({"id":7,"frame":[1,2,-3,4]})",
        R"({"id":7,"frame":[1,2,1e300,4]})",
        R"({"id":7,"frame":{"x":1}})",
        std::string(100'000, '['),
    };
    for (const std::string& text : texts) {
        EXPECT_FALSE(parseWindow(text)) << text.substr(0, 80);
    }
}

TEST(ShellMessages, InvalidUtf8InATextIsReplaced) {
    const auto window = parseWindow("{\"id\":7,\"frame\":[1,2,3,4],\"applicationId\":\"caf\xe9\"}");
    ASSERT_TRUE(window);
    EXPECT_EQ(window->second.clues.applicationId, "caf\uFFFD");
}

TEST(ShellMessages, ValuesOfOtherTypesCountAsUntold) {
    const std::string endless(5000, 'x');
    const auto window = parseWindow(R"({"id":7,"pid":"42","applicationId":[],"windowClass":")" + endless +
                                    R"(","windowInstance":null,"kind":3,"skipsTaskBars":1,"isFullscreen":"yes",)"
                                    R"("frame":[1,2,3,4]})");
    ASSERT_TRUE(window);
    const compositor::Window expected{
        .clues = {}, .kind = WindowKind::ignored, .isReady = true, .frame = {{1, 2}, {3, 4}}};
    EXPECT_EQ(window->second, expected);
}

TEST(ShellMessages, ProcessesAreTakenOnlyWhereTheyCanBe) {
    for (const auto& [reported, taken] : std::vector<std::pair<std::string, int>>{
             {"1", 1}, {"0", 0}, {"-1", 0}, {"4294967296", 0}, {"2147483647", 2147483647}, {"1.5", 0}}) {
        const auto window = parseWindow(R"({"id":7,"frame":[1,2,3,4],"pid":)" + reported + "}");
        ASSERT_TRUE(window) << reported;
        EXPECT_EQ(window->second.clues.process, taken) << reported;
    }
}

TEST(ShellMessages, TheFirstReplyHasWindowsFocusAndScreens) {
    const auto hello = parseHello(
        R"({"version":1,"session":"abc","windows":[{"id":3,"kind":"standard","frame":[1,2,3,4]},{"id":"no"}],)"
        R"("focused":3,"outputs":[{"frame":[0,0,1600,900],"workArea":[0,32,1600,868]},{"frame":[0,0,0,0]}]})");
    ASSERT_TRUE(hello);
    EXPECT_EQ(hello->version, 1);
    EXPECT_EQ(hello->session, "abc");
    ASSERT_EQ(hello->contents.windows.size(), 1U);
    EXPECT_EQ(hello->contents.windows.front().first, "3");
    EXPECT_EQ(hello->contents.focused, "3");
    const std::vector<compositor::Output> outputs{{.frame = {{0, 0}, {1600, 900}}, .workArea = {{0, 32}, {1600, 868}}}};
    EXPECT_EQ(hello->contents.outputs, outputs);
}

TEST(ShellMessages, AFirstAnswerThatIsNoneIsNothing) {
    for (const char* text :
         {"", "{}", "[]", R"({"version":1})", R"({"version":1,"windows":{},"outputs":[]})",
          R"({"version":"1","windows":[],"outputs":[]})", R"({"version":1,"windows":[],"outputs":7})"}) {
        EXPECT_FALSE(parseHello(text)) << text;
    }
}

TEST(ShellMessages, AMessageWithoutEndIsNone) {
    EXPECT_FALSE(parseHello(R"({"version":1,"windows":[],"outputs":[],"more":")" + std::string(5 << 20, 'x') + "\"}"));
}

TEST(ShellMessages, FramesAreReadAndMalformedOnesLeftOut) {
    const auto frames =
        parseFrames(R"([[7,1,2,3,4,true],[8,1,2,3,4],[9,1,2,3,4,5],"x",[10,1,2,3,-4,false],[11,-1,-2,3,4,false]])");
    ASSERT_TRUE(frames);
    ASSERT_EQ(frames->size(), 2U);
    EXPECT_EQ(frames->at(0).window, "7");
    EXPECT_EQ(frames->at(0).frame, (corvid::CGRect{{1, 2}, {3, 4}}));
    EXPECT_TRUE(frames->at(0).isFullscreen);
    EXPECT_EQ(frames->at(1).window, "11");
    EXPECT_FALSE(parseFrames("{}"));
    EXPECT_FALSE(parseFrames("[[7,1,2,3,4,true]"));
}

} // namespace
} // namespace platform::shellcore
