#include "Platform/Linux/Files/FileRemoval.h"
#include "Tests/Platform/Linux/Applications/DesktopEntryFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace platform::linux {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(FileRemoval, TakesWhatWasMadeAndNothingElse) {
    const TemporaryFolder home;
    for (const char* file :
         {"own/settings", "own/settings.old-2", "own/.settings.new", "shared/entry", "shared/other"}) {
        writeBelow(home / file, "");
    }
    const std::vector<MadeFiles> made{
        {.folder = home / "own", .names = {"settings", "settings.old-*", ".settings.new"}, .isOwnFolder = true},
        {.folder = home / "shared", .names = {"entry"}},
        {.folder = home / "missing", .names = {"*"}, .isOwnFolder = true}};
    EXPECT_EQ(removeFiles(made), (Removal{.removed = {home / "own/.settings.new", home / "own/settings",
                                                      home / "own/settings.old-2", home / "own", home / "shared/entry"},
                                          .failures = {}}));
    EXPECT_THAT(namesIn(home.path), ElementsAre("shared"));
    EXPECT_THAT(namesIn(home / "shared"), ElementsAre("other"));
    EXPECT_EQ(removeFiles(made), Removal{});
}

TEST(FileRemoval, LeavesAFolderWithSomethingElseInIt) {
    const TemporaryFolder home;
    writeBelow(home / "own/settings", "");
    writeBelow(home / "own/of somebody", "");
    const Removal removal = removeFiles(std::vector<MadeFiles>{{home / "own", {"settings"}, true}});
    EXPECT_THAT(removal.removed, ElementsAre(home / "own/settings"));
    EXPECT_THAT(removal.failures, IsEmpty());
    EXPECT_THAT(namesIn(home / "own"), ElementsAre("of somebody"));
}

TEST(FileRemoval, TakesALinkAndNotWhatItLeadsTo) {
    const TemporaryFolder home;
    writeBelow(home / "kept/settings", "kept");
    fs::create_directory(home / "own");
    fs::create_symlink(home / "kept/settings", home / "own/settings");
    fs::create_directory_symlink(home / "kept", home / "linked");
    const std::vector<MadeFiles> made{{home / "own", {"settings"}, true}, {home / "linked", {"other"}, true}};
    EXPECT_THAT(removeFiles(made).removed, ElementsAre(home / "own/settings", home / "own"));
    EXPECT_EQ(contentsOf(home / "kept/settings"), "kept");
    EXPECT_TRUE(fs::exists(home / "linked"));
}

TEST(FileRemoval, SaysWhatItCouldNotRemoveAndGoesOn) {
    const TemporaryFolder home;
    writeBelow(home / "own/settings/inside", "");
    writeBelow(home / "file", "");
    writeBelow(home / "next/settings", "");
    const std::vector<MadeFiles> made{
        {home / "own", {"settings"}, true}, {home / "file", {"*"}, true}, {home / "next", {"settings"}, false}};
    const Removal removal = removeFiles(made);
    EXPECT_THAT(removal.failures,
                ElementsAre(HasSubstr("cannot remove " + (home / "own/settings: Directory not empty")),
                            HasSubstr("cannot read " + (home / "file: Not a directory"))));
    EXPECT_THAT(removal.removed, ElementsAre(home / "next/settings"));
}

} // namespace
} // namespace platform::linux
