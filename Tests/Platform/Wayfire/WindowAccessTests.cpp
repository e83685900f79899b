#include "Tests/Platform/Linux/Stopwatch.h"
#include "Tests/Platform/Wayfire/OpenWindowAccess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace platform::wayfire {
namespace {

using corvid::CGPoint;
using corvid::CGRect;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;

// Wayfire's transactions end after 100 ms.
constexpr std::chrono::milliseconds shorterThanATransaction{60};

Json geometryJson(int x, int y, int width, int height) {
    return {{"x", x}, {"y", y}, {"width", width}, {"height", height}};
}

struct RecordedViews final : compositor::WindowTable::Follower {
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

class WayfireWindowAccess : public testing::Test {
protected:
    void open(const std::vector<Json>& views) {
        desktop.wayfire.setViews(views);
        desktop.table.setFollower(reported);
        desktop.session.start();
        ASSERT_TRUE(desktop.table.isOpen());
    }

    /// The view takes another geometry than the one that it is asked to take.
    void settleOn(const Json& geometry) {
        desktop.wayfire.onConfigure([this, geometry](const Json& data) {
            const Json view = FakeWayfire::view(data["id"], {{"geometry", geometry}});
            desktop.wayfire.setViews({view});
            desktop.wayfire.reportView("view-geometry-changed", view);
        });
    }

