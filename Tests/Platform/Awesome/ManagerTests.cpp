#include "Platform/Awesome/Manager.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Tests/Platform/Linux/Control/MessageBus.h"
#include "Tests/Platform/ShellCore/FakeShell.h"
#include "Tests/Platform/X11/ClientProcess.h"
#include "Tests/Platform/X11/TestClient.h"
#include "Tests/Platform/X11/XServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace platform::awesome {
namespace {

using corvid::CGRect;
using testing::ElementsAre;
using testing::HasSubstr;

/// The additional time that a busy machine takes.
constexpr std::chrono::milliseconds surplus{150};

constexpr const char* oneTiledWindow =
    R"({"windows":[{"id":5,"isTiled":true}],"screens":[{"workArea":[0,21,800,579]}]})";

/// A display, a message bus, and a peer on it with awesome's name, which is a thread of this process.
class AwesomeManager : public testing::Test {
protected:
    AwesomeManager() {
        bus.start();
        setenv("DBUS_SESSION_BUS_ADDRESS", bus.address().c_str(), 1);
        announce(testClient.connection().root());
    }

    ~AwesomeManager() override { unsetenv("DBUS_SESSION_BUS_ADDRESS"); }

    [[nodiscard]] x11::Connection& display() { return testClient.connection(); }

    /// The root window belongs to the server's process; any other to the one that has made it.
    void announce(xcb_window_t check) {
        testClient.setWords(display().root(), "_NET_SUPPORTING_WM_CHECK", "WINDOW", {check});
    }

    /// A window of this process is the window manager's.
    void becomeWindowManager() {
        const xcb_window_t check = xcb_generate_id(display().raw());
        xcb_create_window(display().raw(), XCB_COPY_FROM_PARENT, check, display().root(), -1, -1, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        announce(check);
    }

    void startAwesome() {
        awesome.emplace(bus.address(), FakeShell::Place{.name = "org.awesomewm.awful", .path = "/"});
        awesome->answerWithText("Eval", oneTiledWindow);
    }

    [[nodiscard]] bool isReachable() {
        display().deadline().begin();
        return manager.isReachable(display());
    }

    [[nodiscard]] std::optional<x11::Layout> layout() {
        display().deadline().begin();
        return manager.readLayout(display());
    }

    /// Runs the loop until the condition holds; false if it does not within some seconds.
    [[nodiscard]] bool until(const std::function<bool()>& condition) {
        constexpr std::uint64_t shortWait = 10'000;
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end) {
                return false;
            }
            sd_event_run(loop.handle(), shortWait);
        }
        return true;
    }

    x11::XServer server;
    x11::TestClient testClient{server.display()};
    x11::ClientProcess stranger{server.display()};
    MessageBus bus;
    std::optional<FakeShell> awesome;
    linux::MainLoop loop;
    Manager manager{loop};
};

TEST_F(AwesomeManager, ReadsTheLayoutWithOneCommand) {
    startAwesome();
    becomeWindowManager();
    const auto present = layout();
    ASSERT_TRUE(present);
    EXPECT_TRUE(present->windows.at(5).isTiled);
    EXPECT_THAT(present->workAreas, ElementsAre(CGRect{{0, 21}, {800, 579}}));
    EXPECT_THAT(awesome->calls(), ElementsAre(HasSubstr("client.get()")));
}

TEST_F(AwesomeManager, PlacesAWindowWithOneCommand) {
    startAwesome();
    becomeWindowManager();
    awesome->answerWithText("Eval", "placed");
    EXPECT_TRUE(manager.place(display(), 5, {{-10, 21}, {400, 300}}));
    EXPECT_THAT(awesome->calls(), ElementsAre(HasSubstr("local id, x, y, width, height = 5, -10, 21, 400, 300")));
}

TEST_F(AwesomeManager, AWindowThatItDoesNotKnowIsNotPlaced) {
    startAwesome();
    becomeWindowManager();
    awesome->answerWithText("Eval", "unknown");
    EXPECT_FALSE(manager.place(display(), 5, {{0, 0}, {400, 300}}));
}

