#include "Tests/Platform/Hyprland/OpenHyprland.h"
#include "Tests/Platform/Linux/Stopwatch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace platform::hyprland {
namespace {

using compositor::WindowKind;
using corvid::CGRect;
using testing::ElementsAre;
using testing::HasSubstr;
using Configuration = FakeHyprland::Configuration;

struct Reports final : compositor::WindowTable::Follower {
    void windowAppeared(const std::string& identifier, const compositor::Window& /*window*/, bool wasThere) override {
        reported.push_back((wasThere ? "there " : "new ") + identifier);
    }

    void windowChangedIdentity(const std::string& /*identifier*/, const compositor::Window& /*window*/) override {}

    void windowBecameReady(const std::string& identifier, const compositor::Window& /*window*/) override {
        reported.push_back("ready " + identifier);
    }

    void windowVanished(const std::string& identifier, const compositor::Window& /*window*/) override {
        reported.push_back("gone " + identifier);
    }

    std::vector<std::string> reported;
};

class HyprlandWindowAccess : public testing::Test {
protected:
    void open(std::vector<FakeHyprland::Window> windows) {
        desktop.peer.setWindows(std::move(windows));
        desktop.table.setFollower(reported);
        desktop.session.start();
        ASSERT_TRUE(desktop.table.isOpen());
    }

    [[nodiscard]] CGRect frame(const std::string& identifier) { return desktop.table.find(identifier)->frame; }

