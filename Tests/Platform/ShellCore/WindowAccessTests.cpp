#include "Platform/ShellCore/WindowAccess.h"
#include "Tests/Platform/ShellCore/ShellFixture.h"

#include <unistd.h>

#include <string>

namespace platform::shellcore {
namespace {

using std::chrono::milliseconds;

constexpr corvid::CGRect wanted{{100, 200}, {640, 480}};

class AccessToTheShell : public ShellTest {
protected:
    AccessToTheShell() {
        shell->setContents(oneWindow);
        shell->setCore(true);
        link->await(soon());
    }

    void sendText(const char* signal, const std::string& text) {
        shell->send(signal, [&](sd_bus_message* message) { sd_bus_message_append(message, "s", text.c_str()); });
    }

    void sendNumber(const char* signal, std::uint64_t number) {
        shell->send(signal, [&](sd_bus_message* message) { sd_bus_message_append(message, "t", number); });
    }

    [[nodiscard]] corvid::CGRect frame() const { return table.find("7")->frame; }

    compositor::WindowTable table;
    int prompts = 0;
    WindowAccess access{*link, table, {.show = [this] { ++prompts; }, .obstacle = [] { return AccessObstacle{}; }}};
};

TEST_F(AccessToTheShell, FillsTheTableWhenItOpens) {
    EXPECT_TRUE(table.isOpen());
    ASSERT_EQ(table.windows(), std::vector<compositor::WindowIdentifier>{"7"});
    EXPECT_EQ(table.find("7")->clues.applicationId, "org.example.Editor");
    EXPECT_EQ(table.focused(), "7");
    ASSERT_EQ(table.outputs().size(), 1U);
    EXPECT_EQ(table.outputs().front().workArea, (corvid::CGRect{{0, 32}, {1600, 868}}));
}

TEST_F(AccessToTheShell, FollowsWindowsFocusAndScreens) {
    sendText("WindowChanged", R"({"id":8,"kind":"auxiliary","frame":[1,2,3,4]})");
    sendNumber("Focused", 8);
    sendText("OutputsChanged", R"([{"frame":[0,0,800,600],"workArea":[0,0,800,600]}])");
    ASSERT_TRUE(until([&] { return table.focused() == "8" && table.outputs().front().frame.size.width == 800; }));
    EXPECT_EQ(table.find("8")->kind, compositor::WindowKind::auxiliary);
    EXPECT_GT(table.arrivalOf("8"), 0U);
    sendNumber("WindowGone", 8);
    ASSERT_TRUE(until([&] { return table.find("8") == nullptr; }));
    EXPECT_FALSE(table.focused());
}

TEST_F(AccessToTheShell, KnowsAFocusThatIsReportedBeforeItsWindow) {
    sendNumber("Focused", 9);
    ASSERT_TRUE(until([&] { return !table.focused(); }));
    sendText("WindowChanged", R"({"id":9,"kind":"standard","frame":[1,2,3,4]})");
    ASSERT_TRUE(until([&] { return table.focused() == "9"; }));
    sendNumber("Focused", 0);
    EXPECT_TRUE(until([&] { return !table.focused(); }));
}

TEST_F(AccessToTheShell, AsksWhereWindowsAreOnlyAfterOneHasMoved) {
    shell->answerWithText("Frames", "[[7,30,40,500,400,true],[99,1,2,3,4,false]]");
    access.refresh(soon());
    EXPECT_FALSE(shell->wasCalled("Frames"));
    shell->send("Moved");
    catchUp();
    EXPECT_FALSE(shell->wasCalled("Frames")) << "nobody has read anything";
    access.refresh(soon());
    EXPECT_EQ(frame(), (corvid::CGRect{{30, 40}, {500, 400}}));
    EXPECT_TRUE(table.find("7")->isFullscreen);
    EXPECT_EQ(table.find("99"), nullptr);
    const auto calls = shell->calls().size();
    access.refresh(soon());
    EXPECT_EQ(shell->calls().size(), calls);
}

TEST_F(AccessToTheShell, AsksAgainAfterAnAnswerThatIsNone) {
    shell->send("Moved");
    catchUp();
    for (const char* text : {"", "{}", "null"}) {
        shell->answerWithText("Frames", text);
        access.refresh(soon());
        EXPECT_EQ(frame(), (corvid::CGRect{{10, 20}, {300, 200}})) << text;
    }
    shell->answerWith("Frames", "u", 7U);
    access.refresh(soon());
    shell->answerWithText("Frames", "[[7,30,40,500,400,false]]");
    access.refresh(soon());
    EXPECT_EQ(frame(), (corvid::CGRect{{30, 40}, {500, 400}}));
}

TEST_F(AccessToTheShell, PlacesAWindowAndKnowsWhereItHasComeToRest) {
    shell->answerWith("Place", "iiii", 100, 200, 636, 470);
    EXPECT_EQ(access.place("7", {{99.6, 200.4}, {640, 480}}, soon()), AXError::success);
    EXPECT_TRUE(shell->wasCalled("Place 7 100 200 640 480")) << shell->calls().back();
    EXPECT_EQ(frame(), (corvid::CGRect{{100, 200}, {636, 470}}));
}

TEST_F(AccessToTheShell, DoesNotPlaceWhatIsNotThere) {
    EXPECT_EQ(access.place("99", wanted, soon()), AXError::invalidUIElement);
    shell->answer("Place", [](sd_bus_message* call) {
        sd_bus_reply_method_errorf(call, "org.corvid.Tessel.Windows1.NoSuchWindow", "gone");
    });
    EXPECT_EQ(access.place("7", wanted, soon()), AXError::invalidUIElement);
    shell->answer("Place", [](sd_bus_message* call) {
        sd_bus_reply_method_errorf(call, "org.corvid.Tessel.Windows1.Fullscreen", "left alone");
    });
    EXPECT_EQ(access.place("7", wanted, soon()), AXError::cannotComplete);
}

TEST_F(AccessToTheShell, GivesUpWaitingAndReadsLaterWhatBecameOfIt) {
    shell->answer("Place", [](sd_bus_message* /*call*/) {});
    const Instant before = loop.now();
    EXPECT_EQ(access.place("7", wanted, before + milliseconds(100)), AXError::cannotComplete);
    EXPECT_LT(loop.now() - before, std::chrono::seconds(2));
    shell->answerWithText("Frames", "[[7,100,200,640,480,false]]");
    access.refresh(soon());
    EXPECT_EQ(frame(), wanted);
}

TEST_F(AccessToTheShell, TakesAnAnswerOfAnotherTypeForNone) {
    shell->answerWithText("Place", "yes");
    EXPECT_EQ(access.place("7", wanted, soon()), AXError::cannotComplete);
}

TEST_F(AccessToTheShell, OnlyAsksWhereThereIsNoTime) {
    EXPECT_EQ(access.place("7", wanted, Instant{}), AXError::cannotComplete);
    EXPECT_TRUE(until([&] { return shell->wasCalled("Place 7 100 200 640 480"); }));
}

TEST_F(AccessToTheShell, ClosesWithTheExtensionAndKeepsTheWindows) {
    shell->setCore(false);
    ASSERT_TRUE(until([&] { return !table.isOpen(); }));
    EXPECT_EQ(access.place("7", wanted, soon()), AXError::apiDisabled);
    EXPECT_NE(table.find("7"), nullptr);
    shell->setCore(true, "second");
    ASSERT_TRUE(until([&] { return table.isOpen(); }));
    EXPECT_EQ(table.arrivalOf("7"), 0U);
}

TEST_F(AccessToTheShell, ReportsThePointersPosition) {
    shell->answerWith("Pointer", "ii", 12, -5);
    EXPECT_EQ(access.pointer(), (corvid::CGPoint{12, -5}));
    shell->answerWithText("Pointer", "there");
    EXPECT_EQ(access.pointer(), std::nullopt);
}

TEST_F(AccessToTheShell, SendsThePositionOfAWindowOfThisProcess) {
    access.placeOwnWindow("A \"title\"", {20.4, 31.6});
    const std::string call = "PlaceOwn " + std::to_string(::getpid()) + " A \"title\" 20 32";
    EXPECT_TRUE(until([&] { return shell->wasCalled(call); })) << shell->calls().back();
}

TEST_F(AccessToTheShell, ShowsTheWayWhenItIsAsked) {
    access.prompt();
    EXPECT_EQ(prompts, 1);
}

TEST_F(AccessToTheShell, SurvivesAnyMessage) {
    const std::string huge(1 << 19, 'x');
    for (const std::string& text : {std::string(), std::string("{"), std::string("null"), huge,
                                    R"({"id":7,"frame":")" + huge + "\"}", std::string(200'000, '[')}) {
        for (const char* signal : {"WindowChanged", "OutputsChanged", "WindowGone", "Focused", "Moved", "Unheard"}) {
            sendText(signal, text);
        }
    }
    for (const char* signal : {"WindowChanged", "OutputsChanged", "Moved"}) {
        sendNumber(signal, 7);
        shell->send(signal);
    }
    catchUp();
    EXPECT_EQ(frame(), (corvid::CGRect{{10, 20}, {300, 200}}));
    EXPECT_EQ(table.windows().size(), 1U);
    EXPECT_EQ(table.focused(), "7");
    EXPECT_EQ(table.outputs().size(), 1U);
}

} // namespace
} // namespace platform::shellcore
