#include "Tessel/RemoteCommand.h"
#include "Tessel/StatusReport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tessel {
namespace {

using CommandLine::Ask;
using platform::ControlAnswer;
using platform::ControlRefusal;
using platform::ControlStatus;
using RemoteCommand::Outcome;
using Kind = ControlRefusal::Kind;
using testing::HasSubstr;

/// A running program with the same answer to all requests.
class Program final : public platform::ControlRequests {
public:
    ControlAnswer<void> open() override { return answer("open"); }
    void perform(std::string_view action, Answered answered) override {
        answered(answer("perform " + std::string(action)));
    }
    ControlAnswer<void> quit() override { return answer("quit"); }

    ControlAnswer<void> setRule(std::string_view bundleIdentifier, std::string_view action) override {
        return answer("rule " + std::string(bundleIdentifier) + " " + std::string(action));
    }

    ControlAnswer<void> setBorrowsShortcuts(bool borrows) override {
        return answer(borrows ? "take shortcuts" : "give back shortcuts");
    }

    ControlAnswer<ControlStatus> status() override {
        const ControlAnswer<void> given = answer("status");
        return given ? ControlAnswer<ControlStatus>(report) : std::unexpected(given.error());
    }

    std::vector<std::string> asked;
    std::optional<ControlRefusal> refusal;
    ControlStatus report{
        .status = "shortcutsTaken",
        .statusText = "Some shortcuts are taken: center",
        .isEnabled = true,
        .isTrusted = true,
        .version = "1.2",
        .backend = "X11",
        .shortcuts = {{"leftHalf", "Ctrl+Alt+←", "active"}, {"center", "Ctrl+Alt+C", "taken"}},
        .rules = {{"org.example.Editor", "maximize"}, {"übung", "center"}},
    };

private:
    ControlAnswer<void> answer(std::string line) {
        asked.push_back(std::move(line));
        return refusal ? ControlAnswer<void>(std::unexpected(*refusal)) : ControlAnswer<void>();
    }
};

const Ask status{.what = Ask::What::status, .arguments = {}, .json = false};
const Ask statusJson{.what = Ask::What::status, .arguments = {}, .json = true};

TEST(RemoteCommand, PrintsTheStatusForPeople) {
    Program program;
    EXPECT_EQ(RemoteCommand::carryOut(status, program),
              (Outcome{.output = "Tessel 1.2 on X11: Some shortcuts are taken: center\n"
                                 "\n"
                                 "Shortcuts:\n"
                                 "  Ctrl+Alt+←  leftHalf  active\n"
                                 "  Ctrl+Alt+C  center    taken\n"
                                 "\n"
                                 "App rules:\n"
                                 "  org.example.Editor  maximize\n"
                                 "  übung               center\n",
                       .errors = {}}));
}

TEST(RemoteCommand, SaysWhoseATakenShortcutIsWhereThatIsKnown) {
    Program program;
    ControlStatus::Shortcut& center = program.report.shortcuts.at(1);
    center.heldBy = "GNOME";
    EXPECT_THAT(RemoteCommand::carryOut(status, program).output, HasSubstr("  center    taken by GNOME\n"));
    center.purpose = "shows the desktop";
    EXPECT_THAT(RemoteCommand::carryOut(status, program).output,
                HasSubstr("  center    taken: shows the desktop (GNOME)\n"));
    EXPECT_THAT(RemoteCommand::carryOut(statusJson, program).output,
                HasSubstr(R"("state":"taken","heldBy":"GNOME","purpose":"shows the desktop"})"));
}

TEST(RemoteCommand, SaysWhichShortcutsAreBorrowedOrCouldBe) {
    Program program;
    ControlStatus::Shortcut& leftHalf = program.report.shortcuts.at(0);
    ControlStatus::Shortcut& center = program.report.shortcuts.at(1);
    constexpr const char* offer = "\nTessel can use the taken ones while it runs: tessel --take-shortcuts\n";
    EXPECT_FALSE(RemoteCommand::carryOut(status, program).output.contains(offer));
    EXPECT_FALSE(RemoteCommand::carryOut(statusJson, program).output.contains("orrowed"));
    center.canBeBorrowed = true;
    EXPECT_THAT(RemoteCommand::carryOut(status, program).output, HasSubstr(offer));
    EXPECT_THAT(RemoteCommand::carryOut(statusJson, program).output,
                HasSubstr(R"("keys":"Ctrl+Alt+C","state":"taken","canBeBorrowed":true})"));
    program.report.borrowsShortcuts = true;
    leftHalf.isBorrowed = true;
    EXPECT_THAT(RemoteCommand::carryOut(status, program).output, HasSubstr("  leftHalf  active, borrowed\n"));
    leftHalf.heldBy = "GNOME";
    leftHalf.purpose = "shows the desktop";
    EXPECT_THAT(RemoteCommand::carryOut(status, program).output,
                HasSubstr("  leftHalf  active, borrowed from GNOME\n"));
    const std::string json = RemoteCommand::carryOut(statusJson, program).output;
    EXPECT_THAT(json, HasSubstr(R"("borrowsShortcuts":true)"));
    EXPECT_THAT(json, HasSubstr(R"("borrowed":true)"));
    EXPECT_THAT(json, HasSubstr(R"("heldBy":"GNOME")"));
}

TEST(RemoteCommand, SaysWhyATakenShortcutCannotBeBorrowedBelowItsHolder) {
    Program program;
    ControlStatus::Shortcut& center = program.report.shortcuts.at(1);
    EXPECT_FALSE(RemoteCommand::carryOut(statusJson, program).output.contains("orrowable"));
    center.heldBy = "GNOME";
    center.notBorrowable = "keySequence";
    center.whyNot = "it begins a sequence";
    EXPECT_THAT(RemoteCommand::carryOut(status, program).output,
                HasSubstr("  Ctrl+Alt+C  center    taken by GNOME\n"
                          "                        it begins a sequence\n"));
    EXPECT_THAT(RemoteCommand::carryOut(statusJson, program).output,
                HasSubstr(R"("notBorrowable":"keySequence","whyNot":"it begins a sequence"})"));
}

TEST(RemoteCommand, SaysSoWhereThereAreNoRules) {
    Program program;
    program.report.rules.clear();
    EXPECT_TRUE(RemoteCommand::carryOut(status, program).output.ends_with("\nNo app rules.\n"));
}

TEST(RemoteCommand, SaysSoWhereAnotherBuildIsInThePlaceOfTheProgram) {
    Program program;
    EXPECT_FALSE(RemoteCommand::carryOut(status, program).output.contains("updated"));
    program.report.isReplaced = true;
    EXPECT_TRUE(RemoteCommand::carryOut(status, program).output.contains("\nTessel was updated; "));
    EXPECT_TRUE(RemoteCommand::carryOut(statusJson, program).output.contains(R"("updated":true)"));
}

TEST(StatusReport, NamesWhatWasForgotten) {
    EXPECT_EQ(StatusReport::forgottenText({"/a", "/b c"}), "removed /a\nremoved /b c\n");
    EXPECT_EQ(StatusReport::forgottenText({}), "there was nothing to forget\n");
    EXPECT_EQ(StatusReport::forgottenJson({"/a"}, {}), R"({"done":true,"removed":["/a"]})"
                                                       "\n");
    EXPECT_EQ(StatusReport::forgottenJson({}, {"cannot"}),
              R"({"done":false,"removed":[],"error":"failed","message":"cannot"})"
              "\n");
}

TEST(RemoteCommand, PrintsTheStatusForProgramsAsOneObject) {
    Program program;
    program.report.rules.insert_or_assign("quoted \"one\"", "center");
    EXPECT_EQ(RemoteCommand::carryOut(statusJson, program),
              (Outcome{.output = R"({"running":true,"version":"1.2","backend":"X11","status":"shortcutsTaken",)"
                                 R"("statusText":"Some shortcuts are taken: center","enabled":true,"trusted":true,)"
                                 R"("borrowsShortcuts":false,"updated":false,)"
                                 R"("shortcuts":[{"action":"leftHalf","keys":"Ctrl+Alt+←","state":"active"},)"
                                 R"({"action":"center","keys":"Ctrl+Alt+C","state":"taken"}],)"
                                 R"("rules":{"org.example.Editor":"maximize","quoted \"one\"":"center",)"
                                 R"("übung":"center"}})"
                                 "\n",
                       .errors = {}}));
}