    OpenHyprland desktop;
    Reports reported;
};

class HyprlandPlacing : public HyprlandWindowAccess, public testing::WithParamInterface<Configuration> {
protected:
    HyprlandPlacing() { desktop.peer.speak(GetParam()); }
};

TEST_F(HyprlandWindowAccess, OpensWithWhatIsThere) {
    desktop.peer.setBorder(2);
    desktop.peer.setFocused(8);
    desktop.peer.setMonitors({{.reserved = {0, 30, 0, 0}}});
    open({{.address = 7}, {.address = 8, .isHidden = true}});
    EXPECT_THAT(reported.reported, ElementsAre("there 0x7", "ready 0x7", "there 0x8"));
    EXPECT_EQ(desktop.table.focused(), "0x8");
    EXPECT_EQ(frame("0x7"), (CGRect{{18, 18}, {604, 404}}));
    ASSERT_EQ(desktop.table.outputs().size(), 1U);
    EXPECT_EQ(desktop.table.outputs()[0].workArea, (CGRect{{0, 30}, {1920, 1050}}));
}

TEST_F(HyprlandWindowAccess, FollowsWindowsThatComeAndGo) {
    open({{.address = 7}});
    reported.reported.clear();
    desktop.peer.open({.address = 9});
    ASSERT_TRUE(desktop.runUntil([&] { return reported.reported.size() == 2; }));
    EXPECT_THAT(reported.reported, ElementsAre("new 0x9", "ready 0x9"));
    desktop.peer.close(7);
    ASSERT_TRUE(desktop.runUntil([&] { return reported.reported.size() == 3; }));
    EXPECT_EQ(reported.reported.back(), "gone 0x7");
}

TEST_F(HyprlandWindowAccess, AWindowThatGetsTheAddressOfAClosedOneIsNew) {
    open({{.address = 7, .process = 100}});
    reported.reported.clear();
    desktop.peer.setWindows({{.address = 7, .process = 200}});
    desktop.peer.sendRaw("closewindow>>7\nopenwindow>>7,1,editor,a, b\n");
    ASSERT_TRUE(desktop.runUntil([&] { return reported.reported.size() == 3; }));
    EXPECT_THAT(reported.reported, ElementsAre("gone 0x7", "new 0x7", "ready 0x7"));
}

TEST_F(HyprlandWindowAccess, ReadsTheLayoutOnceForManyEvents) {
    open({{.address = 7}});
    const int before = desktop.peer.readings();
    desktop.peer.setWindows({{.address = 7}, {.address = 8}});
    std::string burst;
    for (int count = 0; count < 20; ++count) {
        burst += "openwindow>>8,1,editor,Text\nactivewindowv2>>8\n";
    }
    desktop.peer.sendRaw(burst);
    ASSERT_TRUE(desktop.runUntil([&] { return desktop.table.find("0x8") != nullptr; }));
    EXPECT_EQ(desktop.peer.readings(), before + 1);
}

TEST_F(HyprlandWindowAccess, AHiddenWindowIsReadyOnceItIsShown) {
    open({{.address = 7, .isHidden = true}});
    reported.reported.clear();
    desktop.peer.setWindows({{.address = 7}});
    desktop.access.refresh(desktop.soon());
    EXPECT_THAT(reported.reported, ElementsAre("ready 0x7"));
}

TEST_F(HyprlandWindowAccess, AFloatingWindowBesideAnotherOfItsProgramIsADialog) {
    open({{.address = 7}, {.address = 8, .isFloating = true}, {.address = 9, .process = 200, .isFloating = true}});
    EXPECT_EQ(desktop.table.find("0x7")->kind, WindowKind::standard);
    EXPECT_EQ(desktop.table.find("0x8")->kind, WindowKind::auxiliary);
    EXPECT_EQ(desktop.table.find("0x9")->kind, WindowKind::standard);
}

TEST_P(HyprlandPlacing, PutsATiledWindowWhereItIsAskedTo) {
    desktop.peer.setBorder(3);
    open({{.address = 7}});
    const CGRect wanted{{960, 23}, {960, 1057}};
    EXPECT_EQ(desktop.access.place("0x7", wanted, desktop.soon()), AXError::success);
    EXPECT_EQ(frame("0x7"), wanted);
    EXPECT_EQ(desktop.peer.window(7).box, (CGRect{{963, 26}, {954, 1051}}));
    EXPECT_TRUE(desktop.peer.window(7).isFloating);
}

TEST_P(HyprlandPlacing, ABorderThatTheWindowGetsOnlyOutOfTheLayoutIsCounted) {
    desktop.peer.setBorder(1);
    open({{.address = 7, .tiledBorder = 0, .floatingBorder = 5}});
    const CGRect wanted{{0, 0}, {960, 1080}};
    EXPECT_EQ(desktop.access.place("0x7", wanted, desktop.soon()), AXError::success);
    EXPECT_EQ(frame("0x7"), wanted);
    EXPECT_EQ(desktop.peer.window(7).box, (CGRect{{5, 5}, {950, 1070}}));
}

TEST_P(HyprlandPlacing, AWindowBelowItsSmallestSizeKeepsThatAtTheRequestedPlace) {
    desktop.peer.setBorder(2);
    open({{.address = 7, .isFloating = true, .smallest = {501, 300}}});
    EXPECT_EQ(desktop.access.place("0x7", {{400, 50}, {204, 604}}, desktop.soon()), AXError::success);
    EXPECT_EQ(frame("0x7"), (CGRect{{400, 50}, {505, 604}}));
    EXPECT_EQ(desktop.peer.window(7).box, (CGRect{{402, 52}, {501, 600}}));
}

TEST_P(HyprlandPlacing, AMaximizedWindowIsReleased) {
    desktop.peer.setFocused(7);
    open({{.address = 7, .isFloating = true, .fullscreen = 1}});
    const CGRect wanted{{0, 0}, {960, 1080}};
    EXPECT_EQ(desktop.access.place("0x7", wanted, desktop.soon()), AXError::success);
    EXPECT_EQ(frame("0x7"), wanted);
    EXPECT_EQ(desktop.peer.window(7).fullscreen, 0);
}

TEST_P(HyprlandPlacing, LeavesFullscreenAndHiddenWindowsAndThoseThatAreGoneAlone) {
    open({{.address = 7, .fullscreen = 2}, {.address = 8, .isHidden = true}});
    const CGRect wanted{{0, 0}, {960, 1080}};
    EXPECT_EQ(desktop.access.place("0x7", wanted, desktop.soon()), AXError::cannotComplete);
    EXPECT_EQ(desktop.access.place("0x8", wanted, desktop.soon()), AXError::cannotComplete);
    EXPECT_EQ(desktop.access.place("0x9", wanted, desktop.soon()), AXError::invalidUIElement);
    EXPECT_TRUE(desktop.peer.takeOrders().empty());
}

TEST_P(HyprlandPlacing, WithADeadlineThatHasPassedItAsksAllTheSame) {
    open({{.address = 7}});
    EXPECT_EQ(desktop.access.place("0x7", {{0, 0}, {960, 1080}}, Instant{}), AXError::cannotComplete);
    EXPECT_TRUE(desktop.runUntil([&] { return desktop.peer.window(7).box == CGRect{{0, 0}, {960, 1080}}; }));
}

TEST_P(HyprlandPlacing, OwnWindowsBecomePopoversAsTheyAppear) {
    desktop.peer.setBorder(2);
    open({{.address = 7, .title = "Tessel"}});
    desktop.access.placeOwnWindow("Tessel", {1500, 30});
    EXPECT_TRUE(desktop.peer.takeOrders().empty());
    desktop.peer.open({.address = 9, .process = OpenHyprland::ownProcess, .title = "Tessel", .isFloating = true});
    ASSERT_TRUE(desktop.runUntil([&] { return desktop.peer.window(9).isPinned; }));
    const double border = GetParam() == Configuration::hyprlang ? 2 : 0;
    EXPECT_EQ(desktop.peer.window(9).box.origin, (corvid::CGPoint{1500 + border, 30 + border}));
    EXPECT_EQ(desktop.peer.takeOrders().size(), 1U);
    // It is shown already, so it moves at once.
    desktop.access.placeOwnWindow("Tessel", {700, 30});
    EXPECT_EQ(desktop.peer.window(9).box.origin, (corvid::CGPoint{700 + border, 30 + border}));
    EXPECT_TRUE(desktop.peer.window(9).isPinned);
}

INSTANTIATE_TEST_SUITE_P(EachLanguage, HyprlandPlacing, testing::Values(Configuration::lua, Configuration::hyprlang),
                         [](const auto& each) { return each.param == Configuration::lua ? "lua" : "hyprlang"; });

TEST_F(HyprlandWindowAccess, InHyprlangOnlyTheFocusedWindowIsReleasedFromMaximization) {
    desktop.peer.speak(Configuration::hyprlang);
    open({{.address = 7, .fullscreen = 1}});
    EXPECT_EQ(desktop.access.place("0x7", {{0, 0}, {960, 1080}}, desktop.soon()), AXError::cannotComplete);
    EXPECT_TRUE(desktop.peer.takeOrders().empty());
}

TEST_F(HyprlandWindowAccess, FindsOutTheLanguageByTheAnswerToTheOther) {
    desktop.peer.speak(Configuration::unnamedLua);
    open({{.address = 7}});
    EXPECT_EQ(desktop.session.language(), Language::hyprlang);
    const CGRect wanted{{0, 0}, {960, 1080}};
    EXPECT_EQ(desktop.access.place("0x7", wanted, desktop.soon()), AXError::success);
    EXPECT_EQ(frame("0x7"), wanted);
    EXPECT_EQ(desktop.session.language(), Language::lua);
}

TEST_F(HyprlandWindowAccess, AWindowThatGoesMeanwhileIsNotWaitedFor) {
    open({{.address = 7}});
    desktop.peer.onOrder([this](const std::string&) { desktop.peer.setWindows({}); });
    const linux::Stopwatch stopwatch;
    EXPECT_EQ(desktop.access.place("0x7", {{0, 0}, {960, 1080}}, desktop.soon()), AXError::invalidUIElement);
    EXPECT_LT(stopwatch.elapsed(), std::chrono::milliseconds(250));
}

TEST_F(HyprlandWindowAccess, AProgramThatDoesNotComeToRestIsNotWaitedForLongerThanAsked) {
    open({{.address = 7, .isFloating = true}});
    // Another program moves it after each reading.
    const std::shared_ptr<std::atomic<bool>> isOver = std::make_shared<std::atomic<bool>>(false);
    std::thread mover([this, isOver] {
        for (int place = 0; !*isOver; ++place) {
            desktop.peer.setWindows({{.address = 7, .box = {{place % 100 + 0.0, 0}, {300, 200}}, .isFloating = true}});
        }
    });
    const linux::Stopwatch stopwatch;
    EXPECT_EQ(desktop.access.place("0x7", {{0, 0}, {960, 1080}}, desktop.soon()), AXError::cannotComplete);
    EXPECT_LT(stopwatch.elapsed(), std::chrono::milliseconds(400));
    *isOver = true;
    mover.join();
}

TEST_F(HyprlandWindowAccess, KnowsThePointer) {
    open({});
    EXPECT_EQ(desktop.access.pointer(), (corvid::CGPoint{300, 40}));
}

TEST_F(HyprlandWindowAccess, AChangedConfigurationMayChangeTheBorders) {
    desktop.peer.setBorder(2);
    open({{.address = 7}});
    desktop.peer.setBorder(4);
    desktop.peer.send("configreloaded>>");
    EXPECT_TRUE(desktop.runUntil([&] { return frame("0x7") == CGRect{{16, 16}, {608, 408}}; }));
}

TEST_F(HyprlandWindowAccess, ClosesWithTheCompositorAndFindsTheNextOneOnTheSameDisplay) {
    open({{.address = 7}});
    reported.reported.clear();
    desktop.peer.stop();
    ASSERT_TRUE(desktop.runUntil([&] { return !desktop.table.isOpen(); }));
    EXPECT_TRUE(reported.reported.empty());
    EXPECT_EQ(desktop.access.place("0x7", {{0, 0}, {960, 1080}}, desktop.soon()), AXError::invalidUIElement);
    desktop.peer.setWindows({{.address = 8}});
    desktop.peer.start("second");
    ASSERT_TRUE(desktop.runUntil([&] { return desktop.table.isOpen(); }));
    EXPECT_THAT(reported.reported, ElementsAre("gone 0x7", "there 0x8", "ready 0x8"));
}

} // namespace
} // namespace platform::hyprland
