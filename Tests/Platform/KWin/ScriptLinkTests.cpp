#include "WindowAccessFixture.h"

#include <poll.h>
#include <unistd.h>

#include <chrono>
#include <future>
#include <thread>

namespace platform::kwin {
namespace {

using corvid::CGRect;
using nlohmann::json;
using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::HasSubstr;

using ScriptLinkTest = WindowAccessTest;

TEST_F(ScriptLinkTest, CommandsForABusyScriptAreJoined) {
    kwin->begin = [&](FakeKWin::Script& script) { script.report(kwin->opened); };
    open();
    access->placeOwnWindow("One", {1, 2});
    access->placeOwnWindow("Two", {3, 4});
    kwin->run([&] { kwin->script->next("[]"); });
    ASSERT_TRUE(runUntil([&] { return count("answer [{") == 1; }));
    const auto history = kwin->history();
    EXPECT_THAT(history, testing::Contains(testing::AllOf(HasSubstr(R"("title":"One")"), HasSubstr(R"("title":"Two")"),
                                                          HasSubstr("\"process\":" + std::to_string(::getpid())))));
}

TEST_F(ScriptLinkTest, AReloadedScriptGetsOwnWindowsAgain) {
    open();
    access->placeOwnWindow("Mine", {1, 2});
    ASSERT_TRUE(runUntil([&] { return count("answer [{") == 1; }));
    kwin->stop();
    ASSERT_TRUE(runUntil([&] { return !table.isOpen(); }));
    kwin->start();
    EXPECT_TRUE(runUntil([&] { return count("answer [{") == 2; }));
}

TEST_F(ScriptLinkTest, TheScriptIsAnsweredBeforeKWinGivesUp) {
    open(quick);
    EXPECT_TRUE(runUntil([&] { return count("answer []") >= 3; }));
    EXPECT_EQ(count("start"), 1);
}

TEST_F(ScriptLinkTest, AScriptThatFallsSilentIsLoadedAgain) {
    kwin->carryOut = [](FakeKWin::Script&, const std::string&) {};
    open(quick);
    ASSERT_TRUE(runUntil([&] { return !table.isOpen(); }));
    EXPECT_EQ(table.find(editor)->frame, startFrame) << "its windows are not taken for gone";
    kwin->run([&] { kwin->carryOut = [](FakeKWin::Script& script, const std::string&) { script.next("[]"); }; });
    ASSERT_TRUE(runUntil([&] { return table.isOpen() && count("start") == 2; }));
    EXPECT_EQ(access->place(editor, {{0, 0}, {800, 900}}, Instant()), AXError::cannotComplete);
    EXPECT_TRUE(runUntil([&] { return count("answer [{") == 1; }));
}

/// Keeps the connection, to check for unread messages on it.
class Onlooker final : public linux::SessionBus::Listener {
public:
    explicit Onlooker(linux::SessionBus& sessionBus)
        : Listener(sessionBus) {}

    [[nodiscard]] bool awaitMessage() const {
        constexpr int patience = 10'000;
        pollfd waiting{.fd = sd_bus_get_fd(bus), .events = POLLIN, .revents = 0};
        return ::poll(&waiting, 1, patience) == 1;
    }

private:
    void busArrived(sd_bus* arrived) override { bus = arrived; }
    void busLeft() override { bus = nullptr; }

