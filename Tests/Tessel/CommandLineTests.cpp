#include "Tessel/CommandLine.h"
#include "TesselCore/WindowOrder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <sstream>
#include <string>
#include <utility>
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

TEST(CommandLine, AskingForPicturesWithoutSayingWhereAsksForNothing) {
    EXPECT_EQ(parse({"--snapshot"}), CommandLine::Request(CommandLine::Run{}));
    EXPECT_EQ(parse({"--version", "--snapshot"}), CommandLine::Request(CommandLine::Print{"tessel 1.2\n"}));
    EXPECT_EQ(parse({"--hepl", "--snapshot"}),
              CommandLine::Request(CommandLine::Refuse{"tessel: unknown option --hepl; see tessel --help\n"}));
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

TEST(CommandLine, HelpNamesEverythingThatCanBePerformed) {
    const auto request = parse({"--help"});
    const auto* print = std::get_if<CommandLine::Print>(&request);
    ASSERT_NE(print, nullptr);
    const auto refusal = parse({"--perform", "?"});
    const auto* refused = std::get_if<CommandLine::Refuse>(&refusal);
    ASSERT_NE(refused, nullptr);
    std::istringstream words(refused->line.substr(refused->line.find("there are ") + 10));
    std::size_t count = 0;
    for (std::string word; words >> word; ++count) {
        word.erase(word.find_last_not_of(',') + 1);
        EXPECT_THAT(print->text, testing::ContainsRegex("[ \n]" + word + "[,;. \n]"));
    }
    EXPECT_EQ(count, WindowAction::allCases.size() + WindowPlacement::allCases.size());
}

TEST(CommandLine, AnUnknownOptionIsRefusedInOneLine) {
    EXPECT_EQ(parse({"--hepl"}),
              CommandLine::Request(CommandLine::Refuse{"tessel: unknown option --hepl; see tessel --help\n"}));
    EXPECT_EQ(parse({"window"}),
              CommandLine::Request(CommandLine::Refuse{"tessel: unknown option window; see tessel --help\n"}));
}

TEST(CommandLine, ForgetsInWordsOrInJson) {
    using CommandLine::Forget;
    EXPECT_EQ(parse({"--forget"}), CommandLine::Request(Forget{.json = false}));
    EXPECT_EQ(parse({"--json", "--forget"}), CommandLine::Request(Forget{.json = true}));
    EXPECT_EQ(parse({"--forget", "everything"}),
              CommandLine::Request(
                  CommandLine::Refuse{"tessel: unexpected argument everything after --forget; see tessel --help\n"}));
}

using CommandLine::Ask;

Ask ask(Ask::What what, std::vector<std::string> arguments = {}, bool json = false) {
    return {.what = what, .arguments = std::move(arguments), .json = json};
}

TEST(CommandLine, AsksTheRunningProgram) {
    using enum Ask::What;
    struct Row {
        std::vector<std::string> options;
        Ask expected;
    };
    const std::vector<Row> rows{
        {{"--status"}, ask(status)},
        {{"--status", "--json"}, ask(status, {}, true)},
        {{"--json", "--status"}, ask(status, {}, true)},
        {{"--quit"}, ask(quit)},
        {{"--take-shortcuts"}, ask(takeShortcuts)},
        {{"--json", "--take-shortcuts"}, ask(takeShortcuts, {}, true)},
        {{"--give-back-shortcuts"}, ask(giveBackShortcuts)},
        {{"--give-back-shortcuts", "--json"}, ask(giveBackShortcuts, {}, true)},
        {{"--perform", "leftHalf"}, ask(perform, {"leftHalf"})},
        {{"--perform", "left-half"}, ask(perform, {"leftHalf"})},
        {{"--perform", "right-half"}, ask(perform, {"rightHalf"})},
        {{"--perform", "center"}, ask(perform, {"center"})},
        {{"--perform", "maximize"}, ask(perform, {"maximize"})},
        {{"--perform", "almost-maximize"}, ask(perform, {"almostMaximize"})},
        {{"--perform", "--json", "maximize-height"}, ask(perform, {"maximizeHeight"}, true)},
        {{"--perform", "top-half"}, ask(perform, {"topHalf"})},
        {{"--perform", "bottom-right"}, ask(perform, {"bottomRight"})},
        {{"--perform", "first-two-thirds"}, ask(perform, {"firstTwoThirds"})},
        {{"--perform", "next-display"}, ask(perform, {"nextDisplay"})},
        {{"--perform", "restore", "--json"}, ask(perform, {"restore"}, true)},
        {{"--rule", "org.example.Editor", "maximize"}, ask(rule, {"org.example.Editor", "maximize"})},
        {{"--rule", "an odd name", "none", "--json"}, ask(rule, {"an odd name", "none"}, true)},
        {{"--rule", "a", "center"}, ask(rule, {"a", "center"})},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(parse(row.options), CommandLine::Request(row.expected)) << testing::PrintToString(row.options);
    }
}

TEST(CommandLine, RefusesInOneLineWhatItCannotAsk) {
    struct Row {
        std::vector<std::string> options;
        std::string expected;
    };
    const std::string actions =
        "left-half, right-half, center, maximize, almost-maximize, maximize-height, top-half, bottom-half, top-left, "
        "top-right, bottom-left, bottom-right, first-third, center-third, last-third, first-two-thirds, "
        "last-two-thirds, next-display, previous-display, restore";
    const std::vector<Row> rows{
        {{"--json"}, "tessel: --json needs another option; see tessel --help\n"},
        {{"--perform"}, "tessel: --perform needs an action; see tessel --help\n"},
        {{"--perform", ""}, "tessel: --perform needs an action; see tessel --help\n"},
        {{"--perform", "--json"}, "tessel: --perform needs an action; see tessel --help\n"},
        {{"--perform", "--quit"}, "tessel: --perform needs an action; see tessel --help\n"},
        {{"--perform", "upwards"}, "tessel: unknown action upwards; there are " + actions + "\n"},
        {{"--perform", "LeftHalf"}, "tessel: unknown action LeftHalf; there are " + actions + "\n"},
        {{"--perform", "Top-half"}, "tessel: unknown action Top-half; there are " + actions + "\n"},
        {{"--perform", "center", "twice"}, "tessel: unexpected argument twice after --perform; see tessel --help\n"},
        {{"--rule"}, "tessel: --rule needs an application; see tessel --help\n"},
        {{"--rule", "a"}, "tessel: --rule needs an action; see tessel --help\n"},
        {{"--rule", "a", "left-half"}, "tessel: unknown rule left-half; there are maximize, center, none\n"},
        {{"--rule", "a", "top-half"}, "tessel: unknown rule top-half; there are maximize, center, none\n"},
        {{"--status", "now"}, "tessel: unexpected argument now after --status; see tessel --help\n"},
        {{"--take-shortcuts", "center"},
         "tessel: unexpected argument center after --take-shortcuts; see tessel --help\n"},
        {{"--give-back-shortcuts", "--take-shortcuts"},
         "tessel: unexpected argument --take-shortcuts after --give-back-shortcuts; see tessel --help\n"},
        {{"--quit", "--status"}, "tessel: unexpected argument --status after --quit; see tessel --help\n"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(parse(row.options), CommandLine::Request(CommandLine::Refuse{row.expected}))
            << testing::PrintToString(row.options);
    }
}

} // namespace
} // namespace tessel
