#include "Platform/ShellCore/ShellLink.h"
#include "Tests/Platform/Linux/Stopwatch.h"
#include "Tests/Platform/ShellCore/ShellFixture.h"

#include <string>
#include <vector>

namespace platform::shellcore {
namespace {

using std::chrono::milliseconds;
using Obstacle = ShellLink::Obstacle;

/// Records its notifications.
class Notebook final : public ShellLink::Listener {
public:
    using Listener::Listener;

    std::vector<std::string> lines;

private:
    void opened(const Hello& hello, bool isNew) override {
        lines.push_back("opened " + hello.session + (isNew ? " anew" : ""));
    }

    void closed() override { lines.emplace_back("closed"); }

    void signalArrived(std::string_view signal, sd_bus_message* /*message*/) override { lines.emplace_back(signal); }
};

using Lines = std::vector<std::string>;

class ALinkToTheShell : public ShellTest {
protected:
    Notebook notes{*link};
};

TEST_F(ALinkToTheShell, IsOpenAtOnceWhereTheExtensionIs) {
    shell->setCore(true);
    link->await(soon());
    EXPECT_TRUE(link->isOpen());
    EXPECT_EQ(notes.lines, Lines{"opened first anew"});
}

TEST_F(ALinkToTheShell, IsKnownToBeClosedWhereTheShellLacksTheExtension) {
    link->await(soon());
    EXPECT_EQ(link->obstacle(), Obstacle::noCore);
    EXPECT_EQ(notes.lines, Lines{"closed"});
}

TEST_F(ALinkToTheShell, IsKnownToBeClosedWhereThereIsNoShell) {
    shell.reset();
    link->await(soon());
    EXPECT_EQ(link->obstacle(), Obstacle::noShell);
}

TEST_F(ALinkToTheShell, IsWaitedForNoLongerThanItMayTake) {
    shell->setCore(true);
    shell->answer("Hello", [](sd_bus_message* /*call*/) {});
    const Instant before = loop.now();
    link->await(before + milliseconds(200));
    EXPECT_EQ(link->obstacle(), Obstacle::unknown);
    EXPECT_LT(loop.now() - before, std::chrono::seconds(2));
}

TEST_F(ALinkToTheShell, OpensAndClosesWithTheExtension) {
    link->await(soon());
    shell->setCore(true);
    ASSERT_TRUE(until([&] { return link->isOpen(); }));
    shell->setCore(false);
    ASSERT_TRUE(until([&] { return !link->isOpen(); }));
    shell->setCore(true, "second");
    ASSERT_TRUE(until([&] { return link->isOpen(); }));
    EXPECT_EQ(notes.lines, (Lines{"closed", "opened first anew", "closed", "opened second anew"}));
}

TEST_F(ALinkToTheShell, LearnsThatTheExtensionBeganAnewWithoutHavingClosed) {
    shell->setCore(true);
    link->await(soon());
    shell->setCore(true, "second");
    ASSERT_TRUE(until([&] { return notes.lines.size() > 1; }));
    EXPECT_EQ(notes.lines, (Lines{"opened first anew", "opened second anew"}));
}

TEST_F(ALinkToTheShell, ReportsTheSameStartOnlyOnce) {
    shell->setCore(true);
    link->await(soon());
    shell->setCore(true);
    catchUp();
    EXPECT_EQ(notes.lines, Lines{"opened first anew"});
}

TEST_F(ALinkToTheShell, FollowsTheShellThatEndsAndComesBack) {
    shell->setCore(true);
    link->await(soon());
    shell.reset();
    ASSERT_TRUE(until([&] { return link->obstacle() == Obstacle::noShell; }));
    shell.emplace(bus.address(), place);
    shell->setCore(true, "second");
    ASSERT_TRUE(until([&] { return link->isOpen(); }));
    EXPECT_EQ(notes.lines.back(), "opened second anew");
}

TEST_F(ALinkToTheShell, FollowsTheBusThatEndsAndComesBack) {
    shell->setCore(true);
    link->await(soon());
    shell.reset();
    bus.stop();
    ASSERT_TRUE(until([&] { return link->connection() == nullptr; }));
    EXPECT_EQ(link->obstacle(), Obstacle::noShell);
    EXPECT_FALSE(link->call(soon(), "Frames", ""));
    link->send("HideItem", "");
    bus.start();
    shell.emplace(bus.address(), place);
    shell->setCore(true, "second");
    EXPECT_TRUE(until([&] { return link->isOpen(); }));
}

TEST_F(ALinkToTheShell, RefusesAnExtensionOfAnotherVersion) {
    shell->setCore(true);
    shell->answerWithText("Hello", R"({"version":2,"session":"x","windows":[],"outputs":[]})");
    link->await(soon());
    EXPECT_EQ(link->obstacle(), Obstacle::otherVersion);
}

TEST_F(ALinkToTheShell, RefusesAnAnswerThatIsNone) {
    const auto text = [](const char* said) {
        return [said](sd_bus_message* call) { sd_bus_reply_method_return(call, "s", said); };
    };
    const std::vector<FakeShell::Answer> answers{
        text(""), text("{"), text("[]"), text("\"Hello\""),
        [](sd_bus_message* call) { sd_bus_reply_method_return(call, "s", std::string(200'000, '[').c_str()); }};
    int beginnings = 0;
    link->await(soon());
    for (const FakeShell::Answer& answer : answers) {
        shell->answer("Hello", nullptr);
        shell->setCore(true, "good " + std::to_string(++beginnings));
        ASSERT_TRUE(until([&] { return link->isOpen(); })) << beginnings;
        shell->answer("Hello", answer);
        shell->setCore(true, "bad " + std::to_string(beginnings));
        EXPECT_TRUE(until([&] { return link->obstacle() == Obstacle::otherVersion; })) << beginnings;
    }
}

TEST_F(ALinkToTheShell, TakesAnAnswerOfAnotherTypeForNoExtension) {
    shell->setCore(true);
    shell->answerWith("Hello", "u", 1U);
    link->await(soon());
    EXPECT_EQ(link->obstacle(), Obstacle::noCore);
}

TEST_F(ALinkToTheShell, DoesNotListenToStrangers) {
    shell->setCore(true);
    link->await(soon());
    shell->sendAsStranger("Closed");
    shell->sendAsStranger("Moved");
    shell->send("Focused", [](sd_bus_message* signal) { sd_bus_message_append(signal, "t", std::uint64_t{1}); });
    ASSERT_TRUE(until([&] { return notes.lines.back() == "Focused"; }));
    catchUp();
    EXPECT_EQ(notes.lines, (Lines{"opened first anew", "Focused"}));
}

TEST_F(ALinkToTheShell, GivesUpOnACallThatIsNotAnswered) {
    shell->setCore(true);
    link->await(soon());
    shell->answer("Frames", [](sd_bus_message* /*call*/) {});
    const Instant before = loop.now();
    const auto answer = link->call(before + milliseconds(100), "Frames", "");
    ASSERT_FALSE(answer);
    EXPECT_EQ(answer.error().name, "");
    EXPECT_GE(loop.now() - before, milliseconds(99));
    EXPECT_LT(loop.now() - before, std::chrono::seconds(2));
}

TEST_F(ALinkToTheShell, WaitsNoLongerInOneTurnThanItMay) {
    shell->setCore(true);
    link->await(soon());
    shell->answer("Frames", [](sd_bus_message* /*call*/) {});
    const linux::Stopwatch stopwatch;
    for (int time = 0; time < 5; ++time) {
        EXPECT_FALSE(link->call(link->deadline(), "Frames", ""));
    }
    EXPECT_LT(stopwatch.elapsed(), 2 * linux::TurnDeadline::turnLimit);
    bool isNextTurn = false;
    loop.post([&] { isNextTurn = true; });
    ASSERT_TRUE(until([&] { return isNextTurn && link->deadline() > loop.now() + milliseconds(200); }));
}

} // namespace
} // namespace platform::shellcore
