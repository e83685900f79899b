#include "Platform/Linux/Applications/DesktopEntry.h"
#include "Platform/Linux/Applications/ExecLine.h"
#include "Platform/Linux/Applications/KeyFile.h"
#include "Platform/Linux/Services/AutostartLoginItem.h"
#include "Tests/Platform/Linux/Applications/DesktopEntryFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <ostream>
#include <string>

namespace platform {

void PrintTo(LoginItemStatus status, std::ostream* stream) {
    *stream << static_cast<int>(status);
}

} // namespace platform

namespace platform::linux {
namespace {

using enum LoginItemStatus;
using testing::AllOf;
using testing::HasSubstr;

constexpr const char* fileName = "org.corvid.Tessel.desktop";

struct AutostartLoginItemTest : testing::Test {
    AutostartLoginItemTest() { makeProgram(program); }

    static void makeProgram(const std::string& path) {
        writeBelow(path, "");
        std::filesystem::permissions(path, std::filesystem::perms::all);
    }

    [[nodiscard]] AutostartLoginItem item() const {
        return AutostartLoginItem({
            .userFolder = folder / "home/.config/autostart",
            .systemFolders = {folder / "first", folder / "second"},
            .program = program,
            .currentDesktops = {"GNOME"},
            .searchPath = folder / "bin",
        });
    }

    [[nodiscard]] LoginItemStatus status() const { return item().status(); }

    /// An entry for the program with these lines.
    [[nodiscard]] std::string entry(const std::string& lines) const {
        return "[Desktop Entry]\nType=Application\nName=Tessel\nExec=" + ExecLine::quoted(program) + "\n" + lines;
    }

