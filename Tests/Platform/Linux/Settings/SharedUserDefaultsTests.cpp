#include "Platform/Linux/Settings/UserDefaults.h"
#include "Tests/CorvidKitCore/Printing.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace {

using corvid::Preference;
using corvid::PropertyListValue;
using platform::linux::UserDefaults;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Dictionary = PropertyListValue::Dictionary;
using Rules = std::map<std::string, std::string>;

const Preference<Rules> rules{"rules", {}};

/// Settings with more than one writer.
class SharedUserDefaults : public testing::Test {
protected:
    [[nodiscard]] UserDefaults open() { return UserDefaults{path, log.sink()}; }

    TemporaryFolder folder;
    std::string path = folder / "preferences.plist";
    LogRecord log;
};

TEST_F(SharedUserDefaults, KeepTheRulesOfBothSessions) {
    UserDefaults first = open();
    UserDefaults second = open();
    first[rules].change({}, {{"editor", "maximize"}});
    second[rules].change({}, {{"player", "center"}});
    first[rules].change({{"editor", "maximize"}}, {{"editor", "maximize"}, {"mail", "center"}});
    EXPECT_EQ(open()[rules].value(), (Rules{{"editor", "maximize"}, {"mail", "center"}, {"player", "center"}}));
    second[rules].change({{"player", "center"}}, {});
    EXPECT_EQ(open()[rules].value(), (Rules{{"editor", "maximize"}, {"mail", "center"}}));
}

TEST_F(SharedUserDefaults, TakeOverTheLastWordOnOneRule) {
    open()[rules] = Rules{{"editor", "maximize"}};
    UserDefaults first = open();
    UserDefaults second = open();
    first[rules].change({{"editor", "maximize"}}, {{"editor", "center"}});
    EXPECT_EQ(open()[rules].value(), (Rules{{"editor", "center"}}));
    second[rules].change({{"editor", "maximize"}}, {});
    EXPECT_EQ(open()[rules].value(), (Rules{}));
}

