#include "Platform/GnomeShell/ExtensionFiles.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace platform::gnomeshell {
namespace {

namespace fs = std::filesystem;

class FilesOfTheExtension : public testing::Test {
protected:
    FilesOfTheExtension() {
        for (const char* form : {"legacy", "esm"}) {
            fs::create_directories(folder / "source/" + form);
            write(folder / "source/" + form + "/metadata.json", std::string(form) + " description");
            write(folder / "source/" + form + "/extension.js", std::string(form) + " script");
        }
        fs::create_directories(folder / "system");
    }

    [[nodiscard]] std::string script() const { return contentsOf(place + "/extension.js"); }

    TemporaryFolder folder;
    std::string place = folder / "home/gnome-shell/extensions/tessel@corvid.org";
    ExtensionFiles files{folder / "source", {folder / "home", folder / "system"}};
};

TEST_F(FilesOfTheExtension, AreInstalledInTheFormThatTheShellReads) {
    EXPECT_TRUE(files.install("43.9"));
    EXPECT_EQ(script(), "legacy script");
    EXPECT_EQ(contentsOf(place + "/metadata.json"), "legacy description");
    EXPECT_EQ(namesIn(place).size(), 2U);
    for (const auto& [version, form] : {std::pair("44.0", "legacy"),
                                        {"45.rc", "esm"},
                                        {"48.7", "esm"},
                                        {"", "legacy"},
                                        {"new", "legacy"},
                                        {"100", "esm"}}) {
        EXPECT_TRUE(files.install(version)) << version;
        EXPECT_EQ(script(), std::string(form) + " script") << version;
    }
}

TEST_F(FilesOfTheExtension, AreNotInstalledWhereTheyAreForAllUsers) {
    fs::create_directories(folder / "system/gnome-shell/extensions/tessel@corvid.org");
    write(folder / "system/gnome-shell/extensions/tessel@corvid.org/metadata.json", "");
    EXPECT_TRUE(files.install("43.9"));
    EXPECT_FALSE(fs::exists(folder / "home"));
}

TEST_F(FilesOfTheExtension, LeaveALinkOfTheUsersAlone) {
    fs::create_directories(folder / "home/gnome-shell/extensions");
    fs::create_directories(folder / "mine");
    write(folder / "mine/extension.js", "mine");
    fs::create_directory_symlink(folder / "mine", place);
    EXPECT_TRUE(files.install("43.9"));
    EXPECT_EQ(script(), "mine");
}

TEST_F(FilesOfTheExtension, CannotBeInstalledWithoutFolderOrSource) {
    EXPECT_FALSE(ExtensionFiles(folder / "nowhere", {folder / "home"}).install("43"));
    EXPECT_FALSE(ExtensionFiles(folder / "source", {}).install("43"));
    write(folder / "file", "");
    EXPECT_FALSE(ExtensionFiles(folder / "source", {folder / "file"}).install("43"));
}

} // namespace
} // namespace platform::gnomeshell
