#include "Platform/Hyprland/Words.h"

#include <gtest/gtest.h>

namespace platform::hyprland {
namespace {

TEST(HyprlandWords, TheLanguageIsThatOfTheConfiguration) {
    EXPECT_EQ(languageIn("session: 1\nconfigProvider: lua\n"), Language::lua);
    EXPECT_EQ(languageIn("configProvider: hyprlang\n"), Language::hyprlang);
    EXPECT_EQ(languageIn("unknown request"), Language::hyprlang);
    EXPECT_EQ(languageIn(""), Language::hyprlang);
}

TEST(HyprlandWords, AnAnswerShowsThatTheLanguageIsAnother) {
    EXPECT_TRUE(refusesLanguage("eval is only supported with the lua config manager", Language::lua));
    EXPECT_TRUE(refusesLanguage("unknown request", Language::lua));
    EXPECT_TRUE(refusesLanguage("current config provider doesn't support dispatch", Language::hyprlang));
    EXPECT_TRUE(
        refusesLanguage("...\n\n → Note: dispatch in lua is a shorthand for hl.dispatch(...)", Language::hyprlang));
    EXPECT_FALSE(refusesLanguage("ok", Language::lua));
    EXPECT_FALSE(refusesLanguage("ok\n\n\nWindow is fullscreen", Language::hyprlang));
}

TEST(HyprlandWords, OnlyAddressesArePartOfARequest) {
    EXPECT_TRUE(isAddress("0x55d0c0ffee10"));
    for (const char* other : {"", "0x", "55d0", "0x12;", "0x1\"", "0xG", "0x5A", "0x11112222333344445"}) {
        EXPECT_FALSE(isAddress(other)) << other;
    }
}

TEST(HyprlandWords, InLuaAWindowIsReleasedResizedAndMovedAtOnce) {
    EXPECT_EQ(placingRequest(Language::lua, "0x7", {.isMaximized = true, .isTiled = true}, {{-8.4, 23}, {960, 0.2}}),
              R"(eval hl.dispatch(hl.dsp.window.fullscreen({mode="maximized",action="unset",window="address:0x7"})))"
              R"( hl.dispatch(hl.dsp.window.float({action="on",window="address:0x7"})))"
              R"( hl.dispatch(hl.dsp.window.move({x=960,y=23,relative=false,window="address:0x7"})))"
              R"( hl.dispatch(hl.dsp.window.resize({x=960,y=1,relative=false,window="address:0x7"})))"
              R"( hl.dispatch(hl.dsp.window.move({x=-8,y=23,relative=false,window="address:0x7"})))");
}

TEST(HyprlandWords, InHyprlangAWindowIsReleasedResizedAndMovedAtOnce) {
    EXPECT_EQ(
        placingRequest(Language::hyprlang, "0x7", {.isMaximized = true, .isTiled = true}, {{-8.4, 23}, {960, 1057}}),
        "[[BATCH]]dispatch fullscreen 1;dispatch setfloating address:0x7;"
        "dispatch movewindowpixel exact 960 1080,address:0x7;"
        "dispatch resizewindowpixel exact 960 1057,address:0x7;dispatch movewindowpixel exact -8 23,address:0x7");
    EXPECT_EQ(placingRequest(Language::hyprlang, "0x7", {}, {{0, 1e9}, {1, 1}}),
              "[[BATCH]]dispatch movewindowpixel exact 1 1048576,address:0x7;"
              "dispatch resizewindowpixel exact 1 1,address:0x7;"
              "dispatch movewindowpixel exact 0 1048576,address:0x7");
}

TEST(HyprlandWords, APopoverThatIsPinnedIsNotUnpinned) {
    EXPECT_EQ(popoverRequest(Language::hyprlang, "0x7", true, {5, 6}),
              "[[BATCH]]dispatch setfloating address:0x7;dispatch movewindowpixel exact 5 6,address:0x7");
    EXPECT_EQ(popoverRequest(Language::hyprlang, "0x7", false, {5, 6}),
              "[[BATCH]]dispatch setfloating address:0x7;dispatch pin address:0x7;"
              "dispatch movewindowpixel exact 5 6,address:0x7");
}

} // namespace
} // namespace platform::hyprland