TEST_F(SharedUserDefaults, KeepOtherWritersChangesToTheFile) {
    UserDefaults defaults = open();
    defaults.set(true, "enabled");
    UserDefaults(path, log.sink()).set(false, "enabled");
    UserDefaults(path, log.sink()).set("by testClient", "note");
    defaults.set(1, "other");
    EXPECT_EQ(open().object("enabled"), PropertyListValue(false));
    EXPECT_EQ(open().object("note"), PropertyListValue("by testClient"));
    EXPECT_EQ(open().object("other"), PropertyListValue(1));
    EXPECT_EQ(defaults.object("note"), PropertyListValue("by testClient")) << "known from the write on";
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(SharedUserDefaults, LeaveTheEntriesOfARuleThatOnlyANewerVersionKnows) {
    write(path, "<plist version=\"1.0\"><dict><key>rules</key><dict>"
                "<key>newer</key><string>topLeftQuarter</string><key>dated</key><date>2026-01-01T00:00:00Z</date>"
                "<key>editor</key><string>maximize</string></dict></dict></plist>");
    UserDefaults defaults = open();
    defaults[rules].change({{"editor", "maximize"}}, {{"player", "center"}});
    EXPECT_EQ(open().object("rules"),
              (PropertyListValue(Dictionary{{"newer", "topLeftQuarter"}, {"player", "center"}})));
    EXPECT_THAT(contentsOf(path), HasSubstr("2026-01-01"));
}

TEST_F(SharedUserDefaults, PutADictionaryInThePlaceOfWhatIsNone) {
    UserDefaults defaults = open();
    UserDefaults(path, log.sink()).set("no rules at all", "rules");
    defaults[rules].change({}, {{"editor", "maximize"}});
    EXPECT_EQ(open()[rules].value(), (Rules{{"editor", "maximize"}}));
}

TEST_F(SharedUserDefaults, WriteNothingWhenNothingIsDifferent) {
    UserDefaults defaults = open();
    defaults[rules].change({{"editor", "maximize"}}, {{"editor", "maximize"}});
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(SharedUserDefaults, WriteSeveralChangesOnce) {
    UserDefaults defaults = open();
    defaults.together([&] {
        defaults[rules].change({}, {{"editor", "maximize"}});
        defaults.together([&] { defaults.set(1, "other"); });
        EXPECT_EQ(defaults.object("other"), PropertyListValue(1));
        EXPECT_FALSE(std::filesystem::exists(path)) << "written in the middle";
    });
    EXPECT_EQ(open()[rules].value(), (Rules{{"editor", "maximize"}}));
    EXPECT_EQ(open().object("other"), PropertyListValue(1));
}

TEST_F(SharedUserDefaults, MakeUpForEveryWriteThatFailed) {
    UserDefaults defaults = open();
    defaults.set(1, "gone before it was written");
    std::filesystem::rename(path, folder / "aside");
    std::filesystem::create_directory(path);
    defaults[rules].change({}, {{"editor", "maximize"}});
    defaults[rules].change({{"editor", "maximize"}}, {{"editor", "center"}, {"player", "center"}});
    defaults.set(std::nullopt, "gone before it was written");
    EXPECT_EQ(log.lines.size(), 3U);
    std::filesystem::remove(path);
    std::filesystem::rename(folder / "aside", path);
    UserDefaults(path, log.sink())[rules].change({}, {{"mail", "center"}});
    defaults.set(2, "other");
    EXPECT_EQ(open()[rules].value(), (Rules{{"editor", "center"}, {"mail", "center"}, {"player", "center"}}));
    EXPECT_EQ(open().object("gone before it was written"), std::nullopt);
}

TEST_F(SharedUserDefaults, AreWrittenWholeWhereTheFileIsGone) {
    UserDefaults defaults = open();
    defaults.set(1, "key");
    std::filesystem::remove(path);
    defaults.set(2, "other");
    EXPECT_EQ(open().object("key"), PropertyListValue(1));
    EXPECT_EQ(open().object("other"), PropertyListValue(2));
}

TEST_F(SharedUserDefaults, KeepABrokenFileUnderAnotherName) {
    UserDefaults defaults = open();
    defaults.set(1, "key");
    write(path, "<plist><dict><key>cut");
    defaults.set(2, "other");
    EXPECT_THAT(log.lines, ElementsAre(HasSubstr("kept as")));
    EXPECT_EQ(open().object("key"), PropertyListValue(1));
    EXPECT_EQ(open().object("other"), PropertyListValue(2));
    EXPECT_EQ(namesIn(folder.path).size(), 2U);
}

TEST_F(SharedUserDefaults, LoseNoneOfTheRulesThatTwoProcessesAddAtTheSameTime) {
    constexpr int rulesOfEach = 40;
    std::array<pid_t, 2> writers{};
    for (std::size_t writer = 0; writer < writers.size(); ++writer) {
        writers.at(writer) = ::fork();
        ASSERT_GE(writers.at(writer), 0);
        if (writers.at(writer) == 0) {
            UserDefaults defaults = open();
            Rules own;
            for (int rule = 0; rule < rulesOfEach; ++rule) {
                const Rules former = own;
                own.emplace(std::to_string(writer) + "." + std::to_string(rule), "center");
                defaults[rules].change(former, own);
            }
            // A write that was skipped is caught up by the next.
            for (std::size_t reported = 0; reported != log.lines.size();) {
                reported = log.lines.size();
                defaults.set(std::nullopt, "nothing");
            }
            std::_Exit(EXIT_SUCCESS);
        }
    }
    for (const pid_t writer : writers) {
        int status = 0;
        ASSERT_EQ(::waitpid(writer, &status, 0), writer);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(open()[rules].value().size(), 2U * rulesOfEach);
}

} // namespace
