#include "Platform/Linux/Settings/UserDefaults.h"
#include "Tests/CorvidKitCore/Printing.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

namespace filesystem = std::filesystem;
using corvid::PropertyListValue;
using platform::linux::UserDefaults;
using testing::ElementsAre;
using testing::HasSubstr;

/// Settings whose file is a link into a folder of dot files.
class LinkedUserDefaults : public testing::Test {
protected:
    LinkedUserDefaults() {
        filesystem::create_directories(folder / "config/tessel");
        filesystem::create_directories(folder / "dotfiles");
    }

    [[nodiscard]] UserDefaults open() { return UserDefaults{path, log.sink()}; }

    /// The state after a write, for any kind of link.
    void expectWrittenThrough(const std::string& file) {
        EXPECT_TRUE(filesystem::is_symlink(path));
        ASSERT_TRUE(filesystem::exists(file));
        EXPECT_FALSE(filesystem::is_symlink(file));
        EXPECT_EQ((UserDefaults{file, log.sink()}.object("key")), PropertyListValue{1});
        EXPECT_THAT(namesIn(folder / "config/tessel"), ElementsAre("preferences.plist"));
        EXPECT_TRUE(log.lines.empty());
    }

    TemporaryFolder folder;
    std::string path = folder / "config/tessel/preferences.plist";
    std::string target = folder / "dotfiles/tessel.plist";
    LogRecord log;
};

TEST_F(LinkedUserDefaults, AreReadThroughTheLink) {
    UserDefaults{target, log.sink()}.set(5, "key");
    filesystem::create_symlink(target, path);
    EXPECT_EQ(open().object("key"), PropertyListValue{5});
}

TEST_F(LinkedUserDefaults, AreWrittenThroughAnAbsoluteLink) {
    UserDefaults{target, log.sink()}.set(5, "key");
    filesystem::create_symlink(target, path);
    open().set(1, "key");
    expectWrittenThrough(target);
}

TEST_F(LinkedUserDefaults, AreWrittenThroughARelativeLink) {
    filesystem::create_symlink("../../dotfiles/tessel.plist", path);
    UserDefaults{target, log.sink()}.set(5, "key");
    open().set(1, "key");
    expectWrittenThrough(target);
    EXPECT_EQ(filesystem::read_symlink(path), "../../dotfiles/tessel.plist");
}

TEST_F(LinkedUserDefaults, AreWrittenThroughALinkToAFileAndFolderYetToCome) {
    filesystem::create_symlink("../../dotfiles/new/tessel.plist", path);
    open().set(1, "key");
    expectWrittenThrough(folder / "dotfiles/new/tessel.plist");
}

TEST_F(LinkedUserDefaults, AreWrittenThroughAChainOfLinks) {
    filesystem::create_symlink("tessel.plist", folder / "dotfiles/second");
    filesystem::create_symlink(folder / "dotfiles/second", path);
    open().set(1, "key");
    expectWrittenThrough(target);
    EXPECT_TRUE(filesystem::is_symlink(folder / "dotfiles/second"));
}

TEST_F(LinkedUserDefaults, MayLieInALinkedFolder) {
    filesystem::remove(folder / "config/tessel");
    filesystem::create_directory_symlink("../dotfiles", folder / "config/tessel");
    open().set(1, "key");
    EXPECT_TRUE(filesystem::is_symlink(folder / "config/tessel"));
    EXPECT_EQ((UserDefaults{folder / "dotfiles/preferences.plist", log.sink()}.object("key")), PropertyListValue{1});
}

TEST_F(LinkedUserDefaults, KeepAnUnreadableFileBesideItselfAndTheLinkInPlace) {
    write(target, "hello");
    filesystem::create_symlink(target, path);
    open().set(1, "key");
    ASSERT_THAT(log.lines, ElementsAre(HasSubstr("kept as " + target + ".unreadable-")));
    log.lines.clear();
    expectWrittenThrough(target);
    EXPECT_THAT(namesIn(folder / "dotfiles"), ElementsAre("tessel.plist", HasSubstr("tessel.plist.unreadable-")));
    EXPECT_EQ(contentsOf(folder / "dotfiles/" + namesIn(folder / "dotfiles")[1]), "hello");
}

TEST_F(LinkedUserDefaults, LeaveALinkThatLeadsToItselfAlone) {
    filesystem::create_symlink("preferences.plist", path);
    UserDefaults defaults = open();
    defaults.set(1, "key");
    EXPECT_EQ(defaults.object("key"), PropertyListValue{1});
    EXPECT_EQ(log.lines.size(), 2U);
    EXPECT_EQ(filesystem::read_symlink(path), "preferences.plist");
}

TEST_F(LinkedUserDefaults, NeverReplaceWhatIsNoFileAtTheEndOfTheLink) {
    filesystem::create_symlink(folder / "dotfiles", path);
    open().set(1, "key");
    EXPECT_EQ(log.lines.size(), 2U);
    EXPECT_TRUE(filesystem::is_directory(folder / "dotfiles"));
    EXPECT_TRUE(filesystem::is_symlink(path));
}

} // namespace
