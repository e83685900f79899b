#include "Platform/Cinnamon/CoreLoader.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"
#include "Tests/Platform/ShellCore/ShellFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace platform::cinnamon {
namespace {

using Kind = AccessObstacle::Kind;

/// Cinnamon without the core: it has a reply to Eval, and gets the core from the test.
class TheCore : public shellcore::ShellTest {
protected:
    explicit TheCore(bool isProgramNameTaken = false)
        : ShellTest({.name = "org.Cinnamon", .path = "/org/Cinnamon", .isProgramNameTaken = isProgramNameTaken}) {
        write(folder / "core.js", "return '';");
        answerEval(1, "\"\"");
    }

    void answerEval(int isDone, const std::string& result) {
        shell->answer("Eval",
                      [=](sd_bus_message* call) { sd_bus_reply_method_return(call, "bs", isDone, result.c_str()); });
    }

    /// Cinnamon runs the code, which is there from then on.
    void runTheCore() {
        shell->answer("Eval", [this](sd_bus_message* call) {
            shell->setCore(true);
            sd_bus_reply_method_return(call, "bs", 1, R"("")");
        });
    }

    /// Cinnamon leaves Eval without a reply.
    void leavePending() {
        shell->answer("Eval", [](sd_bus_message* /*call*/) {});
    }

    /// Returns when everything has run that was due within that time.
    [[nodiscard]] bool pass(Duration time) {
        bool isOver = false;
        const auto end = loop.schedule(loop.now() + time, Duration::zero(), [&] { isOver = true; });
        return until([&] { return isOver; });
    }

    [[nodiscard]] auto evaluations() {
        const auto calls = shell->calls();
        return std::ranges::count_if(calls, [](const std::string& call) { return call.starts_with("Eval"); });
    }

    [[nodiscard]] bool untilObstacle(const AccessObstacle& wanted) {
        return until([&] { return loader.obstacle() == wanted; });
    }

    [[nodiscard]] static AccessObstacle refusal(const std::string& detail) {
        return {.kind = Kind::codeRefused, .desktop = "Cinnamon", .detail = detail};
    }

    static constexpr Duration patience = std::chrono::milliseconds(300);

