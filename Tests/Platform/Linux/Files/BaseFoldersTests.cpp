#include "Platform/Linux/Files/BaseFolders.h"
#include "Platform/Linux/Settings/UserDefaults.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace platform::linux {
namespace {

using testing::ElementsAre;

TEST(BaseFolders, AreTheStandardOnesByDefault) {
    const BaseFolders folders = BaseFolders::of({.home = "/home/me"});
    EXPECT_THAT(folders.data, ElementsAre("/home/me/.local/share", "/usr/local/share", "/usr/share",
                                          "/home/me/.local/share/flatpak/exports/share",
                                          "/var/lib/flatpak/exports/share", "/var/lib/snapd/desktop"));
    EXPECT_EQ(folders.userConfiguration, "/home/me/.config");
    EXPECT_THAT(folders.systemConfiguration, ElementsAre("/etc/xdg"));
    EXPECT_EQ(folders.userState, "/home/me/.local/state");
}

TEST(BaseFolders, AreWhatTheEnvironmentNamesEachOnceAndAbsoluteOnly) {
    const BaseFolders folders = BaseFolders::of({
        .home = "/home/me",
        .dataHome = "/data/me/",
        .dataFolders = "/var/lib/flatpak/exports/share/::relative:/usr/share/:/usr/share:/",
        .configurationHome = "relative",
        .configurationFolders = "/etc/a:/etc/b",
        .stateHome = "/state",
    });
    EXPECT_THAT(folders.data, ElementsAre("/data/me", "/var/lib/flatpak/exports/share", "/usr/share", "/",
                                          "/data/me/flatpak/exports/share", "/var/lib/snapd/desktop"));
    EXPECT_EQ(folders.userConfiguration, "/home/me/.config");
    EXPECT_THAT(folders.systemConfiguration, ElementsAre("/etc/a", "/etc/b"));
    EXPECT_EQ(folders.userState, "/state");
}

TEST(BaseFolders, DoWithoutAHomeAndWithEmptyVariables) {
    const BaseFolders folders = BaseFolders::of({.home = "", .dataHome = "", .dataFolders = ""});
    EXPECT_THAT(folders.data, ElementsAre("/usr/local/share", "/usr/share", "/var/lib/flatpak/exports/share",
                                          "/var/lib/snapd/desktop"));
    EXPECT_EQ(folders.home, std::nullopt);
    EXPECT_EQ(folders.userConfiguration, std::nullopt);
    EXPECT_EQ(folders.userState, std::nullopt);
}

TEST(BaseFolders, HoldApplications) {
    const BaseFolders folders{.home = "/home/me", .data = {"/data", "/usr/share"}};
    EXPECT_THAT(folders.applications(), ElementsAre("/data/applications", "/usr/share/applications"));
}

TEST(BaseFolders, OfThisProcessAreWhereItsEnvironmentSays) {
    inChildProcess([] {
        ::setenv("HOME", "/home/somebody", 1);
        ::setenv("XDG_CONFIG_HOME", "/somewhere/else", 1);
        EXPECT_EQ(BaseFolders::ofThisProcess().userConfiguration, "/somewhere/else");
        EXPECT_EQ(UserDefaults::standardPath(), "/somewhere/else/tessel/preferences.plist");
        for (const char* relative : {"", "config", "./config", "~/config"}) {
            ::setenv("XDG_CONFIG_HOME", relative, 1);
            EXPECT_EQ(BaseFolders::ofThisProcess().userConfiguration, "/home/somebody/.config") << relative;
        }
        ::unsetenv("XDG_CONFIG_HOME");
        EXPECT_EQ(BaseFolders::ofThisProcess().userConfiguration, "/home/somebody/.config");
        EXPECT_EQ(UserDefaults::standardPath(), "/home/somebody/.config/tessel/preferences.plist");
    });
}

TEST(BaseFolders, OfThisProcessAreInTheHomeOfThePasswordDatabaseWithoutOneInTheEnvironment) {
    inChildProcess([] {
        const std::string home = ::getpwuid(::getuid())->pw_dir;
        ::unsetenv("XDG_CONFIG_HOME");
        for (const char* relative : {"", "relative"}) {
            ::setenv("HOME", relative, 1);
            EXPECT_EQ(BaseFolders::ofThisProcess().userConfiguration, home + "/.config");
        }
        ::unsetenv("HOME");
        EXPECT_EQ(BaseFolders::ofThisProcess().userConfiguration, home + "/.config");
    });
}

TEST(BaseFolders, HaveTheSystemsRuntimeFolderWhereTheEnvironmentNamesNone) {
    inChildProcess([] {
        ::setenv("XDG_RUNTIME_DIR", "/run/somewhere", 1);
        EXPECT_EQ(runtimeFolder(), "/run/somewhere");
        for (const bool isEmpty : {true, false}) {
            isEmpty ? ::setenv("XDG_RUNTIME_DIR", "", 1) : ::unsetenv("XDG_RUNTIME_DIR");
            EXPECT_EQ(runtimeFolder(), "/run/user/" + std::to_string(::getuid()));
        }
    });
}

} // namespace
} // namespace platform::linux
