#include "Platform/ShellCore/ShellHolders.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"
#include "Tests/Platform/ShellCore/ShellFixture.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cstdlib>
#include <string>

namespace platform::shellcore {
namespace {

using corvid::Shortcut;
using Answers = ShortcutHolders::Answers;

constexpr Shortcut heldLeft{.keyCode = 123, .modifiers = Shortcut::control | Shortcut::option};
constexpr Shortcut heldC{.keyCode = 8, .modifiers = Shortcut::control | Shortcut::option};
const ShellHolders::Shell gnome{.name = "GNOME", .settings = linux::settings::gnome};
const ShortcutHolder ofTheShell{.heldBy = "GNOME", .purpose = KeyPurpose::workspaceOnTheLeft};

TEST(ShellHolders, AreReadFromWhatTheExtensionSays) {
    const auto said = ShellHolders::read(
        R"([{"binding":"switch-to-workspace-left","summary":"Nach links","keys":["<Control><Alt>Left"]},null,)"
        R"({"binding":"","summary":"","keys":[]},)"
        R"({"binding":"close","summary":"Schließen","keys":[3,"<Primary><Alt>c","<Super>q","<Super>w"]}])",
        {heldLeft, heldC, heldC, heldC}, gnome);
    EXPECT_EQ(
        said.answers,
        (Answers{ofTheShell, std::nullopt, std::nullopt,
                 ShortcutHolder{.heldBy = "GNOME", .purpose = "Schließen", .otherKeys = {{Shortcut::command, "Q"}}}}));
    EXPECT_EQ(said.unknown, std::vector<std::size_t>{2});
}

TEST(ShellHolders, CinnamonsAreNamedByItsOwnViews) {
    const auto said = ShellHolders::read(R"([{"binding":"switch-to-workspace-up","summary":"","keys":[]}])", {heldLeft},
                                         {.name = "Cinnamon", .settings = linux::settings::cinnamon});
    EXPECT_EQ(said.answers, (Answers{ShortcutHolder{.heldBy = "Cinnamon", .purpose = KeyPurpose::allWorkspaces}}));
}

TEST(ShellHolders, OfNonsenseAllAreUnknown) {
    for (const char* text : {"", "null", "[null]", "[null,null,null]", "{}", "[1,\"x\"]", "[{\"binding\":3},[]]"}) {
        const auto said = ShellHolders::read(text, {heldLeft, heldC}, gnome);
        EXPECT_EQ(said.answers, Answers(2)) << text;
        EXPECT_EQ(said.unknown.size(), 2U) << text;
    }
}

class AskedShell : public ShellTest {
protected:
    void SetUp() override {
        write(folder / "gsettings", "#!/bin/sh\necho \"org.gnome.desktop.wm.keybindings show-desktop "
                                    "['<Primary><Alt>c', '<Primary><Alt>Left']\"\n");
        ASSERT_EQ(::chmod((folder / "gsettings").c_str(), S_IRWXU), 0);
        formerPath = std::getenv("PATH");
        ASSERT_EQ(::setenv("PATH", (folder.path + ":" + formerPath).c_str(), 1), 0);
    }

    void TearDown() override { ::setenv("PATH", formerPath.c_str(), 1); }

    void openExtension() {
        shell->setContents(oneWindow);
        shell->setCore(true);
        ASSERT_TRUE(until([this] { return link->isOpen(); }));
    }

    Answers found() {
        std::optional<Answers> reported;
        const auto search = holders.find({heldLeft, heldC}, [&](const Answers& answers) { reported = answers; });
        EXPECT_FALSE(reported) << "in a later turn";
        EXPECT_TRUE(until([&] { return reported.has_value(); }));
        return reported.value_or(Answers{});
    }

    TemporaryFolder folder;
    ShellHolders holders{loop, *link, gnome};
    std::string formerPath;
    const ShortcutHolder inSettings{.heldBy = "GNOME", .purpose = KeyPurpose::showDesktop};
};

TEST_F(AskedShell, IsAskedByTheNumbersOfKeysAndKnowsWhatIsInForce) {
    openExtension();
    shell->answerWithText("Holders", R"([{"binding":"switch-to-workspace-left","summary":""},null])");
    EXPECT_EQ(found(), (Answers{ofTheShell, std::nullopt}));
    EXPECT_TRUE(shell->wasCalled("Holders [(113, 12), (54, 12)]")) << testing::PrintToString(shell->calls());
}

TEST_F(AskedShell, KeysThatItKeepsForOthersAreSearchedInTheSettings) {
    openExtension();
    shell->answerWithText("Holders", R"([{"binding":"switch-to-workspace-left"},{"binding":"","summary":""}])");
    ShortcutHolder ofC = inSettings;
    ofC.otherKeys = {Shortcut::control | Shortcut::option, "←"};
    EXPECT_EQ(found(), (Answers{ofTheShell, ofC}));
}

TEST_F(AskedShell, AnEarlierExtensionOrNoneLeavesAllToTheSettings) {
    EXPECT_EQ(found(), (Answers{inSettings, inSettings}));
    openExtension();
    shell->answer("Holders", [](sd_bus_message* call) {
        sd_bus_reply_method_errorf(call, "org.freedesktop.DBus.Error.UnknownMethod", "No such method");
    });
    EXPECT_EQ(found(), (Answers{inSettings, inSettings}));
}

TEST_F(AskedShell, ADestroyedSearchCallsNothing) {
    openExtension();
    shell->answerWithText("Holders", "[null]");
    holders.find({heldC}, [](const Answers&) { FAIL(); }).reset();
    catchUp();
}

} // namespace
} // namespace platform::shellcore
