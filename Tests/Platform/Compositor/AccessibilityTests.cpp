#include "Platform/Compositor/Accessibility.h"
#include "Platform/Compositor/Workspace.h"
#include "Platform/Simulated/MainActor.h"
#include "SimulatedWindowAccess.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace platform::compositor {
namespace {

using corvid::CGPoint;
using corvid::CGRect;
using corvid::CGSize;
using std::chrono::milliseconds;
using Trace = std::vector<std::string>;

/// Two windows of process 7, "a" and "b", and one of process 8, "c", which has the keyboard focus. The compositor's
/// origin is the corner of the output on the left; the primary output is beside it and lower.
class CompositorAccessibility : public testing::Test {
protected:
    void SetUp() override { open(); }

    void open() {
        WindowTable::Contents contents;
        contents.windows = {{"b", readyWindow(7, {{1500, 100}, {400, 300}})},
                            {"a", readyWindow(7, {{1380, 220}, {300, 200}})},
                            {"c", readyWindow(8)}};
        contents.focused = "c";
        contents.outputs = {{.frame = {{1280, 120}, {1920, 1080}}, .workArea = {{1280, 150}, {1920, 1050}}},
                            {.frame = {{0, 0}, {1280, 1024}}, .workArea = {{0, 0}, {1280, 1024}}}};
        table.open(std::move(contents));
    }

    void endTurn() {
        placement.finishTurn();
        deadline.begin();
        turn.begin();
    }

    static AXUIElement element(const WindowIdentifier& window) { return linux::windowElement(window); }

    template <typename Value>
    std::optional<Value> read(const AXUIElement& subject, std::string_view attribute) {
        const auto answer = accessibility.copyAttributeValue(subject, attribute);
        const Value* found = answer ? std::get_if<Value>(&*answer) : nullptr;
        return found == nullptr ? std::nullopt : std::optional(*found);
    }

    std::optional<CGPoint> position(const WindowIdentifier& window) {
        return read<CGPoint>(element(window), AXAttribute::position);
    }

    std::optional<CGSize> size(const WindowIdentifier& window) {
        return read<CGSize>(element(window), AXAttribute::size);
    }

    AXError move(const WindowIdentifier& window, CGPoint where) {
        return accessibility.setAttributeValue(element(window), AXAttribute::position, where);
    }

    AXError resize(const WindowIdentifier& window, CGSize wanted) {
        return accessibility.setAttributeValue(element(window), AXAttribute::size, wanted);
    }

    /// The fault that prevents reading the window's size.
    AXError failure(const WindowIdentifier& window) {
        const auto answer = accessibility.copyAttributeValue(element(window), AXAttribute::size);
        return answer ? AXError::success : answer.error();
    }

    /// The requests to the window access, without refreshes.
    Trace asked() {
        Trace trace = access.takeTrace();
        std::erase(trace, "refresh");
        return trace;
    }

