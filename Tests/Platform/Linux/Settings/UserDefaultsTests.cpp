#include "Platform/Linux/Settings/UserDefaults.h"
#include "Tests/CorvidKitCore/Printing.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace {

using corvid::Data;
using corvid::Preference;
using corvid::PropertyListValue;
using platform::linux::UserDefaults;
using Dictionary = PropertyListValue::Dictionary;
using Names = std::vector<std::string>;

class UserDefaultsTest : public testing::Test {
protected:
    [[nodiscard]] UserDefaults open() { return UserDefaults{path, log.sink()}; }

    TemporaryFolder folder;
    std::string path = folder / "config/tessel/preferences.plist";
    LogRecord log;
};

TEST_F(UserDefaultsTest, StartEmptyAndLeaveNothingBehindWhenOnlyRead) {
    const UserDefaults defaults = open();
    EXPECT_EQ(defaults.object("enabled"), std::nullopt);
    EXPECT_TRUE((defaults[Preference<bool>{"enabled", true}]));
    EXPECT_EQ(namesIn(folder.path), Names{});
    EXPECT_EQ(log.lines, Names{});
}

TEST_F(UserDefaultsTest, GiveBackWhatWasWrittenAtOnceAndAfterARestart) {
    const std::map<std::string, PropertyListValue> values{
        {"true", true},
        {"false", false},
        {"one", 1},
        {"zero", 0},
        {"negative", -1},
        {"smallest", std::numeric_limits<std::int64_t>::min()},
        {"largest", std::numeric_limits<std::int64_t>::max()},
        {"float", 1700000000.123456},
        {"whole float", 3.0},
        {"text", "ein <Text> & \"mehr\" → ⌘\n"},
        {"empty text", ""},
        {"data", Data{std::byte{0}, std::byte{200}}},
        {"no data", Data{}},
        {"dictionary", Dictionary{{"inner", Dictionary{{"deep", true}}}, {"number", 5}}},
        {"empty dictionary", Dictionary{}},
    };
    {
        UserDefaults defaults = open();
        for (const auto& [key, value] : values) {
            defaults.set(value, key);
            EXPECT_EQ(defaults.object(key), value) << key;
        }
    }
    const UserDefaults restarted = open();
    for (const auto& [key, value] : values) {
        EXPECT_EQ(restarted.object(key), value) << key;
    }
    EXPECT_EQ(log.lines, Names{});
}

TEST_F(UserDefaultsTest, ReadBooleansAsBooleansAndIntegersAsIntegers) {
    open().set(true, "boolean");
    open().set(1, "integer");
    const UserDefaults restarted = open();
    EXPECT_EQ(restarted.object("boolean")->integer(), std::nullopt);
    EXPECT_EQ(restarted.object("integer")->boolean(), std::nullopt);
    EXPECT_EQ(restarted.object("integer")->integer(), 1);
}

TEST_F(UserDefaultsTest, KeepEveryWriteOnDiskBeforeTheNextOne) {
    UserDefaults defaults = open();
    for (int number = 0; number < 5; ++number) {
        defaults.set(number, "number");
        EXPECT_EQ(open().object("number"), PropertyListValue{number});
    }
}

TEST_F(UserDefaultsTest, RemoveAKeyThatIsSetToNothing) {
    UserDefaults defaults = open();
    defaults.set("text", "key");
    defaults.set(5, "other");
    defaults.set(std::nullopt, "key");
    EXPECT_EQ(defaults.object("key"), std::nullopt);
    EXPECT_EQ(open().object("key"), std::nullopt);
    EXPECT_EQ(open().object("other"), PropertyListValue{5});
}

TEST_F(UserDefaultsTest, WriteNothingWhenThereIsNothingToRemove) {
    open().set(std::nullopt, "key");
    EXPECT_EQ(namesIn(folder.path), Names{});
}