    OpenWindowAccess desktop;
    RecordedViews reported;
};

TEST_F(WayfireWindowAccess, OpensWithWhatIsThere) {
    desktop.wayfire.setFocused(8);
    // Of the latter one, nothing is to be seen.
    open({FakeWayfire::view(12), FakeWayfire::view(8), FakeWayfire::view(9, {{"mapped", false}}),
          FakeWayfire::view(10, {{"role", "desktop-environment"}}), FakeWayfire::view(11, {{"output-id", -1}})});
    EXPECT_THAT(reported.reported, ElementsAre("there 8", "ready 8", "there 12", "ready 12"));
    EXPECT_EQ(desktop.table.focused(), "8");
    EXPECT_EQ(desktop.table.find("8")->frame, (CGRect{{100, 200}, {700, 500}}));
    ASSERT_THAT(desktop.table.outputs(), SizeIs(2));
    EXPECT_EQ(desktop.table.outputs()[0].workArea, (CGRect{{0, 30}, {1920, 1050}}));
    EXPECT_EQ(desktop.table.outputs()[1].workArea, (CGRect{{1920, 0}, {1280, 1024}}));
    EXPECT_EQ(desktop.access.pointer(), (CGPoint{17.5, 4}));
}

TEST_F(WayfireWindowAccess, FollowsWindowsThatComeAndGo) {
    open({FakeWayfire::view(7)});
    reported.reported.clear();
    desktop.wayfire.setViews({FakeWayfire::view(7, {{"app-id", "another"}}), FakeWayfire::view(9)});
    desktop.wayfire.reportView("view-mapped", FakeWayfire::view(9));
    ASSERT_TRUE(desktop.runUntil([&] { return reported.reported.size() == 3; }));
    EXPECT_THAT(reported.reported, ElementsAre("renamed 7", "new 9", "ready 9"));
    desktop.wayfire.setViews({FakeWayfire::view(9)});
    desktop.wayfire.reportView("view-unmapped", FakeWayfire::view(7));
    ASSERT_TRUE(desktop.runUntil([&] { return reported.reported.size() == 4; }));
    EXPECT_EQ(reported.reported.back(), "gone 7");
}

TEST_F(WayfireWindowAccess, ReadsOnceForManyEvents) {
    open({FakeWayfire::view(7)});
    const int before = desktop.wayfire.readings();
    std::string burst;
    for (int count = 0; count < 20; ++count) {
        burst += FakeWayfire::message(R"({"event":"view-mapped","view":null})");
    }
    desktop.wayfire.setViews({FakeWayfire::view(7), FakeWayfire::view(8)});
    desktop.wayfire.sendRaw(burst);
    ASSERT_TRUE(desktop.runUntil([&] { return desktop.table.find("8") != nullptr; }));
    EXPECT_EQ(desktop.wayfire.readings(), before + 1);
}

TEST_F(WayfireWindowAccess, PutsAWindowWhereItIsAskedTo) {
    open({FakeWayfire::view(7)});
    const CGRect frame{{960, 30}, {960, 1050}};
    const linux::Stopwatch stopwatch;
    EXPECT_EQ(desktop.access.place("7", frame, desktop.soon()), AXError::success);
    EXPECT_EQ(desktop.table.find("7")->frame, frame);
    EXPECT_THAT(desktop.wayfire.takeChanges(),
                ElementsAre("window-rules/configure-view {\"geometry\":{\"height\":1050,\"width\":960,\"x\":960,"
                            "\"y\":30},\"id\":7,\"output_id\":1}"));
    // The event has told it: nothing is waited for beyond that.
    EXPECT_LT(stopwatch.elapsed(), WindowAccess::rest);
    ASSERT_TRUE(desktop.runUntil([&] { return desktop.wayfire.connections() == 1; }))
        << "the connection for the placement is closed";
}

TEST_F(WayfireWindowAccess, PutsAWindowOnAnotherOutput) {
    open({FakeWayfire::view(7)});
    const CGRect frame{{1920, 0}, {640, 1024}};
    EXPECT_EQ(desktop.access.place("7", frame, desktop.soon()), AXError::success);
    EXPECT_THAT(desktop.wayfire.takeChanges(), ElementsAre(HasSubstr("\"x\":0,\"y\":0},\"id\":7,\"output_id\":2")));
    EXPECT_EQ(desktop.table.find("7")->frame, frame);
    // One that has the focus keeps it.
    desktop.wayfire.setFocused(7);
    EXPECT_TRUE(desktop.refresh());
    EXPECT_EQ(desktop.access.place("7", {{0, 30}, {960, 1050}}, desktop.soon()), AXError::success);
    EXPECT_THAT(desktop.wayfire.takeChanges(),
                ElementsAre(HasSubstr("\"output_id\":1"), "window-rules/focus-view {\"id\":7}"));
}

TEST_F(WayfireWindowAccess, ReleasesAMaximizedWindowFirst) {
    open({FakeWayfire::view(7, {{"tiled-edges", 15}})});
    ASSERT_TRUE(desktop.table.find("7")->isTiled);
    EXPECT_EQ(desktop.access.place("7", {{0, 30}, {960, 1050}}, desktop.soon()), AXError::success);
    EXPECT_THAT(desktop.wayfire.takeChanges(),
                ElementsAre("grid/restore {\"output_id\":1,\"view_id\":7}", StartsWith("window-rules/configure-view")));
    EXPECT_FALSE(desktop.table.find("7")->isTiled);
}

TEST_F(WayfireWindowAccess, TakesAWindowOutOfALayoutBeforeItIsPlaced) {
    open({FakeWayfire::view(7, {{"tiled-edges", 15}, {"wset-index", 4}})});
    desktop.wayfire.setLayout(Json::parse(R"({"percent":1,"vertical-split":[{"percent":0.25,"view-id":8},
        {"percent":0.75,"horizontal-split":[{"percent":0.5,"view-id":7},{"percent":0.5,"view-id":9}]}]})"));
    EXPECT_EQ(desktop.access.place("7", {{0, 30}, {960, 1050}}, desktop.soon()), AXError::success);
    const auto changes = desktop.wayfire.takeChanges();
    ASSERT_THAT(changes, ElementsAre(StartsWith("simple-tile/set-layout {"), StartsWith("grid/restore"),
                                     StartsWith("window-rules/configure-view")));
    EXPECT_EQ(
        Json::parse(changes[0].substr(changes[0].find('{'))),
        Json::parse(R"({"wset-index":4,"workspace":{"x":1,"y":0},"layout":{"percent":1,"weight":1,"vertical-split":[
                  {"percent":0.25,"weight":0.25,"view-id":8},
                  {"percent":0.75,"weight":0.75,"horizontal-split":[{"percent":0.5,"weight":0.5,"view-id":9}]}]}})"));
}