    TemporaryFolder folder;
    std::string program = folder / "bin/tessel";
    std::string own = folder / "home/.config/autostart/" + fileName;
    std::string ofAll = folder / "second/" + fileName;
};

TEST_F(AutostartLoginItemTest, IsNotRegisteredAtFirst) {
    EXPECT_EQ(status(), notRegistered);
    EXPECT_TRUE(item().unregisterItem());
    EXPECT_EQ(status(), notRegistered);
    EXPECT_FALSE(std::filesystem::exists(folder / "home"));
}

TEST_F(AutostartLoginItemTest, RegistersAndUnregistersAsOftenAsAsked) {
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(item().registerItem());
        EXPECT_TRUE(item().registerItem());
        EXPECT_EQ(status(), enabled);
        EXPECT_TRUE(item().unregisterItem());
        EXPECT_TRUE(item().unregisterItem());
        EXPECT_EQ(status(), notRegistered);
        EXPECT_FALSE(std::filesystem::exists(own));
    }
}

TEST_F(AutostartLoginItemTest, WritesAnEntryThatEveryDesktopUnderstands) {
    program = folder / "a place/100% $HOME \"quoted\" back\\slash/tessel";
    makeProgram(program);
    ASSERT_TRUE(item().registerItem());
    EXPECT_EQ(status(), enabled);

    const KeyFile file = KeyFile::parse(contentsOf(own)).value();
    constexpr const char* group = "Desktop Entry";
    EXPECT_EQ(file.text(group, "Type"), "Application");
    EXPECT_EQ(file.text(group, "Name"), "Tessel");
    EXPECT_EQ(file.flag(group, "Terminal"), false);
    EXPECT_EQ(file.flag(group, "X-GNOME-Autostart-enabled"), true);
    EXPECT_EQ(file.text(group, "X-KDE-autostart-after"), "panel");
    EXPECT_EQ(file.flag(group, "X-LXQt-Need-Tray"), true);
    EXPECT_GT(std::stoi(file.text(group, "X-GNOME-Autostart-Delay").value_or("0")), 0);
    EXPECT_GT(std::stoi(file.text(group, "X-MATE-Autostart-Delay").value_or("0")), 0);
    for (const char* key : {"Hidden", "OnlyShowIn", "NotShowIn", "X-GNOME-Autostart-Phase"}) {
        EXPECT_EQ(file.text(group, key), std::nullopt) << key;
    }
    EXPECT_EQ(ExecLine::program(file.text(group, "Exec").value()), (ExecLine::Program{.name = program}));
    EXPECT_EQ(file.text(group, "TryExec"), program);
}

TEST_F(AutostartLoginItemTest, StartsNothingOnceTheProgramIsRemoved) {
    ASSERT_TRUE(item().registerItem());
    std::filesystem::remove(program);
    const DesktopEntry left = DesktopEntry::read(own).value();
    EXPECT_FALSE(ExecLine::locate(left.tryExec, folder / "bin"));
    EXPECT_EQ(status(), notFound);
}

TEST_F(AutostartLoginItemTest, ReportsOtherProgramsChangesToTheEntry) {
    struct Case {
        std::string contents;
        LoginItemStatus expected;
    };
    const std::vector<Case> cases{
        {entry(""), enabled},
        {entry("X-GNOME-Autostart-enabled=true\nHidden=false\n"), enabled},
        {entry("OnlyShowIn=GNOME;\n"), enabled},
        {entry("TryExec=tessel\n"), enabled},
        {entry("Hidden=true\n"), requiresApproval},
        {"[Desktop Entry]\nHidden=true\n", requiresApproval},
        {entry("X-GNOME-Autostart-enabled=false\n"), requiresApproval},
        {entry("NotShowIn=GNOME;\n"), requiresApproval},
        {entry("OnlyShowIn=KDE;\n"), requiresApproval},
        {entry("TryExec=missing\n"), notFound},
        {entry("Exec=/missing/tessel\n"), notFound},
        {"[Desktop Entry]\nType=Application\nName=Tessel\n", notFound},
        {"[Desktop Entry]\nType=Link\n", notRegistered},
        {"", notRegistered},
        {"no desktop entry", notRegistered},
    };
    for (const Case& each : cases) {
        writeBelow(own, each.contents);
        EXPECT_EQ(status(), each.expected) << each.contents;
    }
}

TEST_F(AutostartLoginItemTest, SwitchesOnWhatADesktopSwitchedOff) {
    for (const char* line : {"Hidden=true\n", "X-GNOME-Autostart-enabled=false\n", "NotShowIn=GNOME;\n"}) {
        writeBelow(own, entry(line));
        ASSERT_EQ(status(), requiresApproval);
        EXPECT_TRUE(item().registerItem());
        EXPECT_EQ(status(), enabled) << line;
    }
}

TEST_F(AutostartLoginItemTest, CountsAnEntryForAllUsersUnlessTheUserHasOne) {
    writeBelow(ofAll, entry(""));
    EXPECT_EQ(status(), enabled);
    writeBelow(folder / "first/" + fileName, entry("Hidden=true\n"));
    EXPECT_EQ(status(), requiresApproval) << "the earlier folder counts";
    writeBelow(own, entry(""));
    EXPECT_EQ(status(), enabled);
}

TEST_F(AutostartLoginItemTest, HidesAnEntryForAllUsers) {
    writeBelow(ofAll, entry(""));
    ASSERT_TRUE(item().unregisterItem());
    EXPECT_EQ(status(), notRegistered);
    EXPECT_TRUE(DesktopEntry::read(own).value().isHidden);
    EXPECT_FALSE(DesktopEntry::read(ofAll).value().isHidden);
    ASSERT_TRUE(item().registerItem());
    EXPECT_EQ(status(), enabled);
}

TEST_F(AutostartLoginItemTest, HidesAnEntryForAllUsersAlsoWithoutTheProgram) {
    writeBelow(ofAll, entry(""));
    std::filesystem::remove(program);
    EXPECT_EQ(status(), notFound);
    EXPECT_TRUE(item().unregisterItem());
    EXPECT_EQ(status(), notRegistered);
}

TEST_F(AutostartLoginItemTest, FailsWithAReasonWhereItCannotWrite) {
    writeBelow(folder / "home", "a file where a folder belongs");
    const auto registered = item().registerItem();
    ASSERT_FALSE(registered);
    EXPECT_THAT(registered.error(), AllOf(HasSubstr(folder / "home"), HasSubstr("Not a directory")));
    EXPECT_EQ(status(), notRegistered);
    EXPECT_TRUE(item().unregisterItem()) << "there is nothing to remove";
}

TEST_F(AutostartLoginItemTest, LeavesEverythingAsItIsWhereItMayNotWrite) {
    writeBelow(own, entry("Hidden=true\n"));
    const std::string autostart = folder / "home/.config/autostart";
    asOrdinaryUser(folder, [&] {
        // If root runs the tests, this folder stays root's anyway, and the change fails.
        static_cast<void>(::chmod(autostart.c_str(), 0500));
        const auto registered = item().registerItem();
        ASSERT_FALSE(registered);
        EXPECT_THAT(registered.error(), AllOf(HasSubstr(autostart), HasSubstr("Permission denied")));
        EXPECT_EQ(status(), requiresApproval);
        const auto unregistered = item().unregisterItem();
        ASSERT_FALSE(unregistered);
        EXPECT_THAT(unregistered.error(), AllOf(HasSubstr(own), HasSubstr("Permission denied")));
        EXPECT_EQ(status(), requiresApproval);
    });
}

TEST_F(AutostartLoginItemTest, ReplacesTheFileThatALinkLeadsToAndRemovesTheLink) {
    writeBelow(folder / "dotfiles/entry", entry("Hidden=true\n"));
    std::filesystem::create_directories(folder / "home/.config/autostart");
    std::filesystem::create_symlink(folder / "dotfiles/entry", own);
    ASSERT_TRUE(item().registerItem());
    EXPECT_TRUE(std::filesystem::is_symlink(own));
    EXPECT_EQ(status(), enabled);
    ASSERT_TRUE(item().unregisterItem());
    EXPECT_FALSE(std::filesystem::exists(own));
    EXPECT_TRUE(std::filesystem::exists(folder / "dotfiles/entry"));
}

TEST_F(AutostartLoginItemTest, DoesNotRegisterAProgramThatIsNotThere) {
    const auto places = [&](std::optional<std::string> path) {
        return AutostartLoginItem::Places{.userFolder = folder / "home",
                                          .systemFolders = {},
                                          .program = std::move(path),
                                          .currentDesktops = {},
                                          .searchPath = ""};
    };
    for (const auto& path : {std::optional<std::string>(), std::optional(folder / "missing")}) {
        AutostartLoginItem item(places(path));
        const auto registered = item.registerItem();
        ASSERT_FALSE(registered);
        EXPECT_THAT(registered.error(), HasSubstr(path.value_or("the program")));
        EXPECT_EQ(item.status(), notRegistered);
    }
}

TEST_F(AutostartLoginItemTest, IsNotFoundWithoutAHome) {
    AutostartLoginItem item(
        {.userFolder = {}, .systemFolders = {}, .program = program, .currentDesktops = {}, .searchPath = ""});
    EXPECT_EQ(item.status(), notFound);
    EXPECT_FALSE(item.registerItem());
    EXPECT_TRUE(item.unregisterItem());
}

TEST(AutostartPlaces, NameThisProgram) {
    EXPECT_EQ(AutostartLoginItem::Places::ofThisProcess().program, std::filesystem::read_symlink("/proc/self/exe"));
}

} // namespace
} // namespace platform::linux
