#include "Platform/Compositor/Json.h"
#include "Platform/KWin/ScriptMessages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace platform::kwin {
namespace {

using ScriptMessages::readNews;
using ScriptMessages::readResults;

std::string window(const std::string& rest) {
    return R"({"window":{"id":"{1}",)" + rest + "}}";
}

const std::string whole = R"("process":7,"kind":"auxiliary","frame":[1,2,3,4])";

TEST(ScriptMessages, ReadAWindowAndWhatItLacks) {
    const auto news = readNews(window(whole));
    ASSERT_TRUE(news);
    const auto& report = std::get<ScriptMessages::WindowReport>(*news);
    EXPECT_EQ(report.identifier, "{1}");
    EXPECT_EQ(report.window,
              (compositor::Window{.clues = {.process = 7, .applicationId = "", .windowClass = "", .windowInstance = ""},
                                  .kind = compositor::WindowKind::auxiliary,
                                  .skipsTaskBars = false,
                                  .isFullscreen = false,
                                  .isReady = true,
                                  .frame = {{1, 2}, {3, 4}}}));
}

TEST(ScriptMessages, AProcessThatCannotBeOneIsNone) {
    for (const char* number : {"0", "-1", "4294967296", "18446744073709551615", "-9223372036854775808"}) {
        const auto news = readNews(window(R"("kind":"standard","frame":[1,2,3,4],"process":)" + std::string(number)));
        ASSERT_TRUE(news) << number;
        EXPECT_EQ(std::get<ScriptMessages::WindowReport>(*news).window.clues.process, 0) << number;
    }
}

TEST(ScriptMessages, NamesThatAreTooLongOrHoldAZeroAreEmpty) {
    for (const std::string& name : {std::string(1025, 'x'), std::string("a\\u0000b")}) {
        const auto news = readNews(window(whole + R"(,"entry":")" + name + "\",\"class\":7"));
        ASSERT_TRUE(news);
        EXPECT_EQ(std::get<ScriptMessages::WindowReport>(*news).window.clues.applicationId, "");
        EXPECT_EQ(std::get<ScriptMessages::WindowReport>(*news).window.clues.windowClass, "");
    }
}

TEST(ScriptMessages, InvalidUtf8InANameIsReplaced) {
    const auto news = readNews(window(whole + ",\"class\":\"X\xe9\""));
    ASSERT_TRUE(news);
    EXPECT_EQ(std::get<ScriptMessages::WindowReport>(*news).window.clues.windowClass, "X\uFFFD");
}

TEST(ScriptMessages, WindowsThatAreNotWholeAreNone) {
    for (const char* rest : {
             R"("process":"7","kind":"standard","frame":[1,2,3,4])",
             R"("process":7.5,"kind":"standard","frame":[1,2,3,4])",
             R"("process":7,"kind":"window","frame":[1,2,3,4])",
             R"("process":7,"kind":"","frame":[1,2,3,4])",
             R"("process":7,"kind":"standard","frame":[1,2,3])",
             R"("process":7,"kind":"standard","frame":[1,2,3,4,5])",
             R"("process":7,"kind":"standard","frame":[1,2,-3,4])",
             R"("process":7,"kind":"standard","frame":[1,2,3,1e300])",
             R"("process":7,"kind":"standard","frame":[1,2,3,1e999])",
             R"("process":7,"kind":"standard","frame":["1",2,3,4])",
             R"("process":7,"kind":"standard","frame":{"x":1})",
             R"("process":7,"kind":"standard")",
         }) {
        EXPECT_FALSE(readNews(window(rest))) << rest;
    }
}

TEST(ScriptMessages, ATextWithoutEndIsNone) {
    EXPECT_FALSE(readNews(std::string(compositor::longestJson, ' ') + R"({"gone":"x"})"));
    EXPECT_FALSE(readNews(std::string(100'000, '[')));
    EXPECT_FALSE(readNews(R"({"window":)" + std::string(200'000, '[') + std::string(200'000, ']') + "}"));
}

TEST(ScriptMessages, ReadResults) {
    const auto results = readResults(R"([{"number":3,"outcome":"done","asked":[1,2,3,4],"frame":[5,6,7,8]},
                                         {"number":4,"outcome":"gone","pointer":[9,10]},
                                         {"number":5,"outcome":"refused","frame":"no"}])");
    ASSERT_TRUE(results);
    ASSERT_EQ(results->size(), 3U);
    EXPECT_EQ((*results)[0].number, 3U);
    EXPECT_EQ((*results)[0].outcome, ScriptMessages::Outcome::done);
    EXPECT_EQ((*results)[0].asked, (corvid::CGRect{{1, 2}, {3, 4}}));
    EXPECT_EQ((*results)[0].frame, (corvid::CGRect{{5, 6}, {7, 8}}));
    EXPECT_EQ((*results)[1].outcome, ScriptMessages::Outcome::gone);
    EXPECT_EQ((*results)[1].pointer, (corvid::CGPoint{9, 10}));
    EXPECT_EQ((*results)[2].outcome, ScriptMessages::Outcome::refused);
    EXPECT_EQ((*results)[2].frame, std::nullopt);
}

TEST(ScriptMessages, CommandsAreJson) {
    EXPECT_EQ(
        ScriptMessages::answer({ScriptMessages::place(1, "{a}", {{-0.5, 2}, {3, 4}}), ScriptMessages::pointer(2)}),
        R"([{"do":"place","frame":[-0.5,2.0,3.0,4.0],"number":1,"window":"{a}"},{"do":"pointer","number":2}])");
    EXPECT_EQ(ScriptMessages::placeOwn(3, 7, "A \"title\"\n", {1, 2}),
              R"({"at":[1.0,2.0],"do":"own","number":3,"process":7,"title":"A \"title\"\n"})");
    EXPECT_EQ(ScriptMessages::placeOwn(3, 7, "no \xff text", {1, 2}),
              "{\"at\":[1.0,2.0],\"do\":\"own\",\"number\":3,\"process\":7,\"title\":\"no \xef\xbf\xbd text\"}");
    EXPECT_EQ(ScriptMessages::answer({}), "[]");
    EXPECT_EQ(ScriptMessages::end(), "\"end\"");
}

} // namespace
} // namespace platform::kwin
