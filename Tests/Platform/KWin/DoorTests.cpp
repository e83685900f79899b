#include "FakeKWin.h"
#include "Platform/KWin/Door.h"
#include "Tests/Platform/Linux/Control/MessageBus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <nlohmann/json.hpp>

namespace platform::kwin {
namespace {

using corvid::CGRect;
using nlohmann::json;
using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* editor = "{editor}";
const CGRect startFrame{{100, 100}, {640, 480}};

json windowAt(const CGRect& frame, const std::string& identifier = editor) {
    return {{"id", identifier},
            {"process", 42},
            {"entry", "org.example.Editor"},
            {"class", "editor"},
            {"instance", "Editor"},
            {"kind", "standard"},
            {"skipsTaskBars", false},
            {"isFullscreen", false},
            {"frame", {frame.origin.x, frame.origin.y, frame.size.width, frame.size.height}}};
}

std::string told(const json& window) {
    return json{{"window", window}}.dump();
}

class DoorTest : public testing::Test {
protected:
    static constexpr ScriptLink::Timing quick{.keepAlive = milliseconds(20),
                                              .keepAliveLeeway = milliseconds(1),
                                              .patience = milliseconds(60),
                                              .loading = milliseconds(200),
                                              .retry = milliseconds(50),
                                              .farewell = milliseconds(500)};

    MessageBus daemon;
    linux::MainLoop loop;
    compositor::WindowTable table;
    // Made once the daemon runs.
    std::unique_ptr<FakeKWin> kwin;
    std::unique_ptr<linux::SessionBus> bus;
    std::unique_ptr<Door> door;

    void SetUp() override {
        daemon.start();
        kwin = std::make_unique<FakeKWin>(daemon.address());
        openWith({windowAt(startFrame)}, editor);
    }

    void openWith(const std::vector<json>& windows, const std::string& focused) {
        kwin->opened = json{{"opened",
                             {{"windows", windows},
                              {"focused", focused},
                              {"screens", {{{"frame", {0, 0, 1600, 900}}, {"workArea", {0, 30, 1600, 870}}}}}}}}
                           .dump();
    }

    void open(ScriptLink::Timing timing = {}) {
        kwin->start();
        connect(timing);
        ASSERT_TRUE(door->waitUntilOpen(loop.now() + std::chrono::seconds(10)));
    }

    void connect(ScriptLink::Timing timing = {}) {
        bus = std::make_unique<linux::SessionBus>(loop, daemon.address(), milliseconds(20));
        door = std::make_unique<Door>(loop, *bus, table, "/somewhere/tessel.js", timing);
        ASSERT_TRUE(bus->awaitArrival(loop.now() + std::chrono::seconds(10)));
    }

    bool runUntil(const std::function<bool()>& holds) {
        const Instant deadline = loop.now() + std::chrono::seconds(10);
        while (!holds() && loop.now() < deadline) {
            sd_event_run(loop.handle(), std::uint64_t{2000});
        }
        return holds();
    }

    [[nodiscard]] Instant soon() const { return loop.now() + std::chrono::seconds(10); }

    /// The script answers a placement with `result` (number added) and then does what `then` says.
    void onPlace(const json& result, std::function<void(FakeKWin::Script&)> then = nullptr) {
        kwin->carryOut = [result, then = std::move(then)](FakeKWin::Script& script, const std::string& text) {
            json results = json::array();
            for (const json& command : json::parse(text)) {
                json one = result;
                one["number"] = command["number"];
                results.push_back(one);
            }
            script.next(results.dump());
            if (!results.empty() && then) {
                then(script);
            }
        };
    }

