#include "Platform/Linux/Services/SettingsPages.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace platform::linux {
namespace {

const std::string security = "x-apple.systempreferences:com.apple.preference.security?Privacy_";
const std::string accessibility = security + "Accessibility";
const std::string keyboard = "x-apple.systempreferences:com.apple.Keyboard-Settings.extension?Shortcuts";
const std::string olderKeyboard = "x-apple.systempreferences:com.apple.preference.keyboard?Shortcuts";

/// The pages as command lines.
std::vector<std::string> commands(const std::string& link, const std::string& desktop) {
    std::vector<std::string> lines;
    for (const SettingsPages::Page& page : SettingsPages::pages(link, desktop)) {
        lines.push_back(page.program);
        for (const std::string& argument : page.arguments) {
            lines.back() += " " + argument;
        }
    }
    return lines;
}

TEST(SettingsPages, EachDesktopHasItsOwn) {
    struct Row {
        std::string link;
        std::string desktop;
        std::vector<std::string> expected;
    };
    const std::vector<Row> rows{
        {accessibility, "GNOME", {"gnome-control-center universal-access"}},
        {security + "Automation", "GNOME", {"gnome-control-center privacy"}},
        {security + "ScreenCapture", "GNOME", {"gnome-control-center privacy"}},
        {keyboard, "GNOME", {"gnome-control-center keyboard"}},
        {accessibility, "KDE", {"systemsettings kcm_access", "systemsettings5 kcm_access"}},
        {keyboard, "KDE", {"systemsettings kcm_keys", "systemsettings5 kcm_keys"}},
        {accessibility, "XFCE", {"xfce4-accessibility-settings"}},
        {keyboard, "XFCE", {"xfwm4-settings", "xfce4-keyboard-settings"}},
        {keyboard, "MATE", {"mate-keybinding-properties", "mate-keyboard-properties"}},
        {keyboard, "X-Cinnamon", {"cinnamon-settings keyboard"}},
        {accessibility, "Cinnamon", {"cinnamon-settings universal-access"}},
        {keyboard, "ubuntu:GNOME", {"gnome-control-center keyboard"}},
        {keyboard, "XFCE:GNOME", {"xfwm4-settings", "xfce4-keyboard-settings", "gnome-control-center keyboard"}},
        {keyboard, "", {}},
        {keyboard, "openbox", {}},
        {keyboard, "gnome", {}},
        {keyboard + "x", "GNOME", {}},
        {security, "GNOME", {}},
        {"https://example.org", "GNOME", {}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(commands(row.link, row.desktop), row.expected) << row.link << " on " << row.desktop;
    }
}

TEST(SettingsPages, BothLinksToTheKeyboardShowTheSamePages) {
    for (const char* desktop : {"GNOME", "KDE", "XFCE", "MATE", "X-Cinnamon"}) {
        EXPECT_EQ(commands(keyboard, desktop), commands(olderKeyboard, desktop));
        EXPECT_FALSE(commands(keyboard, desktop).empty()) << desktop;
    }
}

TEST(SettingsPages, ALinkIsKnownByItsScheme) {
    EXPECT_TRUE(SettingsPages::isLink(accessibility));
    EXPECT_TRUE(SettingsPages::isLink("x-apple.systempreferences:something.new"));
    EXPECT_FALSE(SettingsPages::isLink("https://example.org/x-apple.systempreferences:"));
}

} // namespace
} // namespace platform::linux