    sd_bus* bus = nullptr;
};

TEST_F(ScriptLinkTest, ACallThatWaitsUnreadAsPatienceEndsIsHeard) {
    kwin->carryOut = [](FakeKWin::Script&, const std::string&) {};
    ScriptLink::Timing timing = quick;
    timing.patience = milliseconds(200);
    open(timing);
    const Onlooker onlooker(*bus);
    ASSERT_TRUE(runUntil([&] { return count("answer []") == 1; }));
    // The script calls at once. The main thread is busy elsewhere until the timeout; the message before the call is
    // still unread, too.
    kwin->run([&] {
        for (int report = 0; report < 20; ++report) {
            kwin->script->report(R"({"focused":""})");
        }
        kwin->script->next("[]");
    });
    ASSERT_TRUE(onlooker.awaitMessage());
    for (const Instant busyUntil = loop.now() + timing.patience + milliseconds(50); loop.now() < busyUntil;) {
        std::this_thread::yield();
    }
    EXPECT_TRUE(runUntil([&] { return count("answer []") == 2; }));
    EXPECT_TRUE(table.isOpen());
    EXPECT_EQ(count("start"), 1) << "the script was loaded again";
}

TEST_F(ScriptLinkTest, AScriptThatKWinRefusesIsTriedAgain) {
    kwin->refusesScripts = true;
    kwin->start();
    connect(quick);
    ASSERT_TRUE(runUntil([&] { return count("load ") == 2; }));
    EXPECT_FALSE(table.isOpen());
    kwin->refusesScripts = false;
    EXPECT_TRUE(runUntil([&] { return table.isOpen(); }));
}

TEST_F(ScriptLinkTest, AnotherKWinIsOpenedAnew) {
    open();
    kwin->stop();
    ASSERT_TRUE(runUntil([&] { return !table.isOpen(); }));
    EXPECT_EQ(access->place(editor, {{0, 0}, {800, 900}}, soon()), AXError::cannotComplete);
    openWith({windowAt(startFrame, "{other}")}, "");
    kwin->start();
    ASSERT_TRUE(runUntil([&] { return table.isOpen(); }));
    EXPECT_THAT(table.windows(), ElementsAre("{other}"));
    EXPECT_EQ(table.arrivalOf("{other}"), 0U);
}

TEST_F(ScriptLinkTest, ABusThatEndsAndComesBackIsSurvived) {
    open(quick);
    daemon.stop();
    ASSERT_TRUE(runUntil([&] { return !table.isOpen(); }));
    kwin->stop();
    daemon.start();
    kwin->start();
    EXPECT_TRUE(runUntil([&] { return table.isOpen(); }));
}

TEST_F(ScriptLinkTest, WithoutKWinItStaysClosed) {
    connect();
    EXPECT_FALSE(access->waitUntilOpen(loop.now() + milliseconds(30)));
    EXPECT_EQ(access->place(editor, startFrame, soon()), AXError::invalidUIElement);
    EXPECT_EQ(access->pointer(), std::nullopt);
    kwin->start();
    EXPECT_TRUE(runUntil([&] { return table.isOpen(); }));
}

TEST_F(ScriptLinkTest, OnlyKWinIsListenedTo) {
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
    for (const char* method : {"Report", "Next"}) {
        for (const char* run : {"run-1", "mine"}) {
            const bool isTell = std::string(method) == "Report";
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

TEST_F(ScriptLinkTest, MalformedMessagesChangeNothing) {
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
            kwin->script->report(text);
            kwin->script->next(text);
        }
        kwin->script->report(R"({"focused":""})");
    });
    ASSERT_TRUE(runUntil([&] { return !table.focused(); }));
    EXPECT_THAT(table.windows(), ElementsAre(editor));
    EXPECT_EQ(table.find(editor)->frame, startFrame);
    EXPECT_EQ(table.outputs().size(), 1U);
}

TEST_F(ScriptLinkTest, AnAnswerThatIsMalformedIsNoAnswer) {
    for (const char* text : {"7", R"([{"outcome":"done"}])", R"([{"number":-1,"outcome":"done"}])",
                             R"([{"number":1,"outcome":"perhaps"}])", R"([{"number":1}])"}) {
        kwin->carryOut = [text](FakeKWin::Script& script, const std::string&) { script.next(text); };
        open(quick);
        EXPECT_EQ(access->place(editor, {{0, 0}, {800, 900}}, loop.now() + milliseconds(30)), AXError::cannotComplete)
            << text;
        access.reset();
        kwin->stop();
    }
}

TEST_F(ScriptLinkTest, ALeftOverRunOfTheScriptIsEnded) {
    open();
    std::unique_ptr<FakeKWin::Script> former;
    kwin->run([&] {
        former = std::make_unique<FakeKWin::Script>(*kwin, "former");
        former->report(R"({"gone":"{editor}"})");
        former->next("[]");
    });
    EXPECT_TRUE(runUntil([&] { return count("answer \"end\"") == 1; }));
    EXPECT_THAT(table.windows(), ElementsAre(editor));
    kwin->run([&] { former.reset(); });
}

TEST_F(ScriptLinkTest, TheScriptIsTakenAlongAtTheEnd) {
    onPlace({{"outcome", "done"}, {"asked", {7, 8, 640, 480}}, {"frame", {7, 8, 640, 480}}});
    open();
    // The script has called again.
    ASSERT_EQ(access->place(editor, {{7, 8}, {640, 480}}, soon()), AXError::success);
    ASSERT_TRUE(kwin->isScriptLoaded());
    access.reset();
    EXPECT_FALSE(kwin->isScriptLoaded());
    EXPECT_EQ(count("answer \"end\""), 1);
}

TEST_F(ScriptLinkTest, CommandsAfterTheEndOfTheLoopDoNoHarm) {
    open(quick);
    loop.end(0);
    EXPECT_EQ(loop.run(), 0);
    access->placeOwnWindow("Mine", {1, 2});
    access.reset();
    EXPECT_FALSE(kwin->isScriptLoaded());
}

TEST_F(ScriptLinkTest, AKWinThatHangsDoesNotHoldUpTheEnd) {
    open(ScriptLink::Timing{.farewell = milliseconds(50)});
    std::promise<void> beginning;
    std::promise<void> permission;
    std::thread hanging([&, isGiven = permission.get_future().share()] {
        kwin->run([&] {
            beginning.set_value();
            isGiven.wait_for(std::chrono::seconds(10));
        });
    });
    beginning.get_future().wait();
    const Instant begin = loop.now();
    access.reset();
    EXPECT_LT(loop.now() - begin, std::chrono::seconds(2));
    permission.set_value();
    hanging.join();
}

TEST_F(ScriptLinkTest, WaitsWhileAnotherClientHasItsName) {
    sd_bus* raw = nullptr;
    ASSERT_GE(sd_bus_new(&raw), 0);
    linux::OwnedBus other(raw);
    ASSERT_GE(sd_bus_set_address(raw, daemon.address().c_str()), 0);
    ASSERT_GE(sd_bus_set_bus_client(raw, 1), 0);
    ASSERT_GE(sd_bus_start(raw), 0);
    ASSERT_GE(sd_bus_request_name(raw, "org.corvid.Tessel.KWin", 0), 0);
    kwin->start();
    connect(quick);
    EXPECT_FALSE(access->waitUntilOpen(loop.now() + milliseconds(100)));
    EXPECT_EQ(count("load"), 0);
    other.reset();
    EXPECT_TRUE(runUntil([&] { return table.isOpen(); }));
}

} // namespace
} // namespace platform::kwin
