#include "Tests/Platform/Linux/Stopwatch.h"
#include "Tests/Platform/Sway/Layouts.h"
#include "Tests/Platform/Sway/OpenWindowAccess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace platform::sway {
namespace {

using compositor::WindowKind;
using corvid::CGRect;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::uint32_t windowEvent = 0x80000003;

struct Reports final : compositor::WindowTable::Follower {
    void windowAppeared(const std::string& identifier, const compositor::Window& /*window*/, bool wasThere) override {
        reported.push_back((wasThere ? "there " : "new ") + identifier);
    }

    void windowChangedIdentity(const std::string& identifier, const compositor::Window& /*window*/) override {
        reported.push_back("renamed " + identifier);
    }

    void windowBecameReady(const std::string& identifier, const compositor::Window& /*window*/) override {
        reported.push_back("ready " + identifier);
    }

    void windowVanished(const std::string& identifier, const compositor::Window& /*window*/) override {
        reported.push_back("gone " + identifier);
    }

    std::vector<std::string> reported;
};

class SwayWindowAccess : public testing::Test {
protected:
    void open(const std::string& layout) {
        desktop.sway.setTree(layout);
        desktop.table.setFollower(reported);
        desktop.session.start();
        ASSERT_TRUE(desktop.table.isOpen());
    }

    /// Carries out commands as sway does for window 7, as far as the window allows.
    void obey(std::function<CGRect(const CGRect& asked)> settle) {
        desktop.sway.onCommands([this, settle](const std::string& commands) {
            double width = 0;
            double height = 0;
            double x = 0;
            double y = 0;
            const std::string form = "[con_id=7] floating enable, resize set width %lf px height %lf px, "
                                     "move absolute position %lf px %lf px";
            if (std::sscanf(commands.c_str(), form.c_str(), &width, &height, &x, &y) == 4) {
                const CGRect frame = settle({{x, y}, {width, height}});
                desktop.sway.setTree(layouts::oneOutput({at(frame)}));
            }
        });
    }

    static layouts::Window at(const CGRect& frame) {
        constexpr int bar = 25;
        return {.number = 7,
                .rect = {static_cast<int>(frame.origin.x), static_cast<int>(frame.origin.y) + bar,
                         static_cast<int>(frame.size.width), static_cast<int>(frame.size.height) - bar},
                .titleBar = bar,
                .isFloating = true,
                .isFocused = true};
    }

