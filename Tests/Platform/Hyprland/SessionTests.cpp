#include "Tests/Platform/Hyprland/OpenHyprland.h"
#include "Tests/Platform/Linux/Stopwatch.h"

#include <gtest/gtest.h>

namespace platform::hyprland {
namespace {

using Manners = FakeHyprland::Manners;

constexpr std::chrono::milliseconds turn = linux::TurnDeadline::turnLimit;
/// The extra time that a busy machine may take.
constexpr std::chrono::milliseconds slack{200};

class HyprlandSession : public testing::Test {
protected:
    void open() {
        desktop.peer.setWindows({{.address = 7}});
        desktop.session.start();
        ASSERT_TRUE(desktop.table.isOpen());
    }

    OpenHyprland desktop;
};

TEST_F(HyprlandSession, WaitsForACompositorThatIsNotThereYet) {
    desktop.peer.stop();
    desktop.session.start();
    EXPECT_FALSE(desktop.session.isOpen());
    desktop.peer.start();
    EXPECT_TRUE(desktop.runUntil([&] { return desktop.table.isOpen(); }));
}

TEST_F(HyprlandSession, AnInstanceOnAnotherDisplayIsNotTaken) {
    InstanceFacts facts = desktop.peer.facts();
    facts.signature = "ended";
    EXPECT_NE(runningFolder(facts), "");
    facts.display = "wayland-8";
    EXPECT_EQ(runningFolder(facts), "");
    facts.display = "/run/user/7/wayland-7";
    EXPECT_NE(runningFolder(facts), "");
}

TEST_F(HyprlandSession, ASilentPeerCostsNoMoreThanATurn) {
    open();
    desktop.peer.behave(Manners::silent);
    const Instant deadline = desktop.session.deadline();
    const linux::Stopwatch stopwatch;
    for (int count = 0; count < 5; ++count) {
        EXPECT_EQ(desktop.session.ask("j/clients", deadline), std::nullopt);
    }
    EXPECT_GE(stopwatch.elapsed(), turn / 2);
    EXPECT_LT(stopwatch.elapsed(), turn + slack);
    // It is only late.
    EXPECT_TRUE(desktop.session.isOpen());
}

TEST_F(HyprlandSession, APeerThatNeverAnswersIsLeftAndFoundAgain) {
    open();
    desktop.peer.behave(Manners::silent);
    ASSERT_TRUE(desktop.runUntil([&] {
        EXPECT_EQ(desktop.session.ask("j/clients", Instant{}), std::nullopt);
        return !desktop.table.isOpen();
    }));
    desktop.peer.behave(Manners::good);
    EXPECT_TRUE(desktop.runUntil([&] { return desktop.table.isOpen(); }));
}

class HyprlandSessionWith : public HyprlandSession, public testing::WithParamInterface<Manners> {};

TEST_P(HyprlandSessionWith, GetsNothingAndGoesOnOnceThePeerBehaves) {
    open();
    desktop.peer.behave(GetParam());
    const linux::Stopwatch stopwatch;
    EXPECT_EQ(desktop.access.place("0x7", {{0, 0}, {960, 1080}}, desktop.soon()), AXError::cannotComplete);
    EXPECT_LT(stopwatch.elapsed(), turn + slack);
    EXPECT_NE(desktop.table.find("0x7"), nullptr);
    desktop.peer.behave(Manners::good);
    desktop.peer.open({.address = 8});
    EXPECT_TRUE(desktop.runUntil([&] { return desktop.table.find("0x8") != nullptr; }));
}

INSTANTIATE_TEST_SUITE_P(Faults, HyprlandSessionWith,
                         testing::Values(Manners::silent, Manners::unknowing, Manners::malformed, Manners::nonsense,
                                         Manners::endless, Manners::closing));

TEST_P(HyprlandSessionWith, OpensAsSoonAsThePeerBehaves) {
    desktop.peer.behave(GetParam());
    desktop.session.start();
    EXPECT_FALSE(desktop.table.isOpen());
    desktop.peer.behave(Manners::good);
    EXPECT_TRUE(desktop.runUntil([&] { return desktop.table.isOpen(); }));
}

TEST_F(HyprlandSession, EventsThatAreNoneDoNoHarm) {
    open();
    desktop.peer.sendRaw("\n>>\nclosewindow\nclosewindow>>\nclosewindow>>zz\nopen");
    desktop.peer.setWindows({{.address = 7}, {.address = 8}});
    desktop.peer.sendRaw("window>>8,1,a,b\n");
    EXPECT_TRUE(desktop.runUntil([&] { return desktop.table.find("0x8") != nullptr; }));
    EXPECT_NE(desktop.table.find("0x7"), nullptr);
}

TEST_F(HyprlandSession, AnEventWithoutAnEndBreaksTheConnectionWhichIsMadeAnew) {
    open();
    desktop.peer.sendRaw(std::string(std::size_t{100} << 10U, 'x'));
    ASSERT_TRUE(desktop.runUntil([&] { return !desktop.table.isOpen(); }));
    EXPECT_TRUE(desktop.runUntil([&] { return desktop.table.isOpen(); }));
}

} // namespace
} // namespace platform::hyprland
