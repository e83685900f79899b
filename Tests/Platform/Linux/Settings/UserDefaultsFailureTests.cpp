#include "Platform/Linux/Settings/UserDefaults.h"
#include "Tests/CorvidKitCore/Printing.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using corvid::Preference;
using corvid::PropertyListValue;
using platform::linux::UserDefaults;
using testing::ElementsAre;
using testing::HasSubstr;
using Names = std::vector<std::string>;

/// Names in a folder of files that were kept as unreadable.
Names keptIn(const std::string& folder) {
    Names names = namesIn(folder);
    std::erase_if(names, [](const std::string& name) { return !name.starts_with("preferences.plist.unreadable-"); });
    return names;
}

class UserDefaultsFailure : public testing::Test {
protected:
    [[nodiscard]] UserDefaults open() { return UserDefaults{path, log.sink()}; }

    TemporaryFolder folder;
    std::string path = folder / "preferences.plist";
    LogRecord log;
};

class UnreadableUserDefaults : public UserDefaultsFailure, public testing::WithParamInterface<std::string> {};

TEST_P(UnreadableUserDefaults, AreKeptBesideUnchangedAndStartFromTheDefaults) {
    write(path, GetParam());
    UserDefaults defaults = open();
    EXPECT_TRUE((defaults[Preference<bool>{"enabled", true}].value()));
    EXPECT_THAT(log.lines, ElementsAre(HasSubstr("kept as " + path + ".unreadable-")));

    defaults.set(false, "enabled");
    EXPECT_EQ(open().object("enabled"), PropertyListValue{false});
    const Names kept = keptIn(folder.path);
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(contentsOf(folder / kept.front()), GetParam());
    EXPECT_EQ(log.lines.size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(Contents, UnreadableUserDefaults,
                         testing::Values("", "hello", std::string("\0\0\0\0\0\0\0\0", 8),
                                         "<plist version=\"1.0\"><dict><key>enabled</key><fal",
                                         "<plist version=\"1.0\"><array><true/></array></plist>",
                                         "<plist version=\"1.0\"><string>enabled</string></plist>",
                                         "{\"enabled\": false}"));

TEST_F(UserDefaultsFailure, KeepEveryUnreadableFileUnderANameOfItsOwn) {
    constexpr int files = 4; // Most likely within one second, so that the names collide.
    for (int number = 0; number < files; ++number) {
        write(path, "unreadable " + std::to_string(number));
        EXPECT_EQ(open().object("key"), std::nullopt);
    }
    Names contents;
    for (const std::string& name : keptIn(folder.path)) {
        contents.push_back(contentsOf(folder / name));
    }
    std::ranges::sort(contents);
    EXPECT_THAT(contents, ElementsAre("unreadable 0", "unreadable 1", "unreadable 2", "unreadable 3"));
}

TEST_F(UserDefaultsFailure, AreKeptBesideWhenTheFileIsAbsurdlyLarge) {
    write(path, "");
    ASSERT_EQ(::truncate(path.c_str(), off_t{1} << 40), 0);
    EXPECT_EQ(open().object("key"), std::nullopt);
    EXPECT_THAT(log.lines, ElementsAre(HasSubstr("too large")));
    EXPECT_EQ(keptIn(folder.path).size(), 1U);
}

TEST_F(UserDefaultsFailure, HoldTheChangeAndTryAgainWhenThereIsNoPlaceForTheFolder) {
    write(folder / "tessel", "a file where the folder should be");
    path = folder / "tessel/preferences.plist";
    UserDefaults defaults = open();
    EXPECT_TRUE(log.lines.empty());

    defaults.set(1, "first");
    EXPECT_EQ(defaults.object("first"), PropertyListValue{1});
    EXPECT_THAT(log.lines, ElementsAre(HasSubstr("Not a directory")));
    EXPECT_EQ(contentsOf(folder / "tessel"), "a file where the folder should be");

    std::filesystem::remove(folder / "tessel");
    defaults.set(2, "second");
    EXPECT_EQ(open().object("first"), PropertyListValue{1});
    EXPECT_EQ(open().object("second"), PropertyListValue{2});
    EXPECT_EQ(log.lines.size(), 1U);
}

TEST_F(UserDefaultsFailure, TryAgainEvenWhenTheNextChangeHasNothingToRemove) {
    write(folder / "tessel", "a file where the folder should be");
    path = folder / "tessel/preferences.plist";
    UserDefaults defaults = open();
    defaults.set(1, "first");
    std::filesystem::remove(folder / "tessel");
    defaults.set(std::nullopt, "never there");
    EXPECT_EQ(open().object("first"), PropertyListValue{1});
}

/// While it lives, no file grows beyond a few bytes: for a writing program the same as a full disk.
class FullDisk {
public:
    FullDisk() {
        previousHandler = ::signal(SIGXFSZ, SIG_IGN);
        EXPECT_EQ(::getrlimit(RLIMIT_FSIZE, &previous), 0);
        const rlimit limit{.rlim_cur = 16, .rlim_max = previous.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    }

    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

    ~FullDisk() {
        ::setrlimit(RLIMIT_FSIZE, &previous);
        ::signal(SIGXFSZ, previousHandler);
    }

private:
    rlimit previous{};
    void (*previousHandler)(int) = SIG_DFL;
};

TEST_F(UserDefaultsFailure, HoldTheChangeAndTryAgainWhenTheDiskIsFull) {
    UserDefaults defaults = open();
    defaults.set("old", "key");
    const std::string old = contentsOf(path);
    {
        const FullDisk disk;
        defaults.set("new", "key");
        defaults.set(1, "other");
    }
    EXPECT_THAT(log.lines, ElementsAre(HasSubstr("File too large"), HasSubstr("File too large")));
    EXPECT_EQ(defaults.object("key"), PropertyListValue{"new"});
    EXPECT_EQ(contentsOf(path), old);
    EXPECT_THAT(namesIn(folder.path), ElementsAre("preferences.plist"));

    defaults.set(2, "third");
    const UserDefaults restarted = open();
    EXPECT_EQ(restarted.object("key"), PropertyListValue{"new"});
    EXPECT_EQ(restarted.object("other"), PropertyListValue{1});
    EXPECT_EQ(restarted.object("third"), PropertyListValue{2});
}

TEST_F(UserDefaultsFailure, HoldTheChangeAndTryAgainWhenTheFolderIsReadOnly) {
    asOrdinaryUser(folder, [&] {
        UserDefaults defaults = open();
        defaults.set("old", "key");
        const std::string old = contentsOf(path);
        ASSERT_EQ(::chmod(folder.path.c_str(), 0500), 0);
        defaults.set("new", "key");
        EXPECT_THAT(log.lines, ElementsAre(HasSubstr("Permission denied")));
        EXPECT_EQ(defaults.object("key"), PropertyListValue{"new"});
        EXPECT_EQ(contentsOf(path), old);

        ASSERT_EQ(::chmod(folder.path.c_str(), 0700), 0);
        defaults.set(2, "other");
        EXPECT_EQ(open().object("key"), PropertyListValue{"new"});
        EXPECT_EQ(open().object("other"), PropertyListValue{2});
    });
}

TEST_F(UserDefaultsFailure, KeepAFileBesideThatMayNotBeRead) {
    asOrdinaryUser(folder, [&] {
        write(path, "secret");
        ASSERT_EQ(::chmod(path.c_str(), 0), 0);
        UserDefaults defaults = open();
        EXPECT_THAT(log.lines, ElementsAre(HasSubstr("Permission denied")));
        defaults.set(1, "key");
        EXPECT_EQ(open().object("key"), PropertyListValue{1});
        const Names kept = keptIn(folder.path);
        ASSERT_EQ(kept.size(), 1U);
        ASSERT_EQ(::chmod((folder / kept.front()).c_str(), 0600), 0);
        EXPECT_EQ(contentsOf(folder / kept.front()), "secret");
    });
}

TEST_F(UserDefaultsFailure, NeverReplaceAnUnreadableFileThatCannotBeKeptBeside) {
    asOrdinaryUser(folder, [&] {
        write(path, "hello");
        ASSERT_EQ(::chmod(folder.path.c_str(), 0500), 0);
        UserDefaults defaults = open();
        EXPECT_THAT(log.lines, ElementsAre(HasSubstr("Permission denied")));
        defaults.set(1, "key");
        EXPECT_EQ(log.lines.size(), 2U);
        EXPECT_EQ(contentsOf(path), "hello");

        ASSERT_EQ(::chmod(folder.path.c_str(), 0700), 0);
        defaults.set(2, "other");
        EXPECT_EQ(open().object("key"), PropertyListValue{1});
        EXPECT_EQ(open().object("other"), PropertyListValue{2});
        const Names kept = keptIn(folder.path);
        ASSERT_EQ(kept.size(), 1U);
        EXPECT_EQ(contentsOf(folder / kept.front()), "hello");
    });
}

TEST_F(UserDefaultsFailure, StartAgainWhenTheUnreadableFileWasTakenAway) {
    asOrdinaryUser(folder, [&] {
        write(path, "hello");
        ASSERT_EQ(::chmod(folder.path.c_str(), 0500), 0);
        UserDefaults defaults = open();
        ASSERT_EQ(::chmod(folder.path.c_str(), 0700), 0);
        std::filesystem::remove(path);
        defaults.set(1, "key");
        EXPECT_EQ(open().object("key"), PropertyListValue{1});
        EXPECT_EQ(keptIn(folder.path), Names{});
    });
}

TEST_F(UserDefaultsFailure, LeaveAFolderInTheFilesPlaceAlone) {
    std::filesystem::create_directory(path);
    write(path + "/inside", "kept");
    UserDefaults defaults = open();
    defaults.set(1, "key");
    EXPECT_EQ(defaults.object("key"), PropertyListValue{1});
    EXPECT_THAT(log.lines, ElementsAre(HasSubstr("is not a file"), HasSubstr("is not a file")));
    EXPECT_EQ(contentsOf(path + "/inside"), "kept");
}

TEST_F(UserDefaultsFailure, NeitherWaitOnAPipeInTheFilesPlaceNorReplaceIt) {
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    UserDefaults defaults = open();
    defaults.set(1, "key");
    EXPECT_THAT(log.lines, ElementsAre(HasSubstr("is not a file"), HasSubstr("is not a file")));
    EXPECT_TRUE(std::filesystem::is_fifo(path));
}

TEST_F(UserDefaultsFailure, TakeUpTheFileThatAnInterruptedWriteLeft) {
    write(folder / ".preferences.plist.new", std::string(100000, 'x'));
    ASSERT_EQ(::chmod((folder / ".preferences.plist.new").c_str(), 0644), 0);
    open().set(1, "key");
    EXPECT_THAT(namesIn(folder.path), ElementsAre("preferences.plist"));
    EXPECT_EQ(modeOf(path), 0600U);
    EXPECT_EQ(open().object("key"), PropertyListValue{1});
}

TEST_F(UserDefaultsFailure, LeaveTheFileToAnotherProcessThatIsWritingIt) {
    const std::string fresh = folder / ".preferences.plist.new";
    const int other = ::open(fresh.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_GE(other, 0);
    ASSERT_EQ(::flock(other, LOCK_EX), 0);
    ASSERT_EQ(::write(other, "theirs", 6), 6);

    UserDefaults defaults = open();
    defaults.set(1, "key");
    EXPECT_THAT(log.lines, ElementsAre(HasSubstr("being written by another process")));
    EXPECT_EQ(contentsOf(fresh), "theirs");

    ::close(other);
    defaults.set(2, "other");
    EXPECT_EQ(open().object("key"), PropertyListValue{1});
    EXPECT_EQ(log.lines.size(), 1U);
}

TEST_F(UserDefaultsFailure, NeverWriteThroughALinkLeftUnderTheNameOfTheNewFile) {
    write(folder / "victim", "untouched");
    for (const char* target : {"victim", "nowhere"}) {
        std::filesystem::create_symlink(target, folder / ".preferences.plist.new");
        UserDefaults defaults = open();
        defaults.set(1, "key");
        EXPECT_EQ(defaults.object("key"), PropertyListValue{1});
        std::filesystem::remove(folder / ".preferences.plist.new");
    }
    EXPECT_EQ(log.lines.size(), 2U);
    EXPECT_EQ(contentsOf(folder / "victim"), "untouched");
    EXPECT_THAT(namesIn(folder.path), ElementsAre("victim"));
}

} // namespace