    simulated::MainActor mainActor;
    WindowTable table;
    SimulatedWindowAccess access{table, [this] { return mainActor.now(); },
                                 [this](Duration time) { mainActor.pass(time); }};
    linux::TurnDeadline deadline{mainActor};
    Turn turn{table, access, deadline};
    Placement placement{access, turn};
    Accessibility accessibility{table, access, turn, placement};
};

TEST_F(CompositorAccessibility, FramesAreCountedFromThePrimaryOutputsCorner) {
    EXPECT_EQ(position("a"), (CGPoint{100, 100}));
    EXPECT_EQ(size("a"), (CGSize{300, 200}));
    EXPECT_EQ(position("b"), (CGPoint{220, -20}));
}

TEST_F(CompositorAccessibility, WritesToAWindowBecomeOneRequestBeforeItIsReadAgain) {
    EXPECT_EQ(resize("a", {960, 1050}), AXError::success);
    EXPECT_EQ(move("a", {0, 30}), AXError::success);
    EXPECT_EQ(resize("a", {960, 1049.6}), AXError::success);
    EXPECT_EQ(asked(), Trace{});
    EXPECT_EQ(position("a"), (CGPoint{0, 30}));
    EXPECT_EQ(size("a"), (CGSize{960, 1050}));
    EXPECT_EQ(asked(), Trace{"place a at (1280, 150) 960 x 1050"});
    endTurn();
    EXPECT_EQ(asked(), Trace{});
}

TEST_F(CompositorAccessibility, AReadReturnsTheFinalFrame) {
    access.leastSizes["a"] = {800, 100};
    resize("a", {400, 500});
    EXPECT_EQ(size("a"), (CGSize{800, 500}));
    EXPECT_EQ(position("a"), (CGPoint{100, 100}));
}

TEST_F(CompositorAccessibility, WritesWithoutAReadAreSentAtTheEndOfTheTurnWithoutWaiting) {
    move("a", {10, 20});
    move("b", {30, 40});
    endTurn();
    EXPECT_EQ(asked(), (Trace{"place a at (1290, 140) 300 x 200 without waiting",
                              "place b at (1310, 160) 400 x 300 without waiting"}));
}

TEST_F(CompositorAccessibility, OnlyTheWindowThatIsReadIsWaitedFor) {
    move("a", {10, 20});
    move("b", {30, 40});
    EXPECT_EQ(position("b"), (CGPoint{30, 40}));
    EXPECT_EQ(asked(), Trace{"place b at (1310, 160) 400 x 300"});
}

TEST_F(CompositorAccessibility, AWindowThatIsInItsPlaceIsLeftAlone) {
    move("a", {100.2, 99.8});
    resize("a", {300, 200});
    endTurn();
    EXPECT_EQ(asked(), Trace{});
}

TEST_F(CompositorAccessibility, TheTableIsBroughtUpToDateOnceInATurnAndOnlyWhenItIsRead) {
    EXPECT_EQ(access.takeTrace(), Trace{});
    access.unreported = [this] { table.put("a", readyWindow(7, {{1280, 120}, {50, 60}})); };
    EXPECT_EQ(size("a"), (CGSize{50, 60}));
    static_cast<void>(size("b"));
    EXPECT_EQ(access.takeTrace(), Trace{"refresh"});
    endTurn();
    static_cast<void>(size("b"));
    EXPECT_EQ(access.takeTrace(), Trace{"refresh"});
}

TEST_F(CompositorAccessibility, AFullscreenWindowIsNotToBePlaced) {
    Window fullscreen = readyWindow(7);
    fullscreen.isFullscreen = true;
    table.put("a", fullscreen);
    EXPECT_EQ(move("a", {1, 2}), AXError::cannotComplete);
    EXPECT_EQ(resize("a", {1, 2}), AXError::cannotComplete);
    endTurn();
    EXPECT_EQ(asked(), Trace{});
}

TEST_F(CompositorAccessibility, AWindowThatBecomesFullscreenOrVanishesBeforeItIsPlacedStaysAsItIs) {
    move("a", {1, 2});
    move("b", {1, 2});
    table.remove("a");
    Window fullscreen = readyWindow(7);
    fullscreen.isFullscreen = true;
    table.put("b", fullscreen);
    EXPECT_EQ(failure("a"), AXError::invalidUIElement);
    EXPECT_EQ(move("a", {3, 4}), AXError::invalidUIElement);
    endTurn();
    EXPECT_EQ(asked(), Trace{});
}

TEST_F(CompositorAccessibility, HungProgramsTakeTheTurnsTimeOnceAndNoMore) {
    access.silent = {"a", "b"};
    const Instant begin = mainActor.now();
    move("a", {1, 2});
    EXPECT_EQ(failure("a"), AXError::cannotComplete);
    EXPECT_EQ(mainActor.now() - begin, milliseconds(250));
    EXPECT_EQ(failure("a"), AXError::cannotComplete) << "its frame is still not known";
    move("b", {1, 2});
    EXPECT_EQ(failure("b"), AXError::cannotComplete);
    resize("c", {5, 6});
    EXPECT_EQ(failure("c"), AXError::cannotComplete) << "nothing is known of what only was asked for";
    EXPECT_EQ(mainActor.now() - begin, milliseconds(250));
    endTurn();
    EXPECT_EQ(size("a"), (CGSize{300, 200})) << "a new turn has time again, and takes the reported frame";
}

TEST_F(CompositorAccessibility, AWindowThatTakesItsTimeIsWaitedForWithinTheTurns) {
    access.settling = milliseconds(120);
    move("a", {1, 2});
    EXPECT_EQ(position("a"), (CGPoint{1, 2}));
    move("a", {3, 4});
    EXPECT_EQ(position("a"), (CGPoint{3, 4}));
    move("a", {5, 6});
    EXPECT_EQ(position("a"), std::nullopt) << "10 ms are left";
}

TEST_F(CompositorAccessibility, WithoutAccessNothingIsReadOrWrittenAndThereIsNoTrust) {
    move("a", {1, 2});
    table.close();
    EXPECT_EQ(failure("a"), AXError::apiDisabled);
    EXPECT_EQ(move("a", {1, 2}), AXError::apiDisabled);
    EXPECT_EQ(accessibility.processIdentifier(element("a")), std::unexpected(AXError::apiDisabled));
    const AXUIElement application = accessibility.applicationElement(7);
    for (const std::string_view attribute : {AXAttribute::windows, AXAttribute::focusedWindow}) {
        EXPECT_EQ(accessibility.copyAttributeValue(application, attribute), std::unexpected(AXError::apiDisabled));
    }
    EXPECT_FALSE(accessibility.isProcessTrusted());
    endTurn();
    EXPECT_EQ(asked(), Trace{});

    open();
    EXPECT_TRUE(accessibility.isProcessTrusted());
    EXPECT_EQ(position("a"), (CGPoint{100, 100}));
}

TEST_F(CompositorAccessibility, OnlyWithoutAccessTheUserIsShownHowToGrantIt) {
    EXPECT_TRUE(accessibility.isProcessTrustedWithPrompt());
    EXPECT_EQ(accessibility.obstacle(), std::nullopt);
    table.close();
    EXPECT_EQ(accessibility.obstacle(), access.reason);
    EXPECT_EQ(asked(), Trace{});
    EXPECT_FALSE(accessibility.isProcessTrustedWithPrompt());
    EXPECT_EQ(asked(), Trace{"prompt"});
}

TEST_F(CompositorAccessibility, WithoutAnOutputThereIsNothingToCountFrom) {
    table.setOutputs({});
    EXPECT_EQ(failure("a"), AXError::cannotComplete);
    EXPECT_EQ(move("a", {1, 2}), AXError::cannotComplete);
}

TEST_F(CompositorAccessibility, AnApplicationsWindowsAreAllOfItsOwnOldestFirst) {
    Window panel = readyWindow(7);
    panel.kind = WindowKind::ignored;
    table.put("0", panel);
    EXPECT_EQ(read<std::vector<AXUIElement>>(accessibility.applicationElement(7), AXAttribute::windows),
              (std::vector{element("b"), element("a"), element("0")}));
    EXPECT_EQ(read<std::vector<AXUIElement>>(accessibility.applicationElement(9), AXAttribute::windows),
              std::vector<AXUIElement>{});
}

TEST_F(CompositorAccessibility, TheFocusedWindowIsTheOwnersAndNoFurniture) {
    const auto focused = [this](ProcessIdentifier process) {
        return accessibility.copyAttributeValue(accessibility.applicationElement(process), AXAttribute::focusedWindow);
    };
    Workspace workspace(turn);
    EXPECT_EQ(focused(8), AXValue(element("c")));
    EXPECT_EQ(focused(7), std::unexpected(AXError::noValue));
    EXPECT_EQ(workspace.frontmostApplication(), 8);

    Window panel = readyWindow(8);
    panel.kind = WindowKind::ignored;
    table.put("c", panel);
    EXPECT_EQ(focused(8), std::unexpected(AXError::noValue));

    const std::vector<std::optional<WindowIdentifier>> nobodies{std::nullopt, "gone"};
    for (const auto& nobody : nobodies) {
        table.setFocused(nobody);
        EXPECT_EQ(focused(8), std::unexpected(AXError::noValue));
        EXPECT_EQ(workspace.frontmostApplication(), std::nullopt);
    }
    table.setFocused("a");
    EXPECT_EQ(workspace.frontmostApplication(), 7);
    table.close();
    EXPECT_EQ(workspace.frontmostApplication(), std::nullopt);
}

TEST_F(CompositorAccessibility, ASubroleDistinguishesAStandardWindowFromTheOthers) {
    const std::vector<std::pair<WindowKind, std::string>> cases{{WindowKind::standard, "AXStandardWindow"},
                                                                {WindowKind::auxiliary, "AXDialog"},
                                                                {WindowKind::ignored, "AXUnknown"}};
    for (const auto& [kind, subrole] : cases) {
        Window window = readyWindow(7);
        window.kind = kind;
        table.put("a", window);
        EXPECT_EQ(read<std::string>(element("a"), AXAttribute::subrole), subrole);
    }
    EXPECT_EQ(read<std::string>(element("gone"), AXAttribute::subrole), std::nullopt);
}

TEST_F(CompositorAccessibility, ImplausibleValuesAreRefused) {
    const AXUIElement application = accessibility.applicationElement(7);
    EXPECT_EQ(accessibility.setAttributeValue(element("a"), AXAttribute::position, CGSize{1, 2}),
              AXError::illegalArgument);
    EXPECT_EQ(accessibility.setAttributeValue(element("a"), AXAttribute::size, true), AXError::illegalArgument);
    EXPECT_EQ(accessibility.setAttributeValue(element("a"), AXAttribute::subrole, std::string("x")),
              AXError::attributeUnsupported);
    EXPECT_EQ(accessibility.setAttributeValue(application, AXAttribute::position, CGPoint{1, 2}),
              AXError::attributeUnsupported);
    EXPECT_EQ(accessibility.copyAttributeValue(application, AXAttribute::enhancedUserInterface),
              std::unexpected(AXError::attributeUnsupported));
    EXPECT_EQ(accessibility.copyAttributeValue(element("a"), AXAttribute::windows),
              std::unexpected(AXError::attributeUnsupported));
    EXPECT_EQ(accessibility.processIdentifier(element("a")), 7);
    EXPECT_EQ(accessibility.processIdentifier(application), 7);
    EXPECT_EQ(accessibility.createValue(CGPoint{1, std::numeric_limits<double>::quiet_NaN()}), std::nullopt);
    EXPECT_EQ(accessibility.createValue(CGSize{std::numeric_limits<double>::infinity(), 1}), std::nullopt);
}

} // namespace
} // namespace platform::compositor
