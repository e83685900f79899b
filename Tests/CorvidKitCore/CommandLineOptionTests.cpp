#include "CorvidKitCore/CommandLineOption.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace {

using corvid::CommandLineOption::value;
using Arguments = std::vector<std::string>;

TEST(CommandLineOption, GivesTheArgumentAfterTheOption) {
    EXPECT_EQ(value("--snapshot", Arguments{"tessel", "--snapshot", "/tmp/shots"}), "/tmp/shots");
}

TEST(CommandLineOption, IsAbsentWithoutTheOption) {
    EXPECT_EQ(value("--snapshot", Arguments{"tessel", "/tmp/shots"}), std::nullopt);
    EXPECT_EQ(value("--snapshot", Arguments{}), std::nullopt);
}

TEST(CommandLineOption, IsAbsentWhenNothingFollowsTheOption) {
    EXPECT_EQ(value("--snapshot", Arguments{"tessel", "--snapshot"}), std::nullopt);
}

TEST(CommandLineOption, CountsOnlyTheFirstMatch) {
    EXPECT_EQ(value("--snapshot", Arguments{"tessel", "--snapshot", "a", "--snapshot", "b"}), "a");
    EXPECT_EQ(value("--snapshot", Arguments{"tessel", "--snapshot", "--snapshot"}), "--snapshot");
}

TEST(CommandLineOption, TakesWhateverFollowsEvenAnotherOptionOrAnEmptyText) {
    EXPECT_EQ(value("--snapshot", Arguments{"tessel", "--snapshot", "--help"}), "--help");
    EXPECT_EQ(value("--snapshot", Arguments{"tessel", "--snapshot", ""}), "");
}

TEST(CommandLineOption, LooksAtTheProgramPathToo) {
    EXPECT_EQ(value("--snapshot", Arguments{"--snapshot", "first"}), "first");
}

TEST(CommandLineOption, WantsTheWholeOptionAndItsLetterCase) {
    EXPECT_EQ(value("--snapshot", Arguments{"tessel", "--snapshots", "a", "--Snapshot", "b", "--snapshot=c", "d"}),
              std::nullopt);
}

} // namespace
