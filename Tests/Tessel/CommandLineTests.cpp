#include "Tessel/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tessel {
namespace {

CommandLine::Request parse(std::vector<std::string> options) {
    options.insert(options.begin(), "/usr/bin/tessel");
    return CommandLine::parse(options, "1.2");
}

TEST(CommandLine, WithoutOptionsTheProgramRuns) {
    EXPECT_EQ(parse({}), CommandLine::Request(CommandLine::Run{}));
    EXPECT_EQ(CommandLine::parse({}, "1.2"), CommandLine::Request(CommandLine::Run{}));
}

TEST(CommandLine, VersionPrintsTheVersion) {
    EXPECT_EQ(parse({"--version"}), CommandLine::Request(CommandLine::Print{"tessel 1.2\n"}));
}

TEST(CommandLine, HelpNamesEveryShortcut) {
    const auto request = parse({"--help"});
    const auto* print = std::get_if<CommandLine::Print>(&request);
    ASSERT_NE(print, nullptr);
    for (const char* key : {"Left", "Right", "C ", "Up", "D ", "Down"}) {
        EXPECT_THAT(print->text, testing::HasSubstr(std::string("Ctrl+Alt+") + key));
    }
}

TEST(CommandLine, AnUnknownOptionIsRefusedInOneLine) {
    EXPECT_EQ(parse({"--hepl"}),
              CommandLine::Request(CommandLine::Refuse{"tessel: unknown option --hepl; see tessel --help\n"}));
    EXPECT_EQ(parse({"window"}),
              CommandLine::Request(CommandLine::Refuse{"tessel: unknown option window; see tessel --help\n"}));
}

} // namespace
} // namespace tessel