    TemporaryFolder folder;
    CoreLoader loader{loop, *link, folder / "core.js", patience};
};

TEST_F(TheCore, IsSentToACinnamonWithoutItForThisConnection) {
    ASSERT_TRUE(until([&] { return evaluations() == 1; }));
    const char* client = nullptr;
    ASSERT_GE(sd_bus_get_unique_name(link->connection(), &client), 0);
    EXPECT_TRUE(shell->wasCalled("Eval (function (program) {\nreturn '';\n})('" + std::string(client) + "')"));
    EXPECT_EQ(loader.obstacle(), CoreLoader::silence());
    shell->setCore(true);
    ASSERT_TRUE(until([&] { return link->isOpen(); }));
    EXPECT_EQ(loader.obstacle(), std::nullopt);
}

TEST_F(TheCore, IsNotSentAgainWhileItWorks) {
    ASSERT_TRUE(until([&] { return evaluations() == 1; }));
    shell->setCore(true);
    ASSERT_TRUE(until([&] { return link->isOpen(); }));
    loader.retry();
    catchUp();
    EXPECT_EQ(evaluations(), 1);
}

TEST_F(TheCore, IsSentToACinnamonThatStartsLater) {
    ASSERT_TRUE(until([&] { return evaluations() == 1; }));
    shell->setCore(true);
    ASSERT_TRUE(until([&] { return link->isOpen(); }));
    shell.reset();
    ASSERT_TRUE(untilObstacle(CoreLoader::silence()));
    shell.emplace(bus.address(), place);
    EXPECT_TRUE(until([&] { return evaluations() > 0; }));
}

TEST_F(TheCore, IsSentAgainWhenItIsGone) {
    ASSERT_TRUE(until([&] { return evaluations() == 1; }));
    shell->setCore(true);
    ASSERT_TRUE(until([&] { return link->isOpen(); }));
    shell->setCore(false);
    EXPECT_TRUE(until([&] { return evaluations() == 2; }));
}

TEST_F(TheCore, IsSentUntilCinnamonAcceptsIt) {
    shell->answer("Eval", [](sd_bus_message* call) {
        sd_bus_reply_method_errorf(call, SD_BUS_ERROR_UNKNOWN_METHOD, "Eval is closed");
    });
    int refusals = 0;
    loader.onRefusal([&] { ++refusals; });
    ASSERT_TRUE(untilObstacle(refusal("Eval is closed")));
    ASSERT_TRUE(until([&] { return evaluations() >= 3; }));
    answerEval(1, "\"\"");
    const auto before = evaluations();
    ASSERT_TRUE(until([&] { return evaluations() > before; }));
    shell->setCore(true);
    ASSERT_TRUE(until([&] { return link->isOpen(); }));
    EXPECT_EQ(loader.obstacle(), std::nullopt);
    EXPECT_EQ(refusals, 1) << "another failure for the same reason is no news";
}

TEST_F(TheCore, IsSentAtIntervalsThatDouble) {
    std::vector<std::chrono::steady_clock::time_point> sent;
    shell->answer("Eval", [&](sd_bus_message* call) {
        sent.push_back(std::chrono::steady_clock::now());
        sd_bus_reply_method_return(call, "bs", 0, "");
    });
    ASSERT_TRUE(until([&] { return evaluations() >= 4; }));
    shell->run([&] {
        Duration least = CoreLoader::soonestRetry;
        for (std::size_t number = 1; number < sent.size(); ++number, least *= 2) {
            EXPECT_GE(sent[number] - sent[number - 1], least) << number;
        }
    });
}

TEST_F(TheCore, ThatIsRefusedIsReportedWithTheReason) {
    for (const auto& [isDone, result, reason] : {
             std::tuple(1, R"("Error: there is one already")", "Error: there is one already"),
             std::tuple(0, R"({"stack":""})", "it does not evaluate code"),
             std::tuple(0, R"("")", "it does not evaluate code"),
             std::tuple(0, R"("SyntaxError")", "SyntaxError"),
             std::tuple(0, "", "it does not evaluate code"),
             std::tuple(1, "nonsense", "it does not evaluate code"),
         }) {
        // A reason of its own in between, so that each refusal is seen.
        answerEval(1, R"("another")");
        loader.retry();
        ASSERT_TRUE(untilObstacle(refusal("another")));
        answerEval(isDone, result);
        loader.retry();
        EXPECT_TRUE(untilObstacle(refusal(reason))) << result;
    }
    shell->answerWith("Eval", "u", 7U);
    EXPECT_TRUE(untilObstacle(refusal("its reply to Eval is of another form")));
}

TEST_F(TheCore, IsNotSentAgainByAnAttemptThatWasDueBeforeItAnswered) {
    answerEval(0, "");
    ASSERT_TRUE(untilObstacle(refusal("it does not evaluate code")));
    shell->setCore(true);
    ASSERT_TRUE(until([&] { return link->isOpen(); }));
    const auto before = evaluations();
    ASSERT_TRUE(pass(2 * std::max(patience, CoreLoader::soonestRetry)));
    EXPECT_EQ(evaluations(), before);
    EXPECT_EQ(loader.obstacle(), std::nullopt);
}

TEST_F(TheCore, ThatAnswersBeforeCinnamonRepliesIsNotSentAgain) {
    linux::OwnedMessage pending;
    shell->answer("Eval", [&](sd_bus_message* call) {
        pending.reset(sd_bus_message_ref(call));
        shell->setCore(true);
    });
    ASSERT_TRUE(until([&] { return link->isOpen(); }));
    const auto before = evaluations();
    shell->run([&] {
        sd_bus_reply_method_return(pending.get(), "bs", 0, "");
        pending.reset();
    });
    ASSERT_TRUE(pass(2 * std::max(patience, CoreLoader::soonestRetry)));
    EXPECT_EQ(evaluations(), before);
}

TEST_F(TheCore, ThatCinnamonRanButDidNotKeepIsReportedAndSentAgain) {
    ASSERT_TRUE(untilObstacle(refusal("the code does not answer")));
    const auto before = evaluations();
    runTheCore();
    ASSERT_TRUE(until([&] { return link->isOpen(); }));
    EXPECT_GT(evaluations(), before);
    EXPECT_EQ(loader.obstacle(), std::nullopt);
}

TEST_F(TheCore, IsSentToTheNextCinnamonIfOneEndsBeforeItsReply) {
    leavePending();
    int refusals = 0;
    loader.onRefusal([&] { ++refusals; });
    ASSERT_TRUE(until([&] { return evaluations() > 0; }));
    shell.reset();
    // The bus reports the lost call as an error, but no Cinnamon has refused anything.
    ASSERT_TRUE(until([&] { return link->obstacle() == shellcore::ShellLink::Obstacle::noShell; }));
    ASSERT_TRUE(pass(CoreLoader::soonestRetry));
    EXPECT_EQ(loader.obstacle(), CoreLoader::silence());
    EXPECT_EQ(refusals, 0);
    shell.emplace(bus.address(), place);
    runTheCore();
    ASSERT_TRUE(until([&] { return link->isOpen(); }));
    EXPECT_EQ(evaluations(), 1);
}

TEST_F(TheCore, ThatOneCinnamonRefusedIsNewToTheNext) {
    answerEval(0, "");
    int refusals = 0;
    loader.onRefusal([&] { ++refusals; });
    ASSERT_TRUE(untilObstacle(refusal("it does not evaluate code")));
    shell.reset();
    ASSERT_TRUE(until([&] { return link->obstacle() == shellcore::ShellLink::Obstacle::noShell; }));
    // The attempt that was due is gone with it.
    ASSERT_TRUE(pass(3 * CoreLoader::soonestRetry));
    EXPECT_EQ(refusals, 1);
    shell.emplace(bus.address(), place);
    leavePending();
    ASSERT_TRUE(until([&] { return evaluations() > 0; }));
    EXPECT_EQ(loader.obstacle(), CoreLoader::silence());
}

TEST_F(TheCore, OfAFormerRunMakesWayForThisOnes) {
    // A program that was killed is gone for Cinnamon only when the bus has said so.
    answerEval(1, R"("Error: an object is exported already")");
    ASSERT_TRUE(untilObstacle(refusal("Error: an object is exported already")));
    runTheCore();
    ASSERT_TRUE(until([&] { return link->isOpen(); }));
    // Cinnamon reports its end to the new owner of the name, which it served meanwhile.
    const auto before = evaluations();
    shell->setCore(false);
    ASSERT_TRUE(until([&] { return evaluations() > before && link->isOpen(); }));
    EXPECT_EQ(loader.obstacle(), std::nullopt);
}

TEST_F(TheCore, IsNotSentTwiceWhileCinnamonHasNotReplied) {
    leavePending();
    ASSERT_TRUE(until([&] { return evaluations() > 0; }));
    const auto before = evaluations();
    loader.retry();
    catchUp();
    EXPECT_EQ(evaluations(), before);
}

TEST_F(TheCore, WhoseRefusalIsLongIsReportedWithItsBeginning) {
    answerEval(1, '"' + std::string(1000, 'x') + '"');
    EXPECT_TRUE(untilObstacle(refusal(std::string(200, 'x'))));
}

TEST_F(TheCore, WhoseFileIsMissingIsReported) {
    std::filesystem::remove(folder / "core.js");
    EXPECT_TRUE(untilObstacle(refusal(std::string(folder / "core.js") + " is missing")));
    EXPECT_EQ(evaluations(), 0);
}

TEST_F(TheCore, IsTriedAgainAtOnceWhenTheUserAsks) {
    answerEval(0, "");
    // The delay doubles with each failure, so a late attempt is the user's.
    ASSERT_TRUE(until([&] { return evaluations() == 3; }));
    catchUp();
    const auto before = evaluations();
    loader.retry();
    catchUp();
    EXPECT_EQ(evaluations(), before + 1);
}

TEST_F(TheCore, ThatServesAnotherClientOrLacksAFunctionIsReported) {
    const auto refuseHello = [&](const char* error, const char* message) {
        shell->answer("Hello", [=](sd_bus_message* call) { sd_bus_reply_method_errorf(call, error, "%s", message); });
        shell->setCore(true);
    };
    refuseHello("org.corvid.Tessel.Windows1.Denied", "not you");
    EXPECT_TRUE(untilObstacle({.kind = Kind::busNameTaken, .detail = "org.corvid.Tessel.Windows"}));
    refuseHello("org.corvid.Tessel.Windows1.Unusable", "Meta.Window");
    EXPECT_TRUE(untilObstacle(refusal("it lacks Meta.Window")));
}

/// Another client owns the program's name when the program starts.
class TheCoreBesideAnotherClient : public TheCore {
protected:
    TheCoreBesideAnotherClient()
        : TheCore(true) {}
};

TEST_F(TheCoreBesideAnotherClient, IsReportedToServeThatAndServesThisOnceTheNameIsFree) {
    shell->answer("Hello", [](sd_bus_message* call) {
        sd_bus_reply_method_errorf(call, "org.corvid.Tessel.Windows1.Denied", "not you");
    });
    runTheCore();
    ASSERT_TRUE(untilObstacle({.kind = Kind::busNameTaken, .detail = "org.corvid.Tessel.Windows"}));
    // As for the copy of a former run, which ends without a signal to this client.
    shell->setCore(false);
    shell->releaseProgramName();
    ASSERT_TRUE(until([&] { return evaluations() > 1; }));
}

} // namespace
} // namespace platform::cinnamon