TEST_F(UserDefaultsTest, MakeTheFileAndItsFoldersForTheUserAlone) {
    const mode_t previous = ::umask(0);
    open().set(true, "enabled");
    ::umask(previous);
    EXPECT_EQ(modeOf(path), 0600U);
    EXPECT_EQ(modeOf(folder / "config/tessel"), 0700U);
    EXPECT_EQ(modeOf(folder / "config"), 0700U);
}

TEST_F(UserDefaultsTest, CloseAFileThatOthersCouldReadAndLeaveFoldersAsTheyAre) {
    std::filesystem::create_directories(folder / "config/tessel");
    ASSERT_EQ(::chmod((folder / "config/tessel").c_str(), 0755), 0);
    write(path, "<plist version=\"1.0\"><dict><key>key</key><string>kept</string></dict></plist>");
    ASSERT_EQ(::chmod(path.c_str(), 0664), 0);
    open().set(true, "enabled");
    EXPECT_EQ(modeOf(path), 0600U);
    EXPECT_EQ(modeOf(folder / "config/tessel"), 0755U);
    EXPECT_EQ(open().object("key"), PropertyListValue{"kept"});
}

TEST_F(UserDefaultsTest, LeaveNothingElseInTheFolder) {
    open().set(true, "enabled");
    open().set(false, "enabled");
    EXPECT_EQ(namesIn(folder / "config/tessel"), Names{"preferences.plist"});
}

TEST_F(UserDefaultsTest, ReplaceTheFileInsteadOfWritingIntoIt) {
    open().set("old", "key");
    const std::string old = contentsOf(path);
    std::filesystem::create_hard_link(path, folder / "backup");
    open().set("new", "key");
    EXPECT_EQ(contentsOf(folder / "backup"), old);
    EXPECT_NE(contentsOf(path), old);
}

TEST_F(UserDefaultsTest, AreAnXmlPropertyListForOtherProgramsToRead) {
    open().set(true, "enabled");
    const std::string xml = contentsOf(path);
    EXPECT_TRUE(xml.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC ")) << xml;
    EXPECT_NE(xml.find("<key>enabled</key>\n\t<true/>"), std::string::npos) << xml;
}

TEST_F(UserDefaultsTest, KeepWhatTheyDoNotKnowThroughAWrite) {
    std::filesystem::create_directories(folder / "config/tessel");
    write(path, "<plist version=\"1.0\"><dict><key>list</key><array><string>mine</string></array>"
                "<key>when</key><date>2024-02-29T12:00:00Z</date></dict></plist>");
    {
        UserDefaults defaults = open();
        EXPECT_EQ(defaults.object("list"), std::nullopt);
        EXPECT_EQ((defaults[Preference<std::string>{"when", "default"}].value()), "default");
        defaults.set(true, "enabled");
    }
    const std::string xml = contentsOf(path);
    EXPECT_NE(xml.find("<string>mine</string>"), std::string::npos) << xml;
    EXPECT_NE(xml.find("<date>2024-02-29T12:00:00Z</date>"), std::string::npos) << xml;
}

TEST_F(UserDefaultsTest, ReplaceAnEntryOfAnUnknownKindWhenItIsSet) {
    std::filesystem::create_directories(folder / "config/tessel");
    write(path, "<plist version=\"1.0\"><dict><key>enabled</key><array/></dict></plist>");
    open().set(false, "enabled");
    EXPECT_EQ(open().object("enabled"), PropertyListValue{false});
    open().set(std::nullopt, "enabled");
    EXPECT_EQ(open().object("enabled"), std::nullopt);
}

TEST_F(UserDefaultsTest, LiveInMemoryWithoutAHomeFolderAndSaySo) {
    UserDefaults defaults{std::nullopt, log.sink()};
    defaults.set(5, "key");
    EXPECT_EQ(defaults.object("key"), PropertyListValue{5});
    ASSERT_EQ(log.lines.size(), 1U);
    EXPECT_NE(log.lines.front().find("no home folder"), std::string::npos);
}

} // namespace