    [[nodiscard]] long count(const std::string& what) {
        return std::ranges::count_if(kwin->history(), [&](const std::string& one) { return one.starts_with(what); });
    }
};

TEST_F(DoorTest, OpensWithWhatTheScriptTells) {
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

TEST_F(DoorTest, FollowsWindowsFocusAndScreens) {
    open();
    kwin->run([&] {
        kwin->script->tell(told(windowAt({{5, 6}, {7, 8}}, "{new}")));
        kwin->script->tell(R"({"focused":"{new}"})");
        kwin->script->tell(R"({"gone":"{editor}"})");
        kwin->script->tell(R"({"screens":[{"frame":[0,0,10,20],"workArea":[0,0,10,15]}]})");
    });
    ASSERT_TRUE(runUntil([&] { return table.outputs().front().frame.size.width == 10; }));
    EXPECT_THAT(table.windows(), ElementsAre("{new}"));
    EXPECT_EQ(table.focused(), "{new}");
    EXPECT_GT(table.arrivalOf("{new}"), 0U);
    kwin->run([&] { kwin->script->tell(R"({"focused":""})"); });
    EXPECT_TRUE(runUntil([&] { return !table.focused(); }));
}

TEST_F(DoorTest, WaitsUntilTheWindowHasItsNewFrame) {
    const CGRect wanted{{0, 30}, {800, 870}};
    onPlace({{"outcome", "done"}, {"asked", {0, 30, 800, 870}}, {"frame", {100, 100, 640, 480}}},
            [&](FakeKWin::Script& script) { script.tell(told(windowAt(wanted))); });
    open();
    EXPECT_EQ(door->place(editor, wanted, soon()), AXError::success);
    EXPECT_EQ(table.find(editor)->frame, wanted);
    EXPECT_THAT(kwin->history().back(), HasSubstr(R"("frame":[0.0,30.0,800.0,870.0])"));
}

TEST_F(DoorTest, AMereMoveIsDoneAtOnce) {
    onPlace({{"outcome", "done"}, {"asked", {7, 8, 640, 480}}, {"frame", {7, 8, 640, 480}}});
    open();
    EXPECT_EQ(door->place(editor, {{7, 8}, {640, 480}}, soon()), AXError::success);
    EXPECT_EQ(table.find(editor)->frame, (CGRect{{7, 8}, {640, 480}}));
}

TEST_F(DoorTest, AWindowThatSaysWhatItRefusesIsNotWaitedFor) {
    // It is as small as it can be, and stays where it is: nothing will ever change.
    onPlace({{"outcome", "done"}, {"asked", {100, 100, 640, 480}}, {"frame", {100, 100, 640, 480}}});
    open();
    EXPECT_EQ(door->place(editor, {{100, 100}, {10, 10}}, soon()), AXError::success);
    EXPECT_EQ(table.find(editor)->frame, startFrame);
}

TEST_F(DoorTest, AWindowThatTakesAnotherSizeHasComeToRestWhenNothingChangesAnyMore) {
    onPlace({{"outcome", "done"}, {"asked", {0, 30, 800, 870}}, {"frame", {100, 100, 640, 480}}},
            [&](FakeKWin::Script& script) {
                script.tell(told(windowAt({{0, 30}, {700, 700}})));
                script.tell(told(windowAt({{0, 30}, {790, 860}})));
            });
    open();
    EXPECT_EQ(door->place(editor, {{0, 30}, {800, 870}}, soon()), AXError::success);
    EXPECT_EQ(table.find(editor)->frame, (CGRect{{0, 30}, {790, 860}}));
    EXPECT_EQ(count("answer [{"), 1);
}

TEST_F(DoorTest, AWindowThatWasForcedMayAskForAnotherSize) {
    onPlace({{"outcome", "done"}, {"asked", {0, 30, 800, 870}}, {"frame", {0, 30, 800, 870}}, {"isForced", true}},
            [&](FakeKWin::Script& script) { script.tell(told(windowAt({{0, 30}, {796, 866}}))); });
    open();
    EXPECT_EQ(door->place(editor, {{0, 30}, {800, 870}}, soon()), AXError::success);
    EXPECT_EQ(table.find(editor)->frame, (CGRect{{0, 30}, {796, 866}}));
}

TEST_F(DoorTest, AWindowThatMovedAwayWithItsSizeIsPutBackOnce) {
    open();
    kwin->run([&] {
        kwin->carryOut = [&](FakeKWin::Script& script, const std::string& text) {
            json results = json::array();
            for (const json& command : json::parse(text)) {
                const json frame = command["frame"];
                const bool isFirst = frame[2] == 800;
                // Never where it was asked to.
                const double x = isFirst ? 50 : 60;
                script.tell(told(windowAt({{x, 30}, {790, 860}})));
                results.push_back({{"number", command["number"]},
                                   {"outcome", "done"},
                                   {"asked", {x, 30, 790, 860}},
                                   {"frame", {x, 30, 790, 860}}});
            }
            script.next(results.dump());
        };
    });
    EXPECT_EQ(door->place(editor, {{0, 30}, {800, 870}}, soon()), AXError::success);
    EXPECT_EQ(count("answer [{"), 2);
    EXPECT_EQ(table.find(editor)->frame, (CGRect{{60, 30}, {790, 860}}));
}

TEST_F(DoorTest, NothingIsWaitedForBeyondTheDeadline) {
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
                 script.tell(R"({"focused":"{editor}"})");
             }
         }},
    };
    for (const Case& each : cases) {
        kwin->carryOut = each.carryOut;
        open();
        const Instant begin = loop.now();
        EXPECT_EQ(door->place(editor, {{0, 0}, {800, 900}}, begin + milliseconds(50)), AXError::cannotComplete)
            << each.what;
        EXPECT_GE(loop.now() - begin, milliseconds(50)) << each.what;
        EXPECT_LT(loop.now() - begin, milliseconds(250)) << each.what;
        EXPECT_EQ(table.find(editor)->frame, startFrame) << each.what;
        door.reset();
        kwin->stop();
    }
}

