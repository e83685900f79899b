#include "Platform/Hyprland/Binds.h"

#include <gtest/gtest.h>

namespace platform::hyprland {
namespace {

using compositor::Json;

constexpr std::uint32_t controlOptionMask = 0x1000 | 0x800;

Combination combination(std::uint32_t keyCode, std::uint32_t modifiers = controlOptionMask) {
    return Combination::of(keyCode, modifiers).value();
}

Bind bind(const std::string& changes) {
    Json object = Json::parse(
        R"({"modmask":12,"key":"Left","keycode":0,"submap":"","dispatcher":"workspace","arg":"-1","description":""})");
    object.merge_patch(Json::parse(changes));
    return readBinds(Json::array({object}))->at(0);
}

TEST(HyprlandBinds, ACombinationHasTheNumbersOfTheProtocol) {
    EXPECT_EQ(combination(123).keysym(), 0xff51U);
    EXPECT_EQ(combination(126).keysym(), 0xff52U);
    EXPECT_EQ(combination(124).keysym(), 0xff53U);
    EXPECT_EQ(combination(125).keysym(), 0xff54U);
    EXPECT_EQ(combination(8).keysym(), 0x63U);
    EXPECT_EQ(combination(2).keysym(), 0x64U);
    EXPECT_EQ(combination(8).protocolModifiers(), 6U);
    EXPECT_EQ(combination(8, 0x100 | 0x200).protocolModifiers(), 9U);
}

TEST(HyprlandBinds, ABindingIsOfACombinationByItsSymbolOrItsCode) {
    EXPECT_TRUE(bind("{}").isOf(combination(123)));
    EXPECT_TRUE(bind(R"({"key":"","keycode":113})").isOf(combination(123)));
    EXPECT_TRUE(bind(R"({"key":"code:113"})").isOf(combination(123)));
    EXPECT_TRUE(bind(R"({"key":"C"})").isOf(combination(8)));
    EXPECT_FALSE(bind("{}").isOf(combination(124)));
    EXPECT_FALSE(bind(R"({"modmask":4})").isOf(combination(123)));
    EXPECT_FALSE(bind(R"({"key":"","keycode":114})").isOf(combination(123)));
    EXPECT_FALSE(bind(R"({"key":""})").isOf(combination(123)));
}

TEST(HyprlandBinds, ABindingSaysWhatItDoes) {
    EXPECT_EQ(bind("{}").purpose, "workspace -1");
    EXPECT_EQ(bind(R"({"description":"To the left"})").purpose, "To the left");
    EXPECT_EQ(bind(R"({"dispatcher":"killactive","arg":""})").purpose, "killactive");
    EXPECT_EQ(bind(R"({"dispatcher":"__lua","arg":"7"})").purpose, "");
    EXPECT_EQ(bind(R"J({"dispatcher":"HL.Dispatcher(exec_cmd)","arg":"10"})J").purpose, "exec_cmd");
}

TEST(HyprlandBinds, OursAreKnown) {
    EXPECT_EQ(bind(R"({"dispatcher":"event","arg":"tessel:3"})").ours, 3U);
    EXPECT_EQ(bind(R"({"dispatcher":"__lua","arg":"7","description":"tessel:4"})").ours, 4U);
    EXPECT_EQ(bind(R"({"dispatcher":"exec","arg":"tessel:3"})").ours, 0U);
    EXPECT_EQ(bind(R"({"dispatcher":"event","arg":"tessel:x"})").ours, 0U);
}

TEST(HyprlandBinds, AProgramHasTheCombinationThatItsTriggerNames) {
    const auto holder = [](const std::string& trigger, std::uint32_t keyCode, std::uint32_t modifiers) {
        const Json object{{"app_id", "org.example.Rival"}, {"description", "Goes left"}, {"trigger", trigger}};
        return readHolder(Json::array({5, object}), combination(keyCode, modifiers));
    };
    const ShortcutHolder rival{.heldBy = "org.example.Rival", .purpose = "Goes left"};
    EXPECT_EQ(holder("CTRL+ALT+Left", 123, controlOptionMask), rival);
    EXPECT_EQ(holder("CTRL+ALT+c", 8, controlOptionMask), rival);
    EXPECT_EQ(holder("SUPER+SHIFT+d", 2, 0x100 | 0x200), rival);
    for (const auto* other : {"", "Left", "ALT+Left", "CTRL+ALT+SHIFT+Left", "CTRL+ALT+Right", "CTRL+ALT+", "X+Left"}) {
        EXPECT_EQ(holder(other, 123, controlOptionMask), std::nullopt) << other;
    }
    EXPECT_EQ(readHolder(Json::parse("{}"), combination(123)), std::nullopt);
    EXPECT_EQ(readHolder(Json::parse(R"([{"trigger":"CTRL+ALT+Left"}])"), combination(123)), std::nullopt);
}

TEST(HyprlandBinds, LeaveOutWhatMakesNoSense) {
    EXPECT_TRUE(readBinds(Json::parse(R"([5,{},{"modmask":-1},{"modmask":12,"mouse":true}])"))->empty());
    EXPECT_EQ(readBinds(Json::parse("{}")), std::nullopt);
}

TEST(HyprlandBinds, AreMadeAndRemovedInEachLanguage) {
    EXPECT_EQ(bindingRequest(Language::hyprlang, combination(123), 3), "keyword bind CTRL ALT,code:113,event,tessel:3");
    EXPECT_EQ(unbindingRequest(Language::hyprlang, combination(123), 3), "keyword unbind CTRL ALT,code:113");
    EXPECT_EQ(bindingRequest(Language::lua, combination(123), 3),
              "eval if tessel3 then tessel3:remove() tessel3=nil end "
              "tessel3=hl.bind(\"CTRL + ALT + code:113\",hl.dsp.event(\"tessel:3\"),{description=\"tessel:3\"})");
    EXPECT_EQ(unbindingRequest(Language::lua, combination(123), 3),
              "eval if tessel3 then tessel3:remove() tessel3=nil end");
}

} // namespace
} // namespace platform::hyprland
