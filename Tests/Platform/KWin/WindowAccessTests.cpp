#include "Tests/Platform/Linux/Stopwatch.h"
#include "WindowAccessFixture.h"

namespace platform::kwin {
namespace {

using corvid::CGRect;
using nlohmann::json;
using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::HasSubstr;

TEST_F(WindowAccessTest, OpensWithTheStateFromTheScript) {
    open();
    EXPECT_THAT(kwin->history(), ElementsAre("unload", "load /somewhere/tessel.js as org.corvid.Tessel", "start"));
    ASSERT_THAT(table.windows(), ElementsAre(editor));
    const compositor::Window* window = table.find(editor);
    EXPECT_EQ(window->clues, (linux::ApplicationClues{.process = 42,
                                                      .applicationId = "org.example.Editor",
                                                      .windowClass = "editor",
                                                      .windowInstance = "Editor"}));
    EXPECT_EQ(window->kind, compositor::WindowKind::standard);
    EXPECT_TRUE(window->isReady);
    EXPECT_EQ(window->frame, startFrame);
    EXPECT_EQ(table.focused(), editor);
    ASSERT_EQ(table.outputs().size(), 1U);
    EXPECT_EQ(table.outputs().front(), (compositor::Output{{{0, 0}, {1600, 900}}, {{0, 30}, {1600, 870}}}));
}

TEST_F(WindowAccessTest, FollowsWindowsFocusAndScreens) {
    open();
    kwin->run([&] {
        kwin->script->report(report(windowAt({{5, 6}, {7, 8}}, "{new}")));
        kwin->script->report(R"({"focused":"{new}"})");
        kwin->script->report(R"({"gone":"{editor}"})");
        kwin->script->report(R"({"screens":[{"frame":[0,0,10,20],"workArea":[0,0,10,15]}]})");
    });
    ASSERT_TRUE(runUntil([&] { return table.outputs().front().frame.size.width == 10; }));
    EXPECT_THAT(table.windows(), ElementsAre("{new}"));
    EXPECT_EQ(table.focused(), "{new}");
    EXPECT_GT(table.arrivalOf("{new}"), 0U);
    kwin->run([&] { kwin->script->report(R"({"focused":""})"); });
    EXPECT_TRUE(runUntil([&] { return !table.focused(); }));
}

TEST_F(WindowAccessTest, WaitsUntilTheWindowHasItsNewFrame) {
    const CGRect wanted{{0, 30}, {800, 870}};
    onPlace({{"outcome", "done"}, {"asked", {0, 30, 800, 870}}, {"frame", {100, 100, 640, 480}}},
            [&](FakeKWin::Script& script) { script.report(report(windowAt(wanted))); });
    open();
    EXPECT_EQ(access->place(editor, wanted, soon()), AXError::success);
    EXPECT_EQ(table.find(editor)->frame, wanted);
    EXPECT_THAT(kwin->history().back(), HasSubstr(R"("frame":[0.0,30.0,800.0,870.0])"));
}

TEST_F(WindowAccessTest, AMereMoveIsDoneAtOnce) {
    onPlace({{"outcome", "done"}, {"asked", {7, 8, 640, 480}}, {"frame", {7, 8, 640, 480}}});
    open();
    EXPECT_EQ(access->place(editor, {{7, 8}, {640, 480}}, soon()), AXError::success);
    EXPECT_EQ(table.find(editor)->frame, (CGRect{{7, 8}, {640, 480}}));
}

TEST_F(WindowAccessTest, AWindowThatSaysWhatItRefusesIsNotWaitedFor) {
    // It has its smallest size and does not move: no change will ever come.
    onPlace({{"outcome", "done"}, {"asked", {100, 100, 640, 480}}, {"frame", {100, 100, 640, 480}}});
    open();
    EXPECT_EQ(access->place(editor, {{100, 100}, {10, 10}}, soon()), AXError::success);
    EXPECT_EQ(table.find(editor)->frame, startFrame);
}

TEST_F(WindowAccessTest, AWindowThatTakesAnotherSizeHasComeToRestWhenNothingChangesAnyMore) {
    onPlace({{"outcome", "done"}, {"asked", {0, 30, 800, 870}}, {"frame", {100, 100, 640, 480}}},
            [&](FakeKWin::Script& script) {
                script.report(report(windowAt({{0, 30}, {700, 700}})));
                script.report(report(windowAt({{0, 30}, {790, 860}})));
            });
    open();
    EXPECT_EQ(access->place(editor, {{0, 30}, {800, 870}}, soon()), AXError::success);
    EXPECT_EQ(table.find(editor)->frame, (CGRect{{0, 30}, {790, 860}}));
    EXPECT_EQ(count("answer [{"), 1);
}

TEST_F(WindowAccessTest, AWindowThatWasForcedMayAskForAnotherSize) {
    onPlace({{"outcome", "done"}, {"asked", {0, 30, 800, 870}}, {"frame", {0, 30, 800, 870}}, {"isForced", true}},
            [&](FakeKWin::Script& script) { script.report(report(windowAt({{0, 30}, {796, 866}}))); });
    open();
    EXPECT_EQ(access->place(editor, {{0, 30}, {800, 870}}, soon()), AXError::success);
    EXPECT_EQ(table.find(editor)->frame, (CGRect{{0, 30}, {796, 866}}));
}

TEST_F(WindowAccessTest, AWindowThatKeepsItsFormerSizeInItsNewPlaceHasSettledOnIt) {
    const CGRect settled{{0, 30}, startFrame.size};
    onPlace({{"outcome", "done"}, {"asked", {0, 30, 800, 870}}, {"frame", {0, 30, 800, 870}}, {"isForced", true}},
            [&](FakeKWin::Script& script) { script.report(report(windowAt(settled))); });
    open();
    EXPECT_EQ(access->place(editor, {{0, 30}, {800, 870}}, soon()), AXError::success);
    EXPECT_EQ(table.find(editor)->frame, settled);
}

TEST_F(WindowAccessTest, AWindowThatRestoresItsFormerFrameIsReportedAfterwards) {
    onPlace({{"outcome", "done"}, {"asked", {0, 30, 800, 870}}, {"frame", {0, 30, 800, 870}}, {"isForced", true}},
            [&](FakeKWin::Script& script) { script.report(report(windowAt(startFrame))); });
    open();
    EXPECT_EQ(access->place(editor, {{0, 30}, {800, 870}}, soon()), AXError::success);
    EXPECT_EQ(table.find(editor)->frame, (CGRect{{0, 30}, {800, 870}})) << "it was taken for an answer";
    EXPECT_TRUE(runUntil([&] { return table.find(editor)->frame == startFrame; }));
}

TEST_F(WindowAccessTest, AWindowThatAsksForAnotherSizeAndThenGoesBackIsNotWaitedFor) {
    const CGRect another{{0, 30}, {796, 866}};
    onPlace({{"outcome", "done"}, {"asked", {0, 30, 800, 870}}, {"frame", {0, 30, 800, 870}}, {"isForced", true}},
            [&](FakeKWin::Script& script) {
                script.report(report(windowAt(another)));
                script.report(report(windowAt(startFrame)));
            });
    open();
    EXPECT_EQ(access->place(editor, {{0, 30}, {800, 870}}, soon()), AXError::success);
    EXPECT_EQ(table.find(editor)->frame, another) << "it was taken for an answer";
    EXPECT_TRUE(runUntil([&] { return table.find(editor)->frame == startFrame; }));
}

TEST_F(WindowAccessTest, AWindowThatWentBackOnceIsWaitedForTheNextTimeAsAnyOther) {
    const json asked{0, 30, 800, 870};
    onPlace({{"outcome", "done"}, {"asked", asked}, {"frame", asked}, {"isForced", true}},
            [&](FakeKWin::Script& script) { script.report(report(windowAt(startFrame))); });
    open();
    ASSERT_EQ(access->place(editor, {{0, 30}, {800, 870}}, soon()), AXError::success);
    ASSERT_TRUE(runUntil([&] { return table.find(editor)->frame == startFrame; }));

    // Now it stops moving.
    kwin->run(
        [&] { onPlace({{"outcome", "done"}, {"asked", asked}, {"frame", {100, 100, 640, 480}}, {"isForced", true}}); });
    const linux::Stopwatch stopwatch;
    EXPECT_EQ(access->place(editor, {{0, 30}, {800, 870}}, loop.now() + milliseconds(50)), AXError::cannotComplete);
    EXPECT_LT(stopwatch.elapsed(), milliseconds(250));
}

TEST_F(WindowAccessTest, AWindowThatMovedAwayWithItsSizeIsPutBackOnce) {
    open();
    kwin->run([&] {
        kwin->carryOut = [&](FakeKWin::Script& script, const std::string& text) {
            json results = json::array();
            for (const json& command : json::parse(text)) {
                const json frame = command["frame"];
                const bool isFirst = frame[2] == 800;
                // Never at the requested place.
                const double x = isFirst ? 50 : 60;
                script.report(report(windowAt({{x, 30}, {790, 860}})));
                results.push_back({{"number", command["number"]},
                                   {"outcome", "done"},
                                   {"asked", {x, 30, 790, 860}},
                                   {"frame", {x, 30, 790, 860}}});
            }
            script.next(results.dump());
        };
    });
    EXPECT_EQ(access->place(editor, {{0, 30}, {800, 870}}, soon()), AXError::success);
    EXPECT_EQ(count("answer [{"), 2);
    EXPECT_EQ(table.find(editor)->frame, (CGRect{{60, 30}, {790, 860}}));
}

TEST_F(WindowAccessTest, NothingIsWaitedForBeyondTheDeadline) {
    struct Case {
        const char* what;
        std::function<void(FakeKWin::Script&, const std::string&)> carryOut;
    };
    const std::vector<Case> cases{
        {"a script that does not call again", [](FakeKWin::Script&, const std::string&) {}},
        {"a window that never changes",
         [](FakeKWin::Script& script, const std::string& text) {
             const json number = json::parse(text)[0]["number"];
             script.next(
                 json::array({{{"number", number}, {"outcome", "done"}, {"frame", {100, 100, 640, 480}}}}).dump());
         }},
        {"a script that talks without end",
         [](FakeKWin::Script& script, const std::string&) {
             for (int round = 0; round < 3000; ++round) {
                 script.report(R"({"focused":"{editor}"})");
             }
         }},
    };
    for (const Case& each : cases) {
        kwin->carryOut = each.carryOut;
        open();
        const linux::Stopwatch stopwatch;
        const Instant begin = loop.now();
        EXPECT_EQ(access->place(editor, {{0, 0}, {800, 900}}, begin + milliseconds(50)), AXError::cannotComplete)
            << each.what;
        EXPECT_GE(loop.now() - begin, milliseconds(50)) << each.what;
        EXPECT_LT(stopwatch.elapsed(), milliseconds(250)) << each.what;
        EXPECT_EQ(table.find(editor)->frame, startFrame) << each.what;
        access.reset();
        kwin->stop();
    }
}

TEST_F(WindowAccessTest, WithADeadlineThatHasPassedItOnlyAsks) {
    open();
    EXPECT_EQ(access->place(editor, {{0, 0}, {800, 900}}, Instant()), AXError::cannotComplete);
    EXPECT_TRUE(runUntil([&] { return count("answer [{") == 1; }));
}

TEST_F(WindowAccessTest, AWindowThatCannotBePlacedIsAnError) {
    open();
    EXPECT_EQ(access->place("{unknown}", startFrame, soon()), AXError::invalidUIElement);
    for (const auto& [outcome, error] :
         std::vector<std::pair<const char*, AXError>>{{"gone", AXError::invalidUIElement},
                                                      {"refused", AXError::cannotComplete},
                                                      {"failed", AXError::cannotComplete}}) {
        kwin->run([&] { onPlace({{"outcome", outcome}}); });
        EXPECT_EQ(access->place(editor, {{0, 0}, {800, 900}}, soon()), error) << outcome;
    }
    json full = windowAt(startFrame);
    full["isFullscreen"] = true;
    kwin->run([&] { kwin->script->report(report(full)); });
    ASSERT_TRUE(runUntil([&] { return table.find(editor)->isFullscreen; }));
    const long before = count("answer [{");
    EXPECT_EQ(access->place(editor, {{0, 0}, {800, 900}}, soon()), AXError::cannotComplete);
    EXPECT_EQ(count("answer [{"), before);
}

TEST_F(WindowAccessTest, TheScriptReportsThePointersPosition) {
    onPlace({{"outcome", "done"}, {"pointer", {12.5, 34}}});
    open();
    EXPECT_EQ(access->pointer(), (corvid::CGPoint{12.5, 34}));
    kwin->run([&] { onPlace({{"outcome", "failed"}}); });
    EXPECT_EQ(access->pointer(), std::nullopt);
}

} // namespace
} // namespace platform::kwin
