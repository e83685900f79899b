#include "FakeHerbstluftwm.h"
#include "Platform/Herbstluftwm/Manager.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Tests/Platform/X11/XServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <vector>

namespace platform::herbstluftwm {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Reply = FakeHerbstluftwm::Reply;

/// The additional time that a busy machine takes.
constexpr std::chrono::milliseconds extra{150};

// In the layout it has a border of 3, outside one of 5.
const Reply tiled{.output = "client 0x5 106x206+0+20 100x200+3+23 false true 1\narea 800x580+0+20 1\n"};
const Reply placed{.output = "client 0x5 400x300+0+20 390x290+5+25 true true 1\n"};

class HerbstluftwmManager : public testing::Test {
protected:
    HerbstluftwmManager() { display().deadline().begin(); }

    [[nodiscard]] x11::Connection& display() { return testClient.connection(); }

    x11::XServer server;
    x11::TestClient testClient{server.display()};
    FakeHerbstluftwm herbstluftwm{server.display()};
    linux::MainLoop loop;
    Manager manager;
};

TEST_F(HerbstluftwmManager, ReadsTheLayout) {
    herbstluftwm.prepare({tiled});
    const auto layout = manager.readLayout(display());
    ASSERT_TRUE(layout);
    EXPECT_TRUE(layout->windows.at(5).isTiled);
    EXPECT_THAT(layout->workAreas, ElementsAre(corvid::CGRect{{0, 20}, {800, 580}}));
}

TEST_F(HerbstluftwmManager, PlacesAWindowOnceMoreIfItHasAnotherDecorationOutside) {
    herbstluftwm.prepare({tiled, {.output = "client 0x5 404x304-2+18 394x294+3+23 true true 1\n"}, placed});
    ASSERT_TRUE(manager.readLayout(display()));
    static_cast<void>(herbstluftwm.takeCommands());
    EXPECT_TRUE(manager.place(display(), 5, {{0, 20}, {400, 300}}));
    EXPECT_THAT(herbstluftwm.takeCommands(),
                ElementsAre(HasSubstr("clients.0x5.floating_geometry 394x294+3+3 , set_attr clients.0x5.floating true"),
                            HasSubstr("clients.0x5.floating_geometry 390x290+5+5 , true ,")));
}

TEST_F(HerbstluftwmManager, PlacesAWindowOnceIfTheThemeTellsItsDecorationOutside) {
    Reply withTheme = tiled;
    withTheme.output += "focus 0x5\nactive 5 0 0 0 0 0 0 always\nnormal 3 0 0 0 0 0 0 always\n";
    herbstluftwm.prepare({withTheme, placed});
    ASSERT_TRUE(manager.readLayout(display()));
    static_cast<void>(herbstluftwm.takeCommands());
    EXPECT_TRUE(manager.place(display(), 5, {{0, 20}, {400, 300}}));
    EXPECT_THAT(
        herbstluftwm.takeCommands(),
        ElementsAre(HasSubstr("clients.0x5.floating_geometry 390x290+5+5 , set_attr clients.0x5.floating true")));
}

TEST_F(HerbstluftwmManager, PlacesNoWindowThatItHasNotReported) {
    EXPECT_FALSE(manager.place(display(), 5, {{0, 20}, {400, 300}}));
    herbstluftwm.prepare({tiled});
    ASSERT_TRUE(manager.readLayout(display()));
    EXPECT_FALSE(manager.place(display(), 6, {{0, 20}, {400, 300}}));
    EXPECT_THAT(herbstluftwm.takeCommands(), testing::SizeIs(1));
}

TEST_F(HerbstluftwmManager, AFailureIsNoReply) {
    herbstluftwm.prepare({{.output = tiled.output, .status = 3}, tiled});
    EXPECT_EQ(manager.readLayout(display()), std::nullopt);
    EXPECT_TRUE(manager.readLayout(display()));
}

TEST_F(HerbstluftwmManager, ASilentOneCostsNoMoreThanATurn) {
    const Instant begin = loop.now();
    for (int count = 0; count < 5; ++count) {
        EXPECT_EQ(manager.readLayout(display()), std::nullopt);
        EXPECT_FALSE(manager.place(display(), 5, {{0, 20}, {400, 300}}));
    }
    const Duration taken = loop.now() - begin;
    EXPECT_GE(taken, linux::TurnDeadline::turnLimit / 2);
    EXPECT_LT(taken, linux::TurnDeadline::turnLimit + extra);
    // It may still reply to one of the former commands, and later than a turn waits.
    constexpr std::size_t enough = 40;
    herbstluftwm.prepare(std::vector<Reply>(enough, tiled));
    bool isRead = false;
    for (std::size_t count = 0; count < enough && !isRead; ++count) {
        display().deadline().begin();
        isRead = manager.readLayout(display()).has_value();
    }
    EXPECT_TRUE(isRead);
}

} // namespace
} // namespace platform::herbstluftwm