TEST_F(WayfireWindowAccess, ALayoutWithoutTheWindowStaysAsItIs) {
    open({FakeWayfire::view(7, {{"tiled-edges", 15}})});
    for (const char* layout : {R"({"percent":1,"view-id":8})", "[]", "17", R"({"vertical-split":{"view-id":7}})",
                               R"({"vertical-split":[7,"7",null,{"view-id":"7"}]})"}) {
        desktop.wayfire.setLayout(Json::parse(layout));
        static_cast<void>(desktop.access.place("7", {{0, 30}, {960, 1050}}, desktop.soon()));
        EXPECT_THAT(desktop.wayfire.takeChanges(), testing::Not(testing::Contains(StartsWith("simple-tile"))))
            << layout;
        desktop.wayfire.setViews({FakeWayfire::view(7, {{"tiled-edges", 15}})});
        ASSERT_TRUE(desktop.refresh());
    }
}

TEST_F(WayfireWindowAccess, AsksOnlyForWhatAWindowCanTake) {
    const Json limits{{"min-size", {{"width", 300}, {"height", 200}}},
                      {"max-size", {{"width", 800}, {"height", 0}}},
                      // The rest is the compositor's own frame.
                      {"base-geometry", geometryJson(104, 234, 692, 462)}};
    open({FakeWayfire::view(7, limits)});
    EXPECT_EQ(desktop.access.place("7", {{0, 30}, {100, 100}}, desktop.soon()), AXError::success);
    EXPECT_EQ(desktop.table.find("7")->frame.size, (corvid::CGSize{308, 238}));
    desktop.wayfire.setViews({FakeWayfire::view(7, limits)});
    ASSERT_TRUE(desktop.refresh());
    EXPECT_EQ(desktop.access.place("7", {{0, 30}, {1920, 1050}}, desktop.soon()), AXError::success);
    EXPECT_EQ(desktop.table.find("7")->frame.size, (corvid::CGSize{808, 1050}));
}

TEST_F(WayfireWindowAccess, AWindowOnTheWayToAnotherSizeHasNoThickFrame) {
    open({FakeWayfire::view(7, {{"min-size", {{"width", 300}, {"height", 200}}},
                                {"geometry", geometryJson(0, 30, 1920, 1050)},
                                {"base-geometry", geometryJson(100, 200, 700, 500)}})});
    EXPECT_EQ(desktop.access.place("7", {{0, 30}, {960, 525}}, desktop.soon()), AXError::success);
    EXPECT_EQ(desktop.table.find("7")->frame.size, (corvid::CGSize{960, 525}));
}

TEST_F(WayfireWindowAccess, ReportsTheFinalFrameOfAWindowThatTakesAnother) {
    open({FakeWayfire::view(7)});
    settleOn(geometryJson(0, 30, 351, 1050));
    EXPECT_EQ(desktop.access.place("7", {{0, 30}, {200, 1050}}, desktop.soon()), AXError::success);
    EXPECT_EQ(desktop.table.find("7")->frame, (CGRect{{0, 30}, {351, 1050}}));
}

TEST_F(WayfireWindowAccess, AsksAWindowThatTookAnotherSizeOnceMore) {
    open({FakeWayfire::view(7)});
    desktop.wayfire.onConfigure([this, requests = 0](const Json& data) mutable {
        const Json taken = ++requests == 1 ? geometryJson(0, 30, 700, 500) : data["geometry"];
        const Json view = FakeWayfire::view(7, {{"geometry", taken}});
        desktop.wayfire.setViews({view});
        desktop.wayfire.reportView("view-geometry-changed", view);
    });
    EXPECT_EQ(desktop.access.place("7", {{0, 30}, {960, 1050}}, desktop.soon()), AXError::success);
    EXPECT_EQ(desktop.table.find("7")->frame, (CGRect{{0, 30}, {960, 1050}}));
    EXPECT_THAT(desktop.wayfire.takeChanges(), SizeIs(2));
}

TEST_F(WayfireWindowAccess, AWindowThatStaysAsItIsHasSettledOnThat) {
    open({FakeWayfire::view(7)});
    desktop.wayfire.onConfigure([](const Json& /*data*/) {});
    EXPECT_EQ(desktop.access.place("7", {{0, 30}, {200, 1050}}, desktop.soon()), AXError::success);
    EXPECT_EQ(desktop.table.find("7")->frame, (CGRect{{100, 200}, {700, 500}}));
}

