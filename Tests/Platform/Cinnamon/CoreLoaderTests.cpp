#include "Platform/Cinnamon/CoreLoader.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"
#include "Tests/Platform/ShellCore/ShellFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

namespace platform::cinnamon {
namespace {

using Kind = AccessObstacle::Kind;

/// Cinnamon without the core: it has a reply to Eval, and gets the core from the test.
class TheCore : public shellcore::ShellTest {
protected:
    TheCore()
        : ShellTest({.name = "org.Cinnamon", .path = "/org/Cinnamon"}) {
        write(folder / "core.js", "return '';");
        answerEval(1, "\"\"");
    }

    void answerEval(int isDone, const std::string& result) {
        shell->answer("Eval",
                      [=](sd_bus_message* call) { sd_bus_reply_method_return(call, "bs", isDone, result.c_str()); });
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

    TemporaryFolder folder;
    CoreLoader loader{loop, *link, folder / "core.js"};
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
    answerEval(1, "\"\"");
    const auto before = evaluations();
    ASSERT_TRUE(until([&] { return evaluations() > before; }));
    shell->setCore(true);
    ASSERT_TRUE(until([&] { return link->isOpen(); }));
    EXPECT_EQ(loader.obstacle(), std::nullopt);
    EXPECT_EQ(refusals, 1) << "another failure for the same reason is no news";
}

TEST_F(TheCore, ThatIsRefusedIsReportedWithTheReason) {
    for (const auto& [isDone, result, reason] : {
             std::tuple(1, R"("Error: there is one already")", "Error: there is one already"),
             std::tuple(0, R"({"stack":""})", "it does not evaluate code"),
             std::tuple(0, "", "it does not evaluate code"),
             std::tuple(1, "nonsense", "it does not evaluate code"),
         }) {
        answerEval(isDone, result);
        EXPECT_TRUE(untilObstacle(refusal(reason))) << reason;
    }
    shell->answerWith("Eval", "u", 7U);
    EXPECT_TRUE(untilObstacle(refusal("its reply to Eval is of another form")));
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

} // namespace
} // namespace platform::cinnamon