    OpenWindowAccess desktop;
    Reports reported;
};

TEST_F(SwayWindowAccess, OpensWithWhatIsThere) {
    open(layouts::oneOutput({{.number = 7, .isFocused = true}, {.number = 8}}));
    EXPECT_THAT(reported.reported, ElementsAre("there 7", "ready 7", "there 8", "ready 8"));
    EXPECT_EQ(desktop.table.focused(), "7");
    ASSERT_EQ(desktop.table.outputs().size(), 1U);
    EXPECT_EQ(desktop.table.outputs()[0].workArea, (CGRect{{0, 23}, {1920, 1057}}));
}

TEST_F(SwayWindowAccess, FollowsWindowsThatComeAndGo) {
    open(layouts::oneOutput({{.number = 7, .isFocused = true}}));
    reported.reported.clear();
    desktop.sway.setTree(layouts::oneOutput({{.number = 7}, {.number = 9, .isFocused = true}}));
    desktop.sway.send(windowEvent, R"({"change":"new","container":{"id":9}})");
    ASSERT_TRUE(desktop.runUntil([&] { return reported.reported.size() == 2; }));
    EXPECT_THAT(reported.reported, ElementsAre("new 9", "ready 9"));
    EXPECT_EQ(desktop.table.focused(), "9");

    desktop.sway.setTree(layouts::oneOutput({{.number = 9, .isFocused = true}}));
    desktop.sway.send(windowEvent, R"({"change":"close","container":{"id":7}})");
    ASSERT_TRUE(desktop.runUntil([&] { return reported.reported.size() == 3; }));
    EXPECT_EQ(reported.reported.back(), "gone 7");
}

TEST_F(SwayWindowAccess, ReadsTheLayoutOnceForManyEvents) {
    open(layouts::oneOutput({{.number = 7}}));
    const int before = desktop.sway.treeReadings();
    std::string burst;
    for (int count = 0; count < 20; ++count) {
        burst += FakeSway::message(windowEvent, R"({"change":"focus","container":{}})");
    }
    desktop.sway.setTree(layouts::oneOutput({{.number = 7}, {.number = 8}}));
    desktop.sway.sendRaw(burst);
    ASSERT_TRUE(desktop.runUntil([&] { return desktop.table.find("8") != nullptr; }));
    EXPECT_EQ(desktop.sway.treeReadings(), before + 1);
}

TEST_F(SwayWindowAccess, TakesNoNoteOfTitlesOfOthers) {
    open(layouts::oneOutput({{.number = 7}}));
    const int before = desktop.sway.treeReadings();
    for (int count = 0; count < 20; ++count) {
        desktop.sway.send(windowEvent, R"({"change":"title","container":{"id":7,"pid":100}})");
    }
    // Later messages are read once these are.
    ASSERT_TRUE(desktop.refresh());
    EXPECT_EQ(desktop.sway.treeReadings(), before + 1);
}

TEST_F(SwayWindowAccess, AFloatingWindowBesideAnotherOfItsProgramIsADialog) {
    open(layouts::oneOutput({{.number = 7, .process = 100},
                             {.number = 8, .isFloating = true, .process = 100},
                             {.number = 9, .isFloating = true, .process = 200}}));
    EXPECT_EQ(desktop.table.find("7")->kind, WindowKind::standard);
    EXPECT_EQ(desktop.table.find("8")->kind, WindowKind::auxiliary);
    EXPECT_EQ(desktop.table.find("9")->kind, WindowKind::standard);
}

TEST_F(SwayWindowAccess, AWindowStaysOfTheKindThatItAppearedAs) {
    open(layouts::oneOutput({{.number = 7}, {.number = 8}}));
    desktop.sway.setTree(layouts::oneOutput({{.number = 7}, {.number = 8, .isFloating = true}}));
    ASSERT_TRUE(desktop.refresh());
    EXPECT_EQ(desktop.table.find("8")->kind, WindowKind::standard);
}

TEST_F(SwayWindowAccess, PutsAWindowWhereItIsAskedTo) {
    open(layouts::oneOutput({{.number = 7}}));
    obey([](const CGRect& asked) { return asked; });
    const CGRect frame{{960, 23}, {960, 1057}};
    EXPECT_EQ(desktop.access.place("7", frame, desktop.soon()), AXError::success);
    EXPECT_EQ(desktop.table.find("7")->frame, frame);
    EXPECT_EQ(desktop.sway.takeCommands().size(), 1U);
}

TEST_F(SwayWindowAccess, AsksAWindowThatTookAnotherFrameOnceMore) {
    open(layouts::oneOutput({{.number = 7}}));
    obey([requests = 0](const CGRect& asked) mutable {
        return ++requests == 1 ? CGRect{asked.origin, {1916, 1030}} : asked;
    });
    const CGRect frame{{0, 23}, {1920, 1057}};
    EXPECT_EQ(desktop.access.place("7", frame, desktop.soon()), AXError::success);
    EXPECT_EQ(desktop.table.find("7")->frame, frame);
}

TEST_F(SwayWindowAccess, ReportsTheFinalFrameOfAWindowThatRefuses) {
    open(layouts::oneOutput({{.number = 7}}));
    obey([](const CGRect& asked) { return CGRect{asked.origin, {351, asked.size.height}}; });
    EXPECT_EQ(desktop.access.place("7", {{0, 23}, {200, 1057}}, desktop.soon()), AXError::success);
    EXPECT_EQ(desktop.table.find("7")->frame, (CGRect{{0, 23}, {351, 1057}}));
    EXPECT_EQ(desktop.sway.takeCommands().size(), 2U);
}

TEST_F(SwayWindowAccess, PutsAWindowBackOnItsHiddenWorkspace) {
    open(layouts::text({{"A", {0, 0, 1920, 1080}, {{11, "1", {}}, {12, "2: notes", {{.number = 7}}}}}}));
    desktop.access.place("7", {{0, 23}, {960, 1057}}, Instant{});
    ASSERT_TRUE(desktop.refresh());
    EXPECT_THAT(desktop.sway.takeCommands(),
                ElementsAre("[con_id=7] floating enable, resize set width 960 px height 1057 px, "
                            "move absolute position 0 px 23 px, move container to workspace \"2: notes\""));
}

TEST_F(SwayWindowAccess, LeavesFullscreenWindowsAndThoseThatAreGoneAlone) {
    open(layouts::oneOutput({{.number = 7, .more = R"(,"fullscreen_mode":1)"}}));
    // Of two members with the same name, the later counts.
    ASSERT_TRUE(desktop.table.find("7")->isFullscreen);
    EXPECT_EQ(desktop.access.place("7", {{0, 23}, {960, 1057}}, desktop.soon()), AXError::cannotComplete);
    EXPECT_EQ(desktop.access.place("8", {{0, 23}, {960, 1057}}, desktop.soon()), AXError::invalidUIElement);
    EXPECT_TRUE(desktop.sway.takeCommands().empty());
}

TEST_F(SwayWindowAccess, AWindowThatGoesMeanwhileIsNotWaitedFor) {
    open(layouts::oneOutput({{.number = 7}}));
    desktop.sway.onCommands([this](const std::string&) { desktop.sway.setTree(layouts::oneOutput({})); });
    EXPECT_EQ(desktop.access.place("7", {{0, 23}, {960, 1057}}, desktop.soon()), AXError::invalidUIElement);
}

TEST_F(SwayWindowAccess, AWindowThatDoesNotComeToRestIsNotWaitedForLongerThanAsked) {
    open(layouts::oneOutput({{.number = 7}}));
    obey([](const CGRect& asked) { return asked; });
    // Each reading finds it elsewhere. The last one may be answered after the test's own variables are gone.
    desktop.sway.onTree([this, step = 0]() mutable {
        ++step;
        desktop.sway.setTree(layouts::oneOutput({at({{static_cast<double>(step % 100), 23}, {960, 1057}})}));
    });
    const linux::Stopwatch stopwatch;
    EXPECT_EQ(desktop.access.place("7", {{0, 23}, {960, 1057}}, desktop.soon()), AXError::cannotComplete);
    EXPECT_LT(stopwatch.elapsed(), std::chrono::milliseconds(400));
}

TEST_F(SwayWindowAccess, OwnWindowsBecomePopoversAsTheyAppear) {
    open(layouts::oneOutput({{.number = 7}}));
    desktop.access.placeOwnWindow("Tessel", {1500, 30});
    EXPECT_THAT(desktop.sway.takeCommands(),
                ElementsAre("for_window [pid=4711 title=\"^Tessel$\"] \"floating enable, border none, sticky enable, "
                            "move absolute position 1500 px 30 px, focus\""));
    desktop.sway.setTree(layouts::oneOutput(
        {{.number = 7},
         {.number = 9, .isFloating = true, .process = OpenWindowAccess::ownProcess, .title = "Tessel"}}));
    desktop.sway.send(windowEvent, R"({"change":"title","container":{"id":9,"pid":4711}})");
    std::vector<std::string> commands;
    ASSERT_TRUE(desktop.runUntil([&] {
        commands = desktop.sway.takeCommands();
        return !commands.empty();
    }));
    // The window that has got the focus meanwhile keeps it.
    EXPECT_THAT(commands, ElementsAre("[con_id=9] floating enable, border none, sticky enable, "
                                      "move absolute position 1500 px 30 px"));
    // It is shown already, so it moves at once, and no event is sent twice.
    desktop.access.placeOwnWindow("Tessel", {1500, 30});
    EXPECT_THAT(desktop.sway.takeCommands(), ElementsAre(HasSubstr("[con_id=9]")));
    ASSERT_TRUE(desktop.refresh());
    EXPECT_TRUE(desktop.sway.takeCommands().empty());
}

TEST_F(SwayWindowAccess, WindowsOfOthersAreNotTakenForOurs) {
    open(layouts::oneOutput({{.number = 7, .title = "Tessel"}}));
    desktop.access.placeOwnWindow("Tessel", {1500, 30});
    EXPECT_THAT(desktop.sway.takeCommands(), ElementsAre(HasSubstr("for_window")));
}

TEST_F(SwayWindowAccess, ClosesWithTheCompositorAndOpensAgain) {
    open(layouts::oneOutput({{.number = 7}}));
    reported.reported.clear();
    desktop.sway.stop();
    ASSERT_TRUE(desktop.runUntil([&] { return !desktop.table.isOpen(); }));
    EXPECT_TRUE(reported.reported.empty());
    EXPECT_EQ(desktop.access.place("7", {{0, 23}, {960, 1057}}, desktop.soon()), AXError::cannotComplete);
    desktop.sway.setTree(layouts::oneOutput({{.number = 8}}));
    desktop.sway.start();
    ASSERT_TRUE(desktop.runUntil([&] { return desktop.table.isOpen(); }));
    EXPECT_THAT(reported.reported, ElementsAre("gone 7", "there 8", "ready 8"));
}

} // namespace
} // namespace platform::sway