TEST_F(WayfireWindowAccess, AWindowThatDoesNotMoveInTimeIsNotWaitedForLongerThanAsked) {
    open({FakeWayfire::view(7)});
    // The goal is told at once, and nothing happens.
    desktop.wayfire.onConfigure([this](const Json& data) {
        desktop.wayfire.setViews({FakeWayfire::view(7, {{"geometry", data["geometry"]}})});
    });
    const linux::Stopwatch stopwatch;
    const Instant deadline = desktop.loop.now() + shorterThanATransaction;
    EXPECT_EQ(desktop.access.place("7", {{0, 30}, {960, 1050}}, deadline), AXError::cannotComplete);
    EXPECT_LT(stopwatch.elapsed(), std::chrono::milliseconds(400));
}

TEST_F(WayfireWindowAccess, AWindowThatKeepsItsFrameHasSettledOnceATransactionIsOver) {
    open({FakeWayfire::view(7)});
    desktop.wayfire.onConfigure([this](const Json& data) {
        desktop.wayfire.setViews({FakeWayfire::view(7, {{"geometry", data["geometry"]}})});
    });
    const Instant begin = desktop.loop.now();
    EXPECT_EQ(desktop.access.place("7", {{0, 30}, {960, 1050}}, begin + std::chrono::seconds(5)), AXError::success);
    EXPECT_GT(desktop.loop.now(), begin + shorterThanATransaction);
}

TEST_F(WayfireWindowAccess, EventsOfOtherWindowsAreNotTakenForIts) {
    open({FakeWayfire::view(7), FakeWayfire::view(8)});
    desktop.wayfire.onConfigure([this](const Json& data) {
        desktop.wayfire.setViews({FakeWayfire::view(7, {{"geometry", data["geometry"]}})});
        desktop.wayfire.reportView("view-geometry-changed", FakeWayfire::view(8, {{"geometry", data["geometry"]}}));
    });
    const Instant deadline = desktop.loop.now() + shorterThanATransaction;
    EXPECT_EQ(desktop.access.place("7", {{0, 30}, {960, 1050}}, deadline), AXError::cannotComplete);
}

TEST_F(WayfireWindowAccess, AWindowOnAHiddenWorkspaceIsPlacedThere) {
    // The second of three workspaces is visible, so this is the first, and that the one below the second.
    open({FakeWayfire::view(7, {{"geometry", geometryJson(-1820, 200, 700, 500)}}),
          FakeWayfire::view(8, {{"geometry", geometryJson(100, 1280, 700, 500)}}),
          // It still shows on the visible one.
          FakeWayfire::view(9, {{"geometry", geometryJson(-690, 200, 700, 500)}}),
          // There is no such workspace.
          FakeWayfire::view(10, {{"geometry", geometryJson(-9000, 200, 700, 500)}})});
    EXPECT_EQ(desktop.table.find("7")->frame, (CGRect{{100, 200}, {700, 500}}));
    EXPECT_EQ(desktop.table.find("8")->frame, (CGRect{{100, 200}, {700, 500}}));
    EXPECT_EQ(desktop.table.find("9")->frame, (CGRect{{-690, 200}, {700, 500}}));
    EXPECT_EQ(desktop.table.find("10")->frame, (CGRect{{-7080, 200}, {700, 500}}));
    EXPECT_EQ(desktop.access.place("7", {{0, 30}, {960, 1050}}, desktop.soon()), AXError::success);
    EXPECT_THAT(desktop.wayfire.takeChanges(), ElementsAre(HasSubstr("\"x\":-1920,\"y\":30}")));
    EXPECT_EQ(desktop.table.find("7")->frame, (CGRect{{0, 30}, {960, 1050}}));
}

TEST_F(WayfireWindowAccess, LeavesFullscreenWindowsAndThoseThatAreGoneAlone) {
    open({FakeWayfire::view(7, {{"fullscreen", true}})});
    EXPECT_EQ(desktop.access.place("7", {{0, 30}, {960, 1050}}, desktop.soon()), AXError::cannotComplete);
    EXPECT_EQ(desktop.access.place("8", {{0, 30}, {960, 1050}}, desktop.soon()), AXError::invalidUIElement);
    EXPECT_THAT(desktop.wayfire.takeChanges(), testing::IsEmpty());
}