TEST_F(AwesomeManager, AnAwesomeOfAnotherDisplayIsGivenNoCommand) {
    startAwesome();
    announce(stranger.makeWindow());
    EXPECT_FALSE(isReachable());
    EXPECT_EQ(layout(), std::nullopt);
    EXPECT_FALSE(manager.place(display(), 5, {{0, 0}, {400, 300}}));
    EXPECT_THAT(awesome->calls(), ElementsAre());
}

TEST_F(AwesomeManager, IsReachableWhileItIsOnTheBus) {
    becomeWindowManager();
    EXPECT_FALSE(isReachable());
    startAwesome();
    EXPECT_TRUE(until([this] { return isReachable(); }));
    EXPECT_TRUE(layout());
    awesome.reset();
    EXPECT_TRUE(until([this] { return !isReachable(); }));
    EXPECT_EQ(layout(), std::nullopt);
    startAwesome();
    EXPECT_TRUE(until([this] { return isReachable(); })) << "after a restart";
    EXPECT_TRUE(layout());
}

TEST_F(AwesomeManager, EachOwnerOfTheNameIsComparedAnew) {
    startAwesome();
    announce(stranger.makeWindow());
    EXPECT_FALSE(isReachable());
    awesome.reset();
    becomeWindowManager();
    startAwesome();
    EXPECT_TRUE(until([this] { return isReachable(); }));
}

TEST_F(AwesomeManager, WithoutABusItIsNotReachable) {
    becomeWindowManager();
    for (const char* address : {"unix:path=/nowhere", "tcp:host=localhost,port=1"}) {
        setenv("DBUS_SESSION_BUS_ADDRESS", address, 1);
        Manager lonely(loop);
        display().deadline().begin();
        const Instant begin = loop.now();
        EXPECT_FALSE(lonely.isReachable(display())) << address;
        EXPECT_LT(loop.now() - begin, surplus) << address;
    }
}

TEST_F(AwesomeManager, ASilentAwesomeCostsNoMoreThanATurn) {
    startAwesome();
    becomeWindowManager();
    ASSERT_TRUE(layout());
    awesome->answer("Eval", [](sd_bus_message* /*call*/) {});
    display().deadline().begin();
    const Instant begin = loop.now();
    for (int count = 0; count < 5; ++count) {
        EXPECT_EQ(manager.readLayout(display()), std::nullopt);
        EXPECT_FALSE(manager.place(display(), 5, {{0, 0}, {400, 300}}));
    }
    const Duration taken = loop.now() - begin;
    EXPECT_GE(taken, linux::TurnDeadline::turnLimit / 2);
    EXPECT_LT(taken, linux::TurnDeadline::turnLimit + surplus);
    awesome->answerWithText("Eval", oneTiledWindow);
    EXPECT_TRUE(layout());
}

TEST_F(AwesomeManager, AReplyThatIsNoLayoutDoesNoHarm) {
    startAwesome();
    becomeWindowManager();
    const std::vector<FakeShell::Answer> answers{
        [](sd_bus_message* call) { sd_bus_reply_method_errorf(call, SD_BUS_ERROR_UNKNOWN_METHOD, "no such method"); },
        [](sd_bus_message* call) { sd_bus_reply_method_return(call, ""); },
        [](sd_bus_message* call) { sd_bus_reply_method_return(call, "d", 1.0); },
        [](sd_bus_message* call) { sd_bus_reply_method_return(call, "s", "Error during execution: no"); },
    };
    for (const FakeShell::Answer& answer : answers) {
        awesome->answer("Eval", answer);
        EXPECT_EQ(layout(), std::nullopt);
        EXPECT_FALSE(manager.place(display(), 5, {{0, 0}, {400, 300}}));
        awesome->answerWithText("Eval", oneTiledWindow);
        EXPECT_TRUE(layout());
    }
}

} // namespace
} // namespace platform::awesome
