#include "Tests/Platform/Wayfire/OpenWindowAccess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>

namespace platform::wayfire {
namespace {

using Manners = FakeWayfire::Manners;

constexpr std::chrono::milliseconds turnTime = linux::TurnDeadline::turnLimit;
/// The extra time that a busy machine may take.
constexpr std::chrono::milliseconds slackTime{150};

const Request listRequest{.method = "window-rules/list-views"};

class WayfireSession : public testing::Test {
protected:
    void open() {
        desktop.wayfire.setViews({FakeWayfire::view(7)});
        desktop.session.start();
        ASSERT_TRUE(desktop.table.isOpen());
    }

    [[nodiscard]] Duration timeOf(const std::function<void()>& work) const {
        const Instant begin = desktop.loop.now();
        work();
        return desktop.loop.now() - begin;
    }

    OpenWindowAccess desktop;
};

TEST_F(WayfireSession, WaitsForACompositorThatIsNotThereYet) {
    desktop.wayfire.stop();
    desktop.session.start();
    EXPECT_FALSE(desktop.session.isOpen());
    desktop.wayfire.start();
    EXPECT_TRUE(desktop.runUntil([&] { return desktop.table.isOpen(); }));
}

TEST_F(WayfireSession, NamesThePluginsThatAreMissingAndOpensWithTheLast) {
    desktop.wayfire.setMethod("window-rules/configure-view", false);
    desktop.wayfire.setMethod("command/register-binding", false);
    desktop.session.start();
    EXPECT_FALSE(desktop.session.isOpen());
    EXPECT_THAT(desktop.session.missingPlugins(), testing::ElementsAre("ipc-rules", "command"));
    desktop.wayfire.setMethod("window-rules/configure-view", true);
    ASSERT_TRUE(desktop.runUntil([&] { return desktop.session.missingPlugins().size() == 1; }));
    EXPECT_THAT(desktop.session.missingPlugins(), testing::ElementsAre("command"));
    desktop.wayfire.setMethod("command/register-binding", true);
    EXPECT_TRUE(desktop.runUntil([&] { return desktop.table.isOpen(); }));
    EXPECT_TRUE(desktop.session.missingPlugins().empty());
}

TEST_F(WayfireSession, IsNotOpenedToAPeerThatDoesNotKnowTheEvents) {
    desktop.wayfire.behave(Manners::refusing);
    desktop.session.start();
    EXPECT_FALSE(desktop.session.isOpen());
    desktop.wayfire.behave(Manners::good);
    EXPECT_TRUE(desktop.runUntil([&] { return desktop.table.isOpen(); }));
}

TEST_F(WayfireSession, ASilentPeerCostsNoMoreThanATurn) {
    open();
    desktop.wayfire.behave(Manners::silent);
    const Instant deadline = desktop.session.deadline();
    const Duration taken = timeOf([&] {
        for (int count = 0; count < 5; ++count) {
            EXPECT_EQ(desktop.session.ask(listRequest, deadline), std::nullopt);
        }
    });
    EXPECT_GE(taken, turnTime / 2);
    EXPECT_LT(taken, turnTime + slackTime);
    // It is only late: the connection stays.
    EXPECT_TRUE(desktop.session.isOpen());
}

TEST_F(WayfireSession, APeerThatIsSilentForeverIsLeftAndFoundAgain) {
    open();
    desktop.wayfire.behave(Manners::silent);
    for (int count = 0; count < 20; ++count) {
        static_cast<void>(desktop.session.ask(listRequest, Instant{}));
    }
    EXPECT_FALSE(desktop.session.isOpen());
    ASSERT_TRUE(desktop.runUntil([&] { return !desktop.table.isOpen(); }));
    desktop.wayfire.behave(Manners::good);
    EXPECT_TRUE(desktop.runUntil([&] { return desktop.table.isOpen(); }));
}

TEST_F(WayfireSession, AnAnswerThatComesLateIsNotTakenForAnother) {
    open();
    std::promise<void> end;
    desktop.wayfire.onConfigure(
        [isGivenUp = end.get_future().share()](const Json& /*data*/) { isGivenUp.wait_for(std::chrono::seconds(10)); });
    const auto none =
        desktop.session.askAll({{.method = "window-rules/configure-view", .data = {{"id", 7}}}, listRequest},
                               desktop.loop.now() + std::chrono::milliseconds(5));
    EXPECT_TRUE(none.empty());
    end.set_value();
    const auto both =
        desktop.session.askAll({{.method = "window-rules/get_cursor_position"}, listRequest}, desktop.soon());
    ASSERT_EQ(both.size(), 2U);
    EXPECT_TRUE(both[0].contains("pos")) << both[0];
    EXPECT_TRUE(both[1].is_array()) << both[1];
}

TEST_F(WayfireSession, AnEventAmongTheAnswersIsToldLater) {
    open();
    desktop.wayfire.onConfigure([this](const Json& /*data*/) {
        desktop.wayfire.setViews({FakeWayfire::view(7), FakeWayfire::view(8)});
        desktop.wayfire.reportView("view-mapped", nullptr);
    });
    const auto answer =
        desktop.session.ask({.method = "window-rules/configure-view", .data = {{"id", 7}}}, desktop.soon());
    ASSERT_TRUE(answer.has_value());
    EXPECT_EQ(compositor::textOf(*answer, "result"), "ok");
    EXPECT_EQ(desktop.table.find("8"), nullptr);
    EXPECT_TRUE(desktop.runUntil([&] { return desktop.table.find("8") != nullptr; }));
}

class WayfireSessionWith : public WayfireSession, public testing::WithParamInterface<Manners> {};

TEST_P(WayfireSessionWith, ClosesAndIsOpenedOnceThePeerBehaves) {
    open();
    desktop.wayfire.behave(GetParam());
    const Duration taken = timeOf([&] { EXPECT_EQ(desktop.session.ask(listRequest, desktop.soon()), std::nullopt); });
    EXPECT_LT(taken, turnTime + slackTime);
    ASSERT_TRUE(desktop.runUntil([&] { return !desktop.table.isOpen(); }));
    EXPECT_FALSE(desktop.session.isOpen());
    desktop.wayfire.behave(Manners::good);
    EXPECT_TRUE(desktop.runUntil([&] { return desktop.table.isOpen(); }));
}

TEST_P(WayfireSessionWith, IsNotOpenedToIt) {
    desktop.wayfire.behave(GetParam());
    const Duration taken = timeOf([&] { desktop.session.start(); });
    EXPECT_LT(taken, turnTime + slackTime);
    EXPECT_FALSE(desktop.session.isOpen());
}

INSTANTIATE_TEST_SUITE_P(Hostile, WayfireSessionWith,
                         testing::Values(Manners::garbled, Manners::malformed, Manners::closing));

TEST_F(WayfireSession, AnswersWithoutAQuestionCloseIt) {
    open();
    desktop.wayfire.behave(Manners::twice);
    EXPECT_TRUE(desktop.session.ask(listRequest, desktop.soon()).has_value());
    ASSERT_TRUE(desktop.runUntil([&] { return !desktop.table.isOpen(); }));
    desktop.wayfire.behave(Manners::good);
    EXPECT_TRUE(desktop.runUntil([&] { return desktop.table.isOpen(); }));
}

TEST_F(WayfireSession, AnswersOfAnotherKindMoveNothing) {
    open();
    desktop.wayfire.behave(Manners::nonsense);
    EXPECT_NE(desktop.access.place("7", {{0, 0}, {100, 100}}, desktop.soon()), AXError::success);
    EXPECT_EQ(desktop.access.pointer(), std::nullopt);
    EXPECT_NE(desktop.table.find("7"), nullptr);
    // It counts as a compositor without the plugin.
    desktop.access.refresh(desktop.soon());
    ASSERT_TRUE(desktop.runUntil([&] { return !desktop.table.isOpen(); }));
    desktop.wayfire.behave(Manners::good);
    EXPECT_TRUE(desktop.runUntil([&] { return desktop.table.isOpen(); }));
}

TEST_F(WayfireSession, AWindowWhoseTitleIsNotUtf8IsAWindowLikeAnother) {
    open();
    desktop.wayfire.sendRaw(FakeWayfire::message("{\"event\":\"view-mapped\",\"view\":{\"title\":\"caf\xe9\"}}"));
    ASSERT_TRUE(desktop.refresh());
    EXPECT_TRUE(desktop.session.isOpen());
}

TEST_F(WayfireSession, GarbageAmongTheEventsClosesIt) {
    open();
    desktop.wayfire.sendRaw("garbage and nothing else");
    ASSERT_TRUE(desktop.runUntil([&] { return !desktop.table.isOpen(); }));
    EXPECT_TRUE(desktop.runUntil([&] { return desktop.table.isOpen(); }));
}

} // namespace
} // namespace platform::wayfire
