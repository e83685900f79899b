#include "Platform/Linux/Holders/SettingsHolders.h"
#include "Platform/Linux/Holders/XfceHolders.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <optional>

namespace platform::linux {
namespace {

using corvid::Shortcut;
using testing::ElementsAre;

constexpr std::uint32_t ctrlAlt = Shortcut::control | Shortcut::option;
constexpr Shortcut arrowLeft{.keyCode = 123, .modifiers = ctrlAlt};
constexpr Shortcut arrowUp{.keyCode = 126, .modifiers = ctrlAlt};
constexpr Shortcut keyC{.keyCode = 8, .modifiers = ctrlAlt};
constexpr Shortcut keyD{.keyCode = 2, .modifiers = ctrlAlt};

/// A simulation of the desktop's settings tool: each command line prints a file of that name.
class PlayedTools : public testing::Test {
protected:
    TemporaryFolder folder;
    MainLoop loop;

    void SetUp() override {
        for (const char* tool : {"gsettings", "xfconf-query"}) {
            const std::string path = folder / tool;
            write(path, "#!/bin/sh\nname=$(printf %s \"$0 $*\" | sed 's:.*/\\([a-z-]* \\):\\1:' | tr '/ ' '__')\n"
                        "echo \"$*\" >>" +
                            folder.path + "/history\nexec cat \"" + folder.path + "/$name\"\n");
            ASSERT_EQ(::chmod(path.c_str(), S_IRWXU), 0);
        }
        formerPath = std::getenv("PATH");
        ASSERT_EQ(::setenv("PATH", (folder.path + ":" + formerPath).c_str(), 1), 0);
    }

    void TearDown() override { ::setenv("PATH", formerPath.c_str(), 1); }

    void prints(const std::string& commandLine, const std::string& text) const {
        std::string name = commandLine;
        std::ranges::replace(name, ' ', '_');
        write(folder / name, text);
    }