TEST_F(DoorTest, WithADeadlineThatHasPassedItOnlyAsks) {
    open();
    EXPECT_EQ(door->place(editor, {{0, 0}, {800, 900}}, Instant()), AXError::cannotComplete);
    EXPECT_TRUE(runUntil([&] { return count("answer [{") == 1; }));
}

TEST_F(DoorTest, WhatCannotBePlacedIsAnError) {
    open();
    EXPECT_EQ(door->place("{unknown}", startFrame, soon()), AXError::invalidUIElement);
    for (const auto& [outcome, error] :
         std::vector<std::pair<const char*, AXError>>{{"gone", AXError::invalidUIElement},
                                                      {"refused", AXError::cannotComplete},
                                                      {"failed", AXError::cannotComplete}}) {
        kwin->run([&] { onPlace({{"outcome", outcome}}); });
        EXPECT_EQ(door->place(editor, {{0, 0}, {800, 900}}, soon()), error) << outcome;
    }
    json full = windowAt(startFrame);
    full["isFullscreen"] = true;
    kwin->run([&] { kwin->script->tell(told(full)); });
    ASSERT_TRUE(runUntil([&] { return table.find(editor)->isFullscreen; }));
    const long before = count("answer [{");
    EXPECT_EQ(door->place(editor, {{0, 0}, {800, 900}}, soon()), AXError::cannotComplete);
    EXPECT_EQ(count("answer [{"), before);
}

TEST_F(DoorTest, WhatIsAskedWhileTheScriptIsBusyIsJoined) {
    kwin->begin = [&](FakeKWin::Script& script) { script.tell(kwin->opened); };
    open();
    door->placeOwnWindow("One", {1, 2});
    door->placeOwnWindow("Two", {3, 4});
    kwin->run([&] { kwin->script->next("[]"); });
    ASSERT_TRUE(runUntil([&] { return count("answer [{") == 1; }));
    const auto history = kwin->history();
    EXPECT_THAT(history, testing::Contains(testing::AllOf(HasSubstr(R"("title":"One")"), HasSubstr(R"("title":"Two")"),
                                                          HasSubstr("\"process\":" + std::to_string(::getpid())))));
}

TEST_F(DoorTest, OwnWindowsAreToldAgainToAScriptThatWasLoadedAgain) {
    open();
    door->placeOwnWindow("Mine", {1, 2});
    ASSERT_TRUE(runUntil([&] { return count("answer [{") == 1; }));
    kwin->stop();
    ASSERT_TRUE(runUntil([&] { return !table.isOpen(); }));
    kwin->start();
    EXPECT_TRUE(runUntil([&] { return count("answer [{") == 2; }));
}

TEST_F(DoorTest, TheScriptTellsWhereThePointerIs) {
    onPlace({{"outcome", "done"}, {"pointer", {12.5, 34}}});
    open();
    EXPECT_EQ(door->pointer(), (corvid::CGPoint{12.5, 34}));
    kwin->run([&] { onPlace({{"outcome", "failed"}}); });
    EXPECT_EQ(door->pointer(), std::nullopt);
}

TEST_F(DoorTest, TheScriptIsAnsweredBeforeKWinGivesUp) {
    open(quick);
    EXPECT_TRUE(runUntil([&] { return count("answer []") >= 3; }));
    EXPECT_EQ(count("start"), 1);
}

