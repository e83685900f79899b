#include "Platform/Linux/Holders/CommonPurpose.h"
#include "Platform/Linux/Holders/OpenboxBindings.h"
#include "Platform/Linux/Holders/SettingLines.h"
#include "Platform/Linux/Holders/XfceHolders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>

namespace platform::linux {
namespace {

using corvid::Shortcut;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr Shortcut leftKey{.keyCode = 123, .modifiers = Shortcut::control | Shortcut::option};
constexpr Shortcut rightKey{.keyCode = 124, .modifiers = Shortcut::control | Shortcut::option};
constexpr Shortcut letterT{.keyCode = 17, .modifiers = Shortcut::control | Shortcut::option};

TEST(CommonPurpose, IsThatOfTheFirstGroupThatFits) {
    EXPECT_EQ(commonPurpose("org.gnome.desktop.wm.keybindings", "switch-to-workspace-up"), KeyPurpose::workspaceAbove);
    EXPECT_EQ(commonPurpose("org.cinnamon.desktop.keybindings.wm", "switch-to-workspace-up"),
              KeyPurpose::allWorkspaces);
    EXPECT_EQ(commonPurpose("org.cinnamon.desktop.keybindings.wm", "switch-to-workspace-down"), KeyPurpose::allWindows);
    EXPECT_EQ(commonPurpose("org.cinnamon.desktop.keybindings.wm", "switch-to-workspace-left"),
              KeyPurpose::workspaceOnTheLeft);
    EXPECT_EQ(commonPurpose("org.mate.Marco.global-keybindings", "show-desktop"), KeyPurpose::showDesktop);
    EXPECT_EQ(commonPurpose("xfwm4", "show_desktop_key"), KeyPurpose::showDesktop);
    EXPECT_EQ(commonPurpose("xfwm4", "show-desktop"), std::nullopt);
    EXPECT_EQ(commonPurpose("org.gnome.desktop.wm.keybindings", "close"), std::nullopt);
}

TEST(SettingLines, AreSchemaKeyAndValue) {
    const auto settings = readSettingLines("org.example.keys left ['<Super>Page_Up', '<Control><Alt>Left']\n"
                                           "org.example.keys none @as []\n"
                                           "\n"
                                           "nonsense\n"
                                           "org.example.keys one '<Alt>F2'\n"
                                           "org.example.keys quoted \"it's\"\n"
                                           "org.example.keys number uint32 3\n"
                                           "org.example.keys broken ['a");
    ASSERT_EQ(settings.size(), 6U);
    EXPECT_EQ(settings[0].schema, "org.example.keys");
    EXPECT_EQ(settings[0].key, "left");
    EXPECT_THAT(settings[0].texts(), ElementsAre("<Super>Page_Up", "<Control><Alt>Left"));
    EXPECT_THAT(settings[1].texts(), IsEmpty());
    EXPECT_THAT(settings[2].texts(), ElementsAre("<Alt>F2"));
    EXPECT_THAT(settings[3].texts(), ElementsAre("it's"));
    EXPECT_THAT(settings[4].texts(), IsEmpty());
    EXPECT_THAT(settings[5].texts(), IsEmpty());
}

TEST(XfceHolder, IsTheUsersBeforeTheSystems) {
    const std::string printed = "/commands/custom/<Primary><Alt>t              exo-open --launch TerminalEmulator\n"
                                "/commands/custom/override                     true\n"
                                "/commands/default/<Primary><Alt>Left          never\n"
                                "/xfwm4/default/<Primary><Alt>Left             left_workspace_key\n"
                                "/xfwm4/default/<Primary><Alt>Right            right_workspace_key\n"
                                "/xfwm4/custom/<Control><Alt>Right             maximize_window_key\n"
                                "/xfwm4/custom/<Control><Alt>Left/deeper       close_window_key\n";
    EXPECT_EQ(xfceHolder(printed, leftKey),
              (ShortcutHolder{.heldBy = "Xfce", .purpose = KeyPurpose::workspaceOnTheLeft}));
    EXPECT_EQ(xfceHolder(printed, rightKey), (ShortcutHolder{.heldBy = "Xfce", .purpose = "maximize window"}));
    EXPECT_EQ(xfceHolder(printed, letterT),
              (ShortcutHolder{.heldBy = "Xfce", .purpose = "exo-open --launch TerminalEmulator"}));
    EXPECT_EQ(xfceHolder(printed + "/xfwm4/custom/override true\n", leftKey), std::nullopt);
    EXPECT_EQ(xfceHolder("/xfwm4/custom/<Primary><Alt>Left \n", leftKey), std::nullopt);
    EXPECT_EQ(xfceHolder("", leftKey), std::nullopt);
}

TEST(OpenboxBindings, AreTheFirstActionOfEachKeyLastOneFirst) {
    const auto bindings = readOpenboxBindings(R"(<?xml version="1.0"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <keyboard>
    <chainQuitKey>C-g</chainQuitKey>
    <keybind key="C-A-Left">
      <action name="GoToDesktop"><to> left </to><wrap>no</wrap></action>
      <action name="Execute"><command>second</command></action>
    </keybind>
    <!-- <keybind key="C-A-Right"><action name="GoToDesktop"><to>right</to></action></keybind> -->
    <keybind key="W-e"><action name="Execute"><startupnotify><name>x</name></startupnotify><command>pcmanfm
      </command></action></keybind>
    <keybind key="C-A-x"><keybind key="t"><action name="Execute"><execute>xterm</execute></action></keybind></keybind>
    <keybind key="A-F5"><action name="GoToDesktop"><to>7</to></action></keybind>
    <keybind key="C-A-D"><action name="ToggleShowDesktop"/></keybind>
    <keybind key="X-d"><action name="Close"/></keybind>
    <keybind><action name="Close"/></keybind>
  </keyboard>
  <mouse><context name="Frame"><mousebind button="A-Left" action="Press"><action name="Focus"/></mousebind></context></mouse>
</openbox_config>)");
    const auto of = [](const char* keys, auto purpose) {
        return OpenboxBinding{.keys = readOpenboxKey(keys).value(), .purpose = purpose};
    };
    EXPECT_THAT(bindings, ElementsAre(of("C-A-d", KeyPurpose::showDesktop), of("A-F5", std::string("GoToDesktop")),
                                      of("C-A-x", std::string("xterm")), of("W-e", std::string("pcmanfm")),
                                      of("C-A-Left", KeyPurpose::workspaceOnTheLeft)));
}

TEST(OpenboxBindings, OfAFileThatBreaksOffAreThoseBefore) {
    const std::string whole = R"(<a><keybind key="C-a"><action name="Close"/></keybind><keybind key="C-b">)";
    EXPECT_EQ(readOpenboxBindings(whole).size(), 1U);
    EXPECT_EQ(readOpenboxBindings(whole + "</a></b>").size(), 1U);
    EXPECT_THAT(readOpenboxBindings("no XML"), IsEmpty());
    EXPECT_THAT(readOpenboxBindings("</keybind></keybind>"), IsEmpty());
}

RC_GTEST_PROP(Bindings, InAnyTextAreReadOrNot, (const std::string& text)) {
    for (const SettingLine& setting : readSettingLines(text)) {
        RC_ASSERT(!setting.schema.empty());
        static_cast<void>(setting.texts());
    }
    RC_ASSERT(readOpenboxBindings(text).empty());
    static_cast<void>(xfceHolder(text, leftKey));
}

} // namespace
} // namespace platform::linux