    std::optional<ShortcutHolders::Answers> answersOf(ShortcutHolders& holders,
                                                      const std::vector<Shortcut>& shortcuts) {
        std::optional<ShortcutHolders::Answers> reported;
        const auto search =
            holders.find(shortcuts, [&](const ShortcutHolders::Answers& answers) { reported = answers; });
        EXPECT_FALSE(reported) << "in a later turn";
        const Instant deadline = loop.now() + std::chrono::seconds(20);
        while (search && !reported && loop.now() < deadline) {
            sd_event_run(loop.handle(), std::uint64_t{2000});
        }
        return reported;
    }

private:
    std::string formerPath;
};

TEST_F(PlayedTools, SettingsAreSaidInTheDesktopsWordsWhereTheyAreNotCommon) {
    prints("gsettings list-recursively",
           "org.gnome.desktop.wm.keybindings close ['<Alt>F4', '<Control><Alt>c']\n"
           "org.gnome.desktop.wm.keybindings switch-to-workspace-left ['<Super>Page_Up', '<Control><Alt>Left']\n"
           "org.gnome.desktop.wm.keybindings show-desktop ['<Primary><Super>d', '<Primary><Alt>d']\n"
           "org.cinnamon.desktop.keybindings.wm panel-run-dialog ['<Control><Alt>Up']\n");
    prints("gsettings describe org.gnome.desktop.wm.keybindings close", "Fenster schließen\nund mehr\n");
    SettingsHolders holders(loop, "GNOME", settings::gnome);
    const auto reported = answersOf(holders, {arrowLeft, arrowUp, keyC, keyD});
    ASSERT_TRUE(reported);
    const auto ofGnome = [](auto purpose, std::uint32_t modifiers, const char* name) {
        return ShortcutHolder{.heldBy = "GNOME", .purpose = purpose, .otherKeys = {{modifiers, name}}};
    };
    EXPECT_THAT(*reported, ElementsAre(ofGnome(KeyPurpose::workspaceOnTheLeft, Shortcut::command, "Page Up"),
                                       std::nullopt, ofGnome("Fenster schließen", Shortcut::option, "F4"),
                                       ofGnome(KeyPurpose::showDesktop, Shortcut::control | Shortcut::command, "D")));
}

TEST_F(PlayedTools, AKeyThatIsDescribedNowhereGoesByItsName) {
    prints("gsettings list-recursively", "org.mate.Marco.global-keybindings run-command-1 '<Primary><Alt>c'\n");
    SettingsHolders holders(loop, "MATE", settings::mate);
    EXPECT_THAT(answersOf(holders, {keyC}).value(),
                ElementsAre(ShortcutHolder{.heldBy = "MATE", .purpose = "run-command-1"}));
}

TEST_F(PlayedTools, ShortcutsOfTheUsersOwnGoByTheNamesThatTheUserGaveThem) {
    prints("gsettings list-recursively",
           "org.gnome.settings-daemon.plugins.media-keys custom-keybindings ['/custom0/', '/custom1/']\n");
    prints("gsettings list-recursively org.gnome.settings-daemon.plugins.media-keys.custom-keybinding:_custom0_",
           "S.custom-keybinding binding '<Alt>x'\nS.custom-keybinding name 'Other'\n");
    prints("gsettings list-recursively org.gnome.settings-daemon.plugins.media-keys.custom-keybinding:_custom1_",
           "S.custom-keybinding binding '<Control><Alt>c'\nS.custom-keybinding name 'Calculator'\n");
    SettingsHolders holders(loop, "GNOME", settings::gnome);
    EXPECT_THAT(answersOf(holders, {keyC}).value(),
                ElementsAre(ShortcutHolder{.heldBy = "GNOME", .purpose = "Calculator"}));
}

TEST_F(PlayedTools, ThoseOfCinnamonAreListedByTheEndsOfTheirPaths) {
    prints("gsettings list-recursively", "org.cinnamon.desktop.keybindings custom-list ['custom3']\n");
    prints("gsettings list-recursively org.cinnamon.desktop.keybindings.custom-keybinding:"
           "_org_cinnamon_desktop_keybindings_custom-keybindings_custom3_",
           "S.custom-keybinding binding ['<Primary><Alt>d']\nS.custom-keybinding name 'Notes'\n");
    SettingsHolders holders(loop, "Cinnamon", settings::cinnamon);
    EXPECT_THAT(answersOf(holders, {keyD}).value(),
                ElementsAre(ShortcutHolder{.heldBy = "Cinnamon", .purpose = "Notes"}));
}

TEST_F(PlayedTools, AToolThatFailsKnowsNobody) {
    SettingsHolders holders(loop, "GNOME", settings::gnome);
    EXPECT_THAT(answersOf(holders, {keyC, keyD}).value(), ElementsAre(std::nullopt, std::nullopt));
    XfceHolders xfce(loop);
    EXPECT_THAT(answersOf(xfce, {keyC}).value(), ElementsAre(std::nullopt));
}

TEST_F(PlayedTools, WithoutAToolThereIsNoSearch) {
    ASSERT_EQ(::setenv("PATH", "/nonexistent", 1), 0);
    SettingsHolders holders(loop, "GNOME", settings::gnome);
    EXPECT_EQ(holders.find({keyC}, [](const auto&) { FAIL(); }), nullptr);
    XfceHolders xfce(loop);
    EXPECT_EQ(xfce.find({keyC}, [](const auto&) { FAIL(); }), nullptr);
}

TEST_F(PlayedTools, XfceIsAskedForItsChannel) {
    prints("xfconf-query --channel xfce4-keyboard-shortcuts --list --verbose",
           "/xfwm4/custom/<Primary><Alt>Left    left_workspace_key\n");
    XfceHolders holders(loop);
    EXPECT_THAT(answersOf(holders, {keyC, arrowLeft}).value(),
                ElementsAre(std::nullopt, ShortcutHolder{.heldBy = "Xfce", .purpose = KeyPurpose::workspaceOnTheLeft}));
}

} // namespace
} // namespace platform::linux