TEST_F(DoorTest, AScriptThatFallsSilentIsLoadedAgain) {
    kwin->carryOut = [](FakeKWin::Script&, const std::string&) {};
    open(quick);
    ASSERT_TRUE(runUntil([&] { return !table.isOpen(); }));
    EXPECT_EQ(table.find(editor)->frame, startFrame) << "its windows are not taken for gone";
    kwin->run([&] { kwin->carryOut = [](FakeKWin::Script& script, const std::string&) { script.next("[]"); }; });
    ASSERT_TRUE(runUntil([&] { return table.isOpen() && count("start") == 2; }));
    EXPECT_EQ(door->place(editor, {{0, 0}, {800, 900}}, Instant()), AXError::cannotComplete);
    EXPECT_TRUE(runUntil([&] { return count("answer [{") == 1; }));
}

TEST_F(DoorTest, AScriptThatKWinRefusesIsTriedAgain) {
    kwin->refusesScripts = true;
    kwin->start();
    connect(quick);
    ASSERT_TRUE(runUntil([&] { return count("load ") == 2; }));
    EXPECT_FALSE(table.isOpen());
    kwin->refusesScripts = false;
    EXPECT_TRUE(runUntil([&] { return table.isOpen(); }));
}

TEST_F(DoorTest, AnotherKWinIsOpenedAnew) {
    open();
    kwin->stop();
    ASSERT_TRUE(runUntil([&] { return !table.isOpen(); }));
    EXPECT_EQ(door->place(editor, {{0, 0}, {800, 900}}, soon()), AXError::cannotComplete);
    openWith({windowAt(startFrame, "{other}")}, "");
    kwin->start();
    ASSERT_TRUE(runUntil([&] { return table.isOpen(); }));
    EXPECT_THAT(table.windows(), ElementsAre("{other}"));
    EXPECT_EQ(table.arrivalOf("{other}"), 0U);
}

TEST_F(DoorTest, ABusThatEndsAndComesBackIsSurvived) {
    open(quick);
    daemon.stop();
    ASSERT_TRUE(runUntil([&] { return !table.isOpen(); }));
    kwin->stop();
    daemon.start();
    kwin->start();
    EXPECT_TRUE(runUntil([&] { return table.isOpen(); }));
}

TEST_F(DoorTest, WithoutKWinItStaysClosed) {
    connect();
    EXPECT_FALSE(door->waitUntilOpen(loop.now() + milliseconds(30)));
    EXPECT_EQ(door->place(editor, startFrame, soon()), AXError::invalidUIElement);
    EXPECT_EQ(door->pointer(), std::nullopt);
    kwin->start();
    EXPECT_TRUE(runUntil([&] { return table.isOpen(); }));
}

TEST_F(DoorTest, OnlyKWinIsListenedTo) {
    open();
    sd_bus* raw = nullptr;
    ASSERT_GE(sd_bus_new(&raw), 0);
    const linux::OwnedBus stranger(raw);
    ASSERT_GE(sd_bus_set_address(raw, daemon.address().c_str()), 0);
    ASSERT_GE(sd_bus_set_bus_client(raw, 1), 0);
    ASSERT_GE(sd_bus_start(raw), 0);
    int refusals = 0;
    const auto refused = [](sd_bus_message* reply, void* data, sd_bus_error*) {
        *static_cast<int*>(data) += sd_bus_message_is_method_error(reply, nullptr) > 0 ? 1 : 0;
        return 0;
    };
    for (const char* method : {"Tell", "Next"}) {
        for (const char* run : {"run-1", "mine"}) {
            const bool isTell = std::string(method) == "Tell";
            sd_bus_call_method_async(raw, nullptr, "org.corvid.Tessel.KWin", "/org/corvid/Tessel/KWin",
                                     "org.corvid.Tessel.KWin1", method, refused, &refusals, "ss", run,
                                     isTell ? R"({"gone":"{editor}"})" : "[]");
        }
    }
    EXPECT_TRUE(runUntil([&] {
        while (sd_bus_process(raw, nullptr) > 0) {
        }
        return refusals == 4;
    }));
    EXPECT_THAT(table.windows(), ElementsAre(editor));
    EXPECT_EQ(count("answer"), 0) << "the script's call was answered for somebody else's";
}