TEST(RemoteCommand, AsksForWhatTheCommandLineSays) {
    struct Row {
        Ask ask;
        std::string asked;
    };
    const std::vector<Row> rows{
        {{.what = Ask::What::perform, .arguments = {"leftHalf"}}, "perform leftHalf"},
        {{.what = Ask::What::rule, .arguments = {"org.example.Editor", "none"}}, "rule org.example.Editor none"},
        {{.what = Ask::What::takeShortcuts, .arguments = {}}, "take shortcuts"},
        {{.what = Ask::What::giveBackShortcuts, .arguments = {}}, "give back shortcuts"},
        {{.what = Ask::What::quit, .arguments = {}}, "quit"},
    };
    for (Row row : rows) {
        Program program;
        EXPECT_EQ(RemoteCommand::carryOut(row.ask, program), (Outcome{.output = {}, .errors = {}}));
        row.ask.json = true;
        EXPECT_EQ(RemoteCommand::carryOut(row.ask, program), (Outcome{.output = "{\"done\":true}\n", .errors = {}}));
        EXPECT_EQ(program.asked, (std::vector<std::string>{row.asked, row.asked}));
    }
}

TEST(RemoteCommand, ARefusalIsOneLineOfErrorOrOneObject) {
    Program program;
    program.refusal = ControlRefusal{.kind = Kind::noWindow, .reason = "no window has the focus"};
    Ask ask{.what = Ask::What::perform, .arguments = {"leftHalf"}};
    EXPECT_EQ(RemoteCommand::carryOut(ask, program),
              (Outcome{.output = {}, .errors = "tessel: no window has the focus\n", .status = 1}));
    ask.json = true;
    EXPECT_EQ(RemoteCommand::carryOut(ask, program),
              (Outcome{.output = "{\"done\":false,\"error\":\"noWindow\",\"message\":\"no window has the focus\"}\n",
                       .errors = {},
                       .status = 1}));
}

TEST(RemoteCommand, TheStatusOfAProgramThatDoesNotRunIsThatItDoesNot) {
    Program program;
    program.refusal = ControlRefusal{.kind = Kind::notRunning, .reason = "not running in this session"};
    EXPECT_EQ(RemoteCommand::carryOut(status, program),
              (Outcome{.output = {}, .errors = "tessel: not running in this session\n", .status = 1}));
    EXPECT_EQ(RemoteCommand::carryOut(statusJson, program),
              (Outcome{.output = "{\"running\":false}\n", .errors = {}, .status = 1}));
}

} // namespace
} // namespace tessel
