#include "Tests/Platform/Sway/Layouts.h"
#include "Tests/Platform/Sway/OpenWindowAccess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <future>
#include <thread>

namespace platform::sway {
namespace {

using Manners = FakeSway::Manners;

constexpr std::chrono::milliseconds turn = linux::TurnDeadline::turnLimit;
/// The extra time that a busy machine may take.
constexpr std::chrono::milliseconds slack{150};

class SwaySession : public testing::Test {
protected:
    void open() {
        desktop.sway.setTree(layouts::oneOutput({{.number = 7}}));
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

TEST_F(SwaySession, WaitsForACompositorThatIsNotThereYet) {
    desktop.sway.stop();
    desktop.session.start();
    EXPECT_FALSE(desktop.session.isOpen());
    desktop.sway.start();
    EXPECT_TRUE(desktop.runUntil([&] { return desktop.table.isOpen(); }));
}

TEST_F(SwaySession, IsNotOpenedToAPeerThatRefusesItsEvents) {
    desktop.sway.behave(Manners::refusing);
    desktop.session.start();
    EXPECT_FALSE(desktop.session.isOpen());
    desktop.sway.behave(Manners::good);
    EXPECT_TRUE(desktop.runUntil([&] { return desktop.table.isOpen(); }));
}

TEST_F(SwaySession, ASilentPeerCostsNoMoreThanATurn) {
    open();
    desktop.sway.behave(Manners::silent);
    const Instant deadline = desktop.session.deadline();
    const Duration taken = timeOf([&] {
        for (int count = 0; count < 5; ++count) {
            EXPECT_EQ(desktop.session.ask(i3ipc::MessageType::getTree, "", deadline), std::nullopt);
        }
    });
    EXPECT_GE(taken, turn / 2);
    EXPECT_LT(taken, turn + slack);
    // It is only late: the connection stays.
    EXPECT_TRUE(desktop.session.isOpen());
}

TEST_F(SwaySession, AnAnswerThatComesLateIsNotTakenForAnother) {
    open();
    std::promise<void> end;
    desktop.sway.onTree([isGivenUp = end.get_future().share()] { isGivenUp.wait_for(std::chrono::seconds(10)); });
    EXPECT_EQ(desktop.session.ask(i3ipc::MessageType::getTree, "", desktop.loop.now() + std::chrono::milliseconds(5)),
              std::nullopt);
    end.set_value();
    const auto state = desktop.session.ask(i3ipc::MessageType::getBindingState, "", desktop.soon());
    ASSERT_TRUE(state.has_value());
    EXPECT_EQ(i3ipc::textOf(*state, "name"), "default");
}

TEST_F(SwaySession, APeerThatIsSilentForeverIsLeftAndFoundAgain) {
    open();
    desktop.sway.behave(Manners::silent);
    for (int count = 0; count < 20; ++count) {
        static_cast<void>(desktop.session.ask(i3ipc::MessageType::getTree, "", Instant{}));
    }
    EXPECT_FALSE(desktop.session.isOpen());
    ASSERT_TRUE(desktop.runUntil([&] { return !desktop.table.isOpen(); }));
    desktop.sway.behave(Manners::good);
    EXPECT_TRUE(desktop.runUntil([&] { return desktop.table.isOpen(); }));
}

class SwaySessionWith : public SwaySession, public testing::WithParamInterface<Manners> {};

TEST_P(SwaySessionWith, ClosesAndIsOpenedOnceThePeerBehaves) {
    open();
    desktop.sway.behave(GetParam());
    const Duration taken =
        timeOf([&] { EXPECT_EQ(desktop.session.ask(i3ipc::MessageType::getTree, "", desktop.soon()), std::nullopt); });
    EXPECT_LT(taken, turn + slack);
    ASSERT_TRUE(desktop.runUntil([&] { return !desktop.table.isOpen(); }));
    EXPECT_FALSE(desktop.session.isOpen());
    desktop.sway.behave(Manners::good);
    EXPECT_TRUE(desktop.runUntil([&] { return desktop.table.isOpen(); }));
}

TEST_P(SwaySessionWith, IsNotOpenedToIt) {
    desktop.sway.behave(GetParam());
    const Duration taken = timeOf([&] { desktop.session.start(); });
    EXPECT_LT(taken, turn + slack);
    EXPECT_FALSE(desktop.session.isOpen());
}

INSTANTIATE_TEST_SUITE_P(Hostile, SwaySessionWith,
                         testing::Values(Manners::garbled, Manners::malformed, Manners::endless, Manners::closing));

TEST_F(SwaySession, AnswersOfAnotherKindChangeNothing) {
    open();
    desktop.sway.behave(Manners::nonsense);
    desktop.access.refresh(desktop.soon());
    EXPECT_TRUE(desktop.table.isOpen());
    EXPECT_NE(desktop.table.find("7"), nullptr);
    EXPECT_EQ(desktop.access.place("7", {{0, 0}, {100, 100}}, desktop.soon()), AXError::cannotComplete);
}

TEST_F(SwaySession, GarbageAmongTheEventsClosesIt) {
    open();
    desktop.sway.sendRaw("garbage and nothing else");
    ASSERT_TRUE(desktop.runUntil([&] { return !desktop.table.isOpen(); }));
    EXPECT_TRUE(desktop.runUntil([&] { return desktop.table.isOpen(); }));
}

TEST_F(SwaySession, MalformedEventsCloseIt) {
    open();
    desktop.sway.send(0x80000003, R"({"change": "new", )");
    ASSERT_TRUE(desktop.runUntil([&] { return !desktop.table.isOpen(); }));
    EXPECT_TRUE(desktop.runUntil([&] { return desktop.table.isOpen(); }));
}

TEST_F(SwaySession, AWindowWhoseTitleIsNotUtf8IsAWindowLikeAnother) {
    const std::string title = "caf\xe9";
    desktop.sway.setTree(layouts::oneOutput({{.number = 7}, {.number = 8, .title = title}}));
    desktop.session.start();
    ASSERT_TRUE(desktop.table.isOpen());
    desktop.sway.send(0x80000003, R"({"change":"title","container":{"id":8,"name":")" + title + "\"}}");
    ASSERT_TRUE(desktop.refresh());
    EXPECT_TRUE(desktop.session.isOpen());
    EXPECT_NE(desktop.table.find("7"), nullptr);
    EXPECT_NE(desktop.table.find("8"), nullptr);
}

TEST_F(SwaySession, AnAnswerAmongTheEventsIsNoneOfThem) {
    open();
    desktop.sway.sendRaw(FakeSway::message(4, R"({"type":"root","nodes":[]})"));
    ASSERT_TRUE(desktop.refresh());
    EXPECT_NE(desktop.table.find("7"), nullptr);
}

TEST_F(SwaySession, AFloodOfEventsLeavesTheLoopToOthers) {
    open();
    std::string flood;
    for (int count = 0; count < 5000; ++count) {
        flood += FakeSway::message(0x80000003, R"({"change":"title","container":{"id":7}})");
    }
    std::atomic<bool> isSent = false;
    // A sender of that much data waits for the reader.
    const std::jthread sender([&] {
        desktop.sway.sendRaw(flood);
        isSent = true;
    });
    int turns = 0;
    const std::function<void()> takeTurn = [&] {
        ++turns;
        if (!isSent) {
            desktop.loop.post(takeTurn);
        }
    };
    takeTurn();
    EXPECT_TRUE(desktop.runUntil([&] { return isSent.load(); }));
    EXPECT_GT(turns, 10);
    EXPECT_TRUE(desktop.refresh());
}

} // namespace
} // namespace platform::sway