TEST_F(DoorTest, WhatIsMalformedChangesNothing) {
    open();
    const std::vector<std::string> texts{
        "",
        "{",
        "[]",
        "null",
        "\"opened\"",
        R"({"gone":7})",
        R"({"gone":""})",
        R"({"window":{}})",
        R"({"window":{"id":"x"}})",
        R"({"focused":[]})",
        R"({"screens":[]})",
        R"({"screens":[{"frame":[0,0,1,1]}]})",
        R"({"opened":{}})",
        R"({"opened":{"windows":[{}],"focused":"","screens":[]}})",
        std::string(5'000'000, '['),
        R"({"gone":")" + std::string(2000, 'x') + "\"}",
        R"({"gone":"{editor}","focused":""})",
    };
    kwin->run([&] {
        for (const std::string& text : texts) {
            kwin->script->tell(text);
            kwin->script->next(text);
        }
        kwin->script->tell(R"({"focused":""})");
    });
    ASSERT_TRUE(runUntil([&] { return !table.focused(); }));
    EXPECT_THAT(table.windows(), ElementsAre(editor));
    EXPECT_EQ(table.find(editor)->frame, startFrame);
    EXPECT_EQ(table.outputs().size(), 1U);
}

TEST_F(DoorTest, AnAnswerThatIsMalformedIsNoAnswer) {
    for (const char* text : {"7", R"([{"outcome":"done"}])", R"([{"number":-1,"outcome":"done"}])",
                             R"([{"number":1,"outcome":"perhaps"}])", R"([{"number":1}])"}) {
        kwin->carryOut = [text](FakeKWin::Script& script, const std::string&) { script.next(text); };
        open(quick);
        EXPECT_EQ(door->place(editor, {{0, 0}, {800, 900}}, loop.now() + milliseconds(30)), AXError::cannotComplete)
            << text;
        door.reset();
        kwin->stop();
    }
}

TEST_F(DoorTest, ALeftOverRunOfTheScriptIsEnded) {
    open();
    std::unique_ptr<FakeKWin::Script> former;
    kwin->run([&] {
        former = std::make_unique<FakeKWin::Script>(*kwin, "former");
        former->tell(R"({"gone":"{editor}"})");
        former->next("[]");
    });
    EXPECT_TRUE(runUntil([&] { return count("answer \"end\"") == 1; }));
    EXPECT_THAT(table.windows(), ElementsAre(editor));
    kwin->run([&] { former.reset(); });
}

TEST_F(DoorTest, TheScriptIsTakenAlongAtTheEnd) {
    onPlace({{"outcome", "done"}, {"asked", {7, 8, 640, 480}}, {"frame", {7, 8, 640, 480}}});
    open();
    // The script has called again.
    ASSERT_EQ(door->place(editor, {{7, 8}, {640, 480}}, soon()), AXError::success);
    ASSERT_TRUE(kwin->isScriptLoaded());
    door.reset();
    EXPECT_FALSE(kwin->isScriptLoaded());
    EXPECT_EQ(count("answer \"end\""), 1);
}

TEST_F(DoorTest, WhatIsAskedAfterTheLoopHasEndedDoesNoHarm) {
    open(quick);
    loop.end(0);
    EXPECT_EQ(loop.run(), 0);
    door->placeOwnWindow("Mine", {1, 2});
    door.reset();
    EXPECT_FALSE(kwin->isScriptLoaded());
}

TEST_F(DoorTest, AKWinThatHangsDoesNotHoldUpTheEnd) {
    open(ScriptLink::Timing{.farewell = milliseconds(50)});
    std::atomic<bool> mayGoOn = false;
    std::thread hanging([&] {
        kwin->run([&] {
            while (!mayGoOn) {
                std::this_thread::sleep_for(milliseconds(1));
            }
        });
    });
    const Instant begin = loop.now();
    door.reset();
    EXPECT_LT(loop.now() - begin, std::chrono::seconds(2));
    mayGoOn = true;
    hanging.join();
}

TEST_F(DoorTest, SomebodyElseWithItsNameIsWaitedOut) {
    sd_bus* raw = nullptr;
    ASSERT_GE(sd_bus_new(&raw), 0);
    linux::OwnedBus other(raw);
    ASSERT_GE(sd_bus_set_address(raw, daemon.address().c_str()), 0);
    ASSERT_GE(sd_bus_set_bus_client(raw, 1), 0);
    ASSERT_GE(sd_bus_start(raw), 0);
    ASSERT_GE(sd_bus_request_name(raw, "org.corvid.Tessel.KWin", 0), 0);
    kwin->start();
    connect(quick);
    EXPECT_FALSE(door->waitUntilOpen(loop.now() + milliseconds(100)));
    EXPECT_EQ(count("load"), 0);
    other.reset();
    EXPECT_TRUE(runUntil([&] { return table.isOpen(); }));
}

} // namespace
} // namespace platform::kwin
