#include "Platform/Linux/Applications/DesktopEntry.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace platform::linux {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view head = "[Desktop Entry]\nType=Application\n";

DesktopEntry parsed(std::string_view lines, const std::vector<std::string>& desktops = {}) {
    const std::optional<DesktopEntry> entry = DesktopEntry::parse(std::string(head) + std::string(lines), desktops);
    EXPECT_TRUE(entry) << lines;
    return entry.value_or(DesktopEntry{});
}

TEST(DesktopEntry, HasWhatTheFileSays) {
    const DesktopEntry entry = parsed("Name=Web Browser\nIcon=browser\nExec=browser %u\nTryExec=/usr/bin/browser\n"
                                      "StartupWMClass=Browser\nX-Flatpak=org.example.Browser\n"
                                      "X-SnapInstanceName=browser\nTerminal=true\n"
                                      "[Desktop Action new]\nName=New Window\nExec=browser --new\n");
    EXPECT_TRUE(entry.isApplication);
    EXPECT_FALSE(entry.isHidden);
    EXPECT_TRUE(entry.isListed);
    EXPECT_TRUE(entry.isForThisDesktop);
    EXPECT_TRUE(entry.isAutostartEnabled);
    EXPECT_TRUE(entry.needsTerminal);
    EXPECT_EQ(entry.name, "Web Browser");
    EXPECT_EQ(entry.icon, "browser");
    EXPECT_EQ(entry.exec, "browser %u");
    EXPECT_EQ(entry.tryExec, "/usr/bin/browser");
    EXPECT_EQ(entry.windowClass, "Browser");
    EXPECT_EQ(entry.flatpak, "org.example.Browser");
    EXPECT_EQ(entry.snapInstance, "browser");
}

TEST(DesktopEntry, IsNamedInTheUsersLanguage) {
    constexpr std::string_view lines =
        "Name=Calculator\nName[de]=Rechner\nName[pt_BR]=Calculadora\nName[fr]=\xff\xfe\n";
    const auto nameIn = [&](const char* language, std::string_view expected) {
        inChildProcess([&] {
            ASSERT_EQ(::setenv("LANGUAGE", language, 1), 0);
            ASSERT_EQ(::setenv("LC_ALL", "en_US.UTF-8", 1), 0);
            EXPECT_EQ(parsed(lines).name, expected) << language;
        });
    };
    nameIn("de_AT:fr", "Rechner");
    nameIn("pt_BR", "Calculadora");
    nameIn("pt_PT:de", "Rechner");
    nameIn("ja", "Calculator");
}

TEST(DesktopEntry, IsForTheDesktopsThatItNames) {
    struct Case {
        std::string lines;
        std::vector<std::string> desktops;
        bool expected;
    };
    const std::vector<Case> cases{
        {"", {"GNOME"}, true},
        {"OnlyShowIn=GNOME;Unity;\n", {"ubuntu", "GNOME"}, true},
        {"OnlyShowIn=GNOME;\n", {"KDE"}, false},
        {"OnlyShowIn=GNOME;\n", {}, false},
        {"NotShowIn=KDE\n", {"KDE"}, false},
        {"NotShowIn=KDE;\n", {"XFCE"}, true},
        {"OnlyShowIn=GNOME;\nNotShowIn=ubuntu;\n", {"ubuntu", "GNOME"}, false},
        {"OnlyShowIn=ubuntu;\nNotShowIn=GNOME;\n", {"ubuntu", "GNOME"}, true},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(parsed(each.lines, each.desktops).isForThisDesktop, each.expected) << each.lines;
    }
}

TEST(DesktopEntry, CanBeHiddenUnlistedOrSwitchedOff) {
    EXPECT_TRUE(parsed("Hidden=true\n").isHidden);
    EXPECT_FALSE(parsed("Hidden=false\n").isHidden);
    EXPECT_FALSE(parsed("Hidden=perhaps\n").isHidden);
    EXPECT_FALSE(parsed("NoDisplay=true\n").isListed);
    EXPECT_FALSE(parsed("X-GNOME-Autostart-enabled=false\n").isAutostartEnabled);
}

TEST(DesktopEntry, IsNoneWithoutItsGroupOrWithLinesThatMeanNothing) {
    EXPECT_FALSE(DesktopEntry::parse(""));
    EXPECT_FALSE(DesktopEntry::parse({}));
    EXPECT_FALSE(DesktopEntry::parse("[Other]\nType=Application\n"));
    EXPECT_FALSE(DesktopEntry::parse("Type=Application\n[Desktop Entry]\n"));
    EXPECT_FALSE(DesktopEntry::parse("[Desktop Entry]\nthis is no key\n"));
    EXPECT_FALSE(DesktopEntry::parse("\x7f\x45\x4c\x46\0\0\0"sv));
    EXPECT_FALSE(DesktopEntry::parse("[Desktop Entry]\nType=Link\n")->isApplication);
    EXPECT_FALSE(DesktopEntry::parse("[Desktop Entry]\nName=A\n")->isApplication);
}

TEST(DesktopEntry, TakesWhatCanBeReadOfADamagedOne) {
    EXPECT_EQ(parsed("Name=First\nName=Second\n").name, "Second");
    const DesktopEntry entry = parsed("Name=\xff\xfe\nIcon=good\nExec=\xff\nTryExec=a \\q\n");
    EXPECT_EQ(entry.name, "");
    EXPECT_EQ(entry.icon, "good");
    EXPECT_EQ(entry.exec, "");
    EXPECT_EQ(entry.tryExec, "a \\q");
}

TEST(DesktopEntry, IsReadFromRegularFilesOfReasonableSizeOnly) {
    const TemporaryFolder folder;
    const std::string entry = std::string(head) + "Name=A\n";
    write(folder / "good.desktop", entry);
    ASSERT_EQ(::symlink("good.desktop", (folder / "link.desktop").c_str()), 0);
    EXPECT_TRUE(DesktopEntry::read(folder / "good.desktop"));
    EXPECT_TRUE(DesktopEntry::read(folder / "link.desktop"));

    write(folder / "exact.desktop", entry + std::string(DesktopEntry::largestFile - entry.size(), '#'));
    write(folder / "huge.desktop", entry + std::string(DesktopEntry::largestFile - entry.size() + 1, '#'));
    std::filesystem::create_directory(folder / "folder.desktop");
    ASSERT_EQ(::mkfifo((folder / "pipe.desktop").c_str(), 0600), 0);
    ASSERT_EQ(::symlink("/dev/zero", (folder / "device.desktop").c_str()), 0);
    ASSERT_EQ(::symlink("circle.desktop", (folder / "circle.desktop").c_str()), 0);
    EXPECT_TRUE(DesktopEntry::read(folder / "exact.desktop"));
    for (const char* name : {"huge", "folder", "pipe", "device", "circle", "missing"}) {
        EXPECT_FALSE(DesktopEntry::read(folder / name + ".desktop")) << name;
    }
}

RC_GTEST_PROP(DesktopEntryProperties, NoBytesDoHarm, (const std::string& bytes)) {
    static_cast<void>(DesktopEntry::parse(bytes));
    const std::optional<DesktopEntry> entry = DesktopEntry::parse(std::string(head) + "Icon=x\nName=" + bytes);
    RC_ASSERT(!entry || entry->isApplication || bytes.contains('\n'));
}

} // namespace
} // namespace platform::linux
