#include "FakeBspwm.h"
#include "Platform/Bspwm/Manager.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Tests/Platform/X11/ClientProcess.h"
#include "Tests/Platform/X11/TestClient.h"
#include "Tests/Platform/X11/XServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace platform::bspwm {
namespace {

using corvid::CGRect;
using Manners = FakeBspwm::Manners;
using testing::ElementsAre;

/// The additional time that a busy machine takes.
constexpr std::chrono::milliseconds slack{150};

class BspwmManager : public testing::Test {
protected:
    BspwmManager() {
        setenv("BSPWM_SOCKET", bspwm.path().c_str(), 1);
        bspwm.setState(R"({"monitors":[{"desktops":[{"root":{"id":5,"client":{"state":"tiled"}}}]}]})");
        bspwm.setNode(R"({"client":{"borderWidth":3}})");
        display().deadline().begin();
    }

    ~BspwmManager() override { unsetenv("BSPWM_SOCKET"); }

    [[nodiscard]] x11::Connection& display() { return testClient.connection(); }

    [[nodiscard]] bool answers() {
        display().deadline().begin();
        const auto layout = manager.readLayout(display());
        return layout && layout->windows.contains(5);
    }

    /// The rectangle of a client within its border, and the corner of the border.
    [[nodiscard]] CGRect geometry(xcb_window_t window) {
        const auto reply = display().reply<xcb_get_geometry_reply_t>(xcb_get_geometry(display().raw(), window));
        return reply ? CGRect{{double(reply->x), double(reply->y)}, {double(reply->width), double(reply->height)}}
                     : CGRect{};
    }

    x11::XServer server;
    x11::TestClient testClient{server.display()};
    x11::ClientProcess client{server.display()};
    FakeBspwm bspwm;
    linux::MainLoop loop;
    Manager manager{loop};
};

TEST_F(BspwmManager, ReadsTheLayout) {
    EXPECT_TRUE(answers());
    EXPECT_THAT(bspwm.takeRequests(), ElementsAre("wm -d "));
}

TEST_F(BspwmManager, TakesAWindowOutOfTheLayoutAndPutsItThereWithItsBorder) {
    const xcb_window_t window = client.makeWindow();
    const std::string id = std::to_string(window);
    EXPECT_TRUE(manager.place(display(), window, {{-10, 20.6}, {400, 300}}));
    EXPECT_THAT(bspwm.takeRequests(), ElementsAre("query -T -n " + id + " ", "node " + id + " -t floating "));
    EXPECT_EQ(geometry(window), (CGRect{{-10, 21}, {394, 294}}));
}

TEST_F(BspwmManager, AWindowThatItDoesNotKnowStaysWhereItIs) {
    const xcb_window_t window = client.makeWindow();
    const CGRect before = geometry(window);
    bspwm.behave(Manners::refusing);
    EXPECT_FALSE(manager.place(display(), window, {{10, 20}, {400, 300}}));
    EXPECT_EQ(bspwm.takeRequests().size(), 1U);
    EXPECT_EQ(geometry(window), before);
}

TEST_F(BspwmManager, IsReachableWhereThereIsASocket) {
    EXPECT_TRUE(manager.isReachable(display()));
    EXPECT_THAT(bspwm.takeRequests(), ElementsAre()) << "nothing is sent";
    setenv("BSPWM_SOCKET", "/nowhere", 1);
    EXPECT_FALSE(manager.isReachable(display()));
    EXPECT_FALSE(answers());
    EXPECT_FALSE(manager.place(display(), 5, {{0, 0}, {400, 300}}));
}

TEST_F(BspwmManager, WithoutANamedSocketItIsTheOneOfTheDisplay) {
    // No display has such a number.
    const std::string number = std::to_string(1000000 + getpid());
    setenv("DISPLAY", (":" + number + ".2").c_str(), 1);
    unsetenv("BSPWM_SOCKET");
    EXPECT_FALSE(manager.isReachable(display()));
    const std::filesystem::path path = "/tmp/bspwm_" + number + "_2-socket";
    std::filesystem::create_symlink(bspwm.path(), path);
    EXPECT_TRUE(manager.isReachable(display()));
    EXPECT_TRUE(answers());
    std::filesystem::remove(path);
}

TEST_F(BspwmManager, ASilentBspwmCostsNoMoreThanATurn) {
    bspwm.behave(Manners::silent);
    display().deadline().begin();
    const Instant begin = loop.now();
    for (int count = 0; count < 5; ++count) {
        EXPECT_EQ(manager.readLayout(display()), std::nullopt);
        EXPECT_FALSE(manager.place(display(), 5, {{0, 0}, {400, 300}}));
    }
    const Duration taken = loop.now() - begin;
    EXPECT_GE(taken, linux::TurnDeadline::turnLimit / 2);
    EXPECT_LT(taken, linux::TurnDeadline::turnLimit + slack);
    bspwm.behave(Manners::good);
    EXPECT_TRUE(answers());
}

TEST_F(BspwmManager, APeerThatIsNotBspwmDoesNoHarm) {
    for (const Manners manners : {Manners::refusing, Manners::garbled, Manners::closing, Manners::endless}) {
        bspwm.behave(manners);
        EXPECT_FALSE(answers()) << static_cast<int>(manners);
        bspwm.behave(Manners::good);
        EXPECT_TRUE(answers()) << "after " << static_cast<int>(manners);
    }
}

} // namespace
} // namespace platform::bspwm
