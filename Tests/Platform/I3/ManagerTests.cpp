#include "Platform/I3/Manager.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Tests/Platform/I3/Layouts.h"
#include "Tests/Platform/I3Ipc/FakeSway.h"
#include "Tests/Platform/X11/TestClient.h"
#include "Tests/Platform/X11/XServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

namespace platform::i3 {
namespace {

using corvid::CGRect;
using Manners = FakeSway::Manners;
using testing::ElementsAre;

/// The additional time that a busy machine takes.
constexpr std::chrono::milliseconds slack{150};

class I3Manager : public testing::Test {
protected:
    I3Manager() {
        i3.setTree(
            layouts::root(layouts::output("A", layouts::rect(0, 0, 800, 600), 3,
                                          layouts::workspace(3, layouts::rect(0, 20, 800, 580),
                                                             layouts::window(5, layouts::rect(0, 20, 800, 580))))));
        say(i3.path());
    }

    /// The socket that i3 names on the display.
    void say(const std::string& path) { testClient.setText(display().root(), "I3_SOCKET_PATH", path); }

    [[nodiscard]] x11::Connection& display() { return testClient.connection(); }

    [[nodiscard]] bool answers() {
        display().deadline().begin();
        const auto layout = manager.readLayout(display());
        return layout && layout->windows.contains(5);
    }

    /// Whether it becomes true: the end of a connection takes a moment to arrive.
    [[nodiscard]] bool becomes(const std::function<bool()>& condition) {
        const Instant end = loop.now() + std::chrono::seconds(10);
        while (loop.now() < end) {
            display().deadline().begin();
            if (condition()) {
                return true;
            }
        }
        return false;
    }

    x11::XServer server;
    x11::TestClient testClient{server.display()};
    FakeSway i3;
    linux::MainLoop loop;
    Manager manager{loop};
};

TEST_F(I3Manager, ReadsTheLayout) {
    display().deadline().begin();
    EXPECT_TRUE(manager.isReachable(display()));
    const auto layout = manager.readLayout(display());
    ASSERT_TRUE(layout.has_value());
    EXPECT_EQ(layout->windows.at(5).frame, (CGRect{{0, 20}, {800, 580}}));
}

TEST_F(I3Manager, ReadsTheLayoutAroundAClassThatIsNotUtf8) {
    i3.setTree(layouts::root(layouts::output(
        "A", layouts::rect(0, 0, 800, 600), 3,
        layouts::workspace(3, layouts::rect(0, 20, 800, 580),
                           layouts::window(5, layouts::rect(0, 20, 400, 580)) +
                               ",{\"window_properties\":{\"class\":\"X\xe9\"},\"name\":\"\xff\xc3\"}"))));
    EXPECT_TRUE(answers());
}

TEST_F(I3Manager, TakesAWindowOutOfTheLayoutAndPutsItThere) {
    display().deadline().begin();
    EXPECT_TRUE(manager.place(display(), 5, {{-10.4, 20.6}, {400, 300}}));
    EXPECT_THAT(i3.takeCommands(), ElementsAre("[id=5] floating enable, resize set width 400 px height 300 px, "
                                               "move absolute position -10 px 21 px"));
}

TEST_F(I3Manager, KeepsItsConnection) {
    for (int count = 0; count < 5; ++count) {
        EXPECT_TRUE(answers());
    }
    EXPECT_EQ(i3.connections(), 1);
}

TEST_F(I3Manager, IsReachableOnlyWhileI3Listens) {
    EXPECT_TRUE(answers());
    i3.stop();
    EXPECT_TRUE(becomes([&] { return !manager.isReachable(display()); }));
    EXPECT_FALSE(answers());
    EXPECT_FALSE(manager.place(display(), 5, {{0, 0}, {400, 300}}));
    i3.start();
    EXPECT_TRUE(answers());
}

TEST_F(I3Manager, FollowsI3ToAnotherPlace) {
    EXPECT_TRUE(answers());
    FakeSway another;
    another.setTree(layouts::root(""));
    say(another.path());
    // The former connection stays until it ends.
    EXPECT_TRUE(answers());
    i3.stop();
    EXPECT_TRUE(becomes([&] { return manager.readLayout(display()) == x11::Layout{}; }));
}

TEST_F(I3Manager, IsNotReachableWhereI3DoesNotSayWhere) {
    for (const std::string& path : {std::string(), std::string("/nowhere"), std::string(5000, 'x')}) {
        say(path);
        display().deadline().begin();
        EXPECT_FALSE(manager.isReachable(display())) << path.substr(0, 20);
    }
    testClient.removeProperty(display().root(), "I3_SOCKET_PATH");
    display().deadline().begin();
    EXPECT_FALSE(manager.isReachable(display()));
}

TEST_F(I3Manager, ASilentI3CostsNoMoreThanATurn) {
    EXPECT_TRUE(answers());
    i3.behave(Manners::silent);
    display().deadline().begin();
    const Instant begin = loop.now();
    for (int count = 0; count < 5; ++count) {
        EXPECT_EQ(manager.readLayout(display()), std::nullopt);
        EXPECT_FALSE(manager.place(display(), 5, {{0, 0}, {400, 300}}));
    }
    const Duration taken = loop.now() - begin;
    EXPECT_GE(taken, linux::TurnDeadline::turnLimit / 2);
    EXPECT_LT(taken, linux::TurnDeadline::turnLimit + slack);
    i3.behave(Manners::good);
    EXPECT_TRUE(answers());
}

TEST_F(I3Manager, APeerThatIsNotI3DoesNoHarm) {
    for (const Manners manners :
         {Manners::garbled, Manners::malformed, Manners::nonsense, Manners::endless, Manners::closing}) {
        i3.behave(manners);
        EXPECT_FALSE(answers()) << static_cast<int>(manners);
        i3.behave(Manners::good);
        EXPECT_TRUE(answers()) << "after " << static_cast<int>(manners);
    }
}

TEST_F(I3Manager, AnUnrequestedReplyIsIgnored) {
    i3.behave(Manners::twice);
    EXPECT_TRUE(answers());
    i3.behave(Manners::good);
    i3.setTree(layouts::root(""));
    display().deadline().begin();
    EXPECT_EQ(manager.readLayout(display()), x11::Layout{});
}

} // namespace
} // namespace platform::i3