TEST_F(WayfireWindowAccess, AWindowThatGoesMeanwhileIsNotWaitedFor) {
    open({FakeWayfire::view(7)});
    desktop.wayfire.onConfigure([this](const Json& /*data*/) { desktop.wayfire.setViews({}); });
    EXPECT_EQ(desktop.access.place("7", {{0, 30}, {960, 1050}}, desktop.soon()), AXError::invalidUIElement);
}

TEST_F(WayfireWindowAccess, WithoutTimeItAsksAndDoesNotWait) {
    open({FakeWayfire::view(7)});
    EXPECT_NE(desktop.access.place("7", {{0, 30}, {960, 1050}}, Instant{}), AXError::success);
    ASSERT_TRUE(desktop.refresh());
    EXPECT_EQ(desktop.table.find("7")->frame, (CGRect{{0, 30}, {960, 1050}}));
}

TEST_F(WayfireWindowAccess, OnlyWindowsOfAnotherAreDialogs) {
    open({FakeWayfire::view(7), FakeWayfire::view(8, {{"parent", 7}})});
    EXPECT_EQ(desktop.table.find("7")->kind, compositor::WindowKind::standard);
    EXPECT_EQ(desktop.table.find("8")->kind, compositor::WindowKind::auxiliary);
}

TEST_F(WayfireWindowAccess, OwnWindowsArePlacedAsTheyAppear) {
    open({FakeWayfire::view(7, {{"title", "Tessel"}})});
    desktop.access.placeOwnWindow("Tessel", {1500, 30});
    EXPECT_THAT(desktop.wayfire.takeChanges(), testing::IsEmpty()) << "a window of another program";
    desktop.wayfire.setViews(
        {FakeWayfire::view(7), FakeWayfire::view(9, {{"title", "Tessel"}, {"pid", OpenWindowAccess::ownProcess}})});
    desktop.wayfire.reportView("view-mapped", nullptr);
    std::vector<std::string> changes;
    ASSERT_TRUE(desktop.runUntil([&] { return !(changes = desktop.wayfire.takeChanges()).empty(); }));
    EXPECT_THAT(changes, ElementsAre(testing::AllOf(HasSubstr("\"x\":1500,\"y\":30}"), HasSubstr("\"sticky\":true")),
                                     "wm-actions/set-always-on-top {\"state\":true,\"view_id\":9}",
                                     "window-rules/focus-view {\"id\":9}"));
    ASSERT_TRUE(desktop.refresh());
    EXPECT_THAT(desktop.wayfire.takeChanges(), testing::IsEmpty()) << "it is placed once";
    desktop.access.placeOwnWindow("Tessel", {100, 30});
    EXPECT_THAT(desktop.wayfire.takeChanges(), SizeIs(3)) << "it is shown already";
}

TEST_F(WayfireWindowAccess, ClosesWithTheCompositorAndOpensAgain) {
    open({FakeWayfire::view(7)});
    reported.reported.clear();
    desktop.wayfire.stop();
    ASSERT_TRUE(desktop.runUntil([&] { return !desktop.table.isOpen(); }));
    EXPECT_THAT(reported.reported, testing::IsEmpty());
    EXPECT_NE(desktop.access.place("7", {{0, 30}, {960, 1050}}, desktop.soon()), AXError::success);
    desktop.wayfire.setViews({FakeWayfire::view(8)});
    desktop.wayfire.start();
    ASSERT_TRUE(desktop.runUntil([&] { return desktop.table.isOpen(); }));
    EXPECT_THAT(reported.reported, ElementsAre("gone 7", "there 8", "ready 8"));
}

TEST_F(WayfireWindowAccess, ClosesWhenItsPluginIsTakenAway) {
    open({FakeWayfire::view(7)});
    for (const char* method : {"window-rules/configure-view", "window-rules/list-views"}) {
        desktop.wayfire.setMethod(method, false);
    }
    desktop.access.refresh(desktop.soon());
    ASSERT_TRUE(desktop.runUntil([&] { return !desktop.session.missingPlugins().empty(); }));
    EXPECT_FALSE(desktop.table.isOpen());
    EXPECT_THAT(desktop.session.missingPlugins(), ElementsAre("ipc-rules"));
}

} // namespace
} // namespace platform::wayfire
