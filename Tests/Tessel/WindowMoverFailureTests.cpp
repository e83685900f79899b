#include "Platform/Simulated/Desktop.h"
#include "Tessel/WindowMover.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace tessel {
namespace {

using corvid::CGPoint;
using corvid::CGRect;
using corvid::CGSize;
using platform::AXError;
using platform::AXValue;
using platform::simulated::Application;
using platform::simulated::AttributeFaults;
using platform::simulated::Desktop;
using platform::simulated::Window;
namespace AXAttribute = platform::AXAttribute;
using Lines = std::vector<std::string>;

/// What a left half writes and reads when nothing goes wrong, for a window of fixed size of an application with an
/// enhanced user interface. The line about the screens is no operation of the accessibility interface.
const Lines everything{"read window 1 AXPosition",
                       "read window 1 AXSize",
                       "read screens",
                       "read window 1 process",
                       "read application 10 AXEnhancedUserInterface",
                       "write application 10 AXEnhancedUserInterface false",
                       "write window 1 AXSize (960, 1055)",
                       "write window 1 AXPosition (0, 25)",
                       "write window 1 AXSize (960, 1055)",
                       "write application 10 AXEnhancedUserInterface true",
                       "read window 1 AXPosition",
                       "read window 1 AXSize",
                       "write window 1 AXPosition (0, 253)"};

/// The operations of the accessibility interface among them, by number.
enum Operation : std::size_t {
    readPosition,
    readSize,
    readProcess,
    readEnhanced,
    switchOff,
    firstSize,
    position,
    secondSize,
    switchOn,
    readPositionAgain,
    readSizeAgain,
    correction,
    operationCount
};

Lines firstLines(std::size_t count) {
    return {everything.begin(), everything.begin() + static_cast<long>(count)};
}

Lines without(Lines lines, const std::vector<std::string>& left) {
    std::erase_if(lines, [&](const std::string& line) { return std::ranges::find(left, line) != left.end(); });
    return lines;
}

const Lines enhancedWrites{"write application 10 AXEnhancedUserInterface false",
                           "write application 10 AXEnhancedUserInterface true"};
const Lines correctionOnly{"write window 1 AXPosition (0, 253)"};
const Lines afterFirstReading{"read window 1 AXSize", "write window 1 AXPosition (0, 253)"};

/// A desktop of its own for each try.
struct Scene {
    Scene() {
        window.sizes.isFixed = true;
        editor.enhancedUserInterface = true;
    }

    Lines perform(WindowAction action = WindowAction::leftHalf) {
        desktop.trace.clear();
        WindowMover::perform(action, window.element());
        return desktop.trace.take();
    }

    Desktop desktop;
    Application& editor = desktop.applications.add({.process = 10});
    Window& window = editor.addWindow({.frame = {{100, 100}, {800, 600}}});
};

TEST(MoverFailures, WithoutAnyEverythingIsDone) {
    Scene scene;
    EXPECT_EQ(scene.perform(), everything);
    EXPECT_EQ(scene.desktop.accessibility.operationCount(), operationCount);
}

/// What is left of everything when one operation fails.
Lines afterFailureOf(std::size_t operation) {
    switch (operation) {
    case readPosition:
        return firstLines(1);
    case readSize:
        return firstLines(2);
    case readProcess:
        return without(everything,
                       {"read application 10 AXEnhancedUserInterface", enhancedWrites[0], enhancedWrites[1]});
    case readEnhanced:
        return without(everything, enhancedWrites);
    case readPositionAgain:
        return firstLines(11);
    case readSizeAgain:
        return firstLines(12);
    default:
        return everything;
    }
}

TEST(MoverFailures, AnOperationThatFailsStopsOnlyWhatNeedsIt) {
    for (const AXError error : {AXError::failure, AXError::invalidUIElement, AXError::cannotComplete,
                                AXError::attributeUnsupported, AXError::apiDisabled, AXError::noValue}) {
        for (std::size_t operation = 0; operation < operationCount; ++operation) {
            SCOPED_TRACE(operation);
            Scene scene;
            scene.desktop.accessibility.failOperation(operation, error);
            EXPECT_EQ(scene.perform(), afterFailureOf(operation));
            const bool wasSwitchedOnAgain = operation != switchOn;
            EXPECT_EQ(scene.editor.enhancedUserInterface, AXValue(wasSwitchedOnAgain));
        }
    }
}

/// What is left of everything when the window is gone from one operation on.
Lines afterVanishingBefore(std::size_t operation) {
    if (operation <= readProcess) {
        return operation < readProcess
                   ? afterFailureOf(operation)
                   // Its process is unknown, so that its application is not asked; the writes are tried.
                   : without(without(firstLines(11), enhancedWrites), {"read application 10 AXEnhancedUserInterface"});
    }
    if (operation <= readPositionAgain) {
        return firstLines(11);
    }
    return operation == readSizeAgain ? firstLines(12) : everything;
}

TEST(MoverFailures, AWindowMayVanishAtAnyMoment) {
    for (std::size_t operation = 0; operation <= operationCount; ++operation) {
        SCOPED_TRACE(operation);
        Scene scene;
        scene.desktop.accessibility.interrupt(operation, [&] { scene.window.close(); });
        EXPECT_EQ(scene.perform(), afterVanishingBefore(operation));
        EXPECT_EQ(scene.editor.enhancedUserInterface, AXValue(true)) << "restored, whatever became of the window";
    }
}

TEST(MoverFailures, AnApplicationMayEndAtAnyMoment) {
    for (std::size_t operation = 0; operation <= operationCount; ++operation) {
        SCOPED_TRACE(operation);
        Scene scene;
        scene.desktop.accessibility.interrupt(operation, [&] { scene.desktop.applications.terminate(scene.editor); });
        const Lines expected =
            operation == readEnhanced ? without(firstLines(11), enhancedWrites) : afterVanishingBefore(operation);
        EXPECT_EQ(scene.perform(), expected);
    }
}

TEST(MoverFailures, TheTrustMayBeTakenAwayAtAnyMoment) {
    for (std::size_t operation = 0; operation <= operationCount; ++operation) {
        SCOPED_TRACE(operation);
        Scene scene;
        scene.desktop.accessibility.interrupt(operation, [&] { scene.desktop.accessibility.isTrusted = false; });
        const Lines expected =
            operation == readEnhanced ? without(firstLines(11), enhancedWrites) : afterVanishingBefore(operation);
        EXPECT_EQ(scene.perform(), expected);
    }
}

TEST(MoverFailures, WithoutScreensNothingIsWritten) {
    Scene scene;
    scene.desktop.screens.attach({});
    EXPECT_EQ(scene.perform(), firstLines(3));
    EXPECT_EQ(scene.window.frame(), (CGRect{{100, 100}, {800, 600}}));
}

TEST(MoverFailures, RefusedWritesAreNotNoticedUntilTheFrameIsReadAgain) {
    Scene scene;
    scene.window.sizes.isFixed = false;
    scene.window.faults.failWrites(AXAttribute::size, AXError::cannotComplete);
    scene.window.faults.failWrites(AXAttribute::position, AXError::cannotComplete);
    EXPECT_EQ(scene.perform(), everything);
    EXPECT_EQ(scene.window.frame(), (CGRect{{100, 100}, {800, 600}}));
}

TEST(MoverFailures, AFrameWithoutAPositionIsNone) {
    Scene scene;
    const auto frameWithPosition = [&](const AXValue& value) {
        scene.window.faults.answer(AXAttribute::position, value);
        scene.desktop.trace.clear();
        return WindowMover::frame(scene.window.element());
    };
    // What is no boxed number at all is not followed by a second reading; a size is told from a point only afterwards.
    const std::vector<AXValue> unboxed{true, std::string("(100, 100)"), scene.window.element(),
                                       std::vector{scene.window.element()}};
    for (const AXValue& value : unboxed) {
        EXPECT_EQ(frameWithPosition(value), std::nullopt);
        EXPECT_EQ(scene.desktop.trace.take(), firstLines(1)) << value.index();
    }
    EXPECT_EQ(frameWithPosition(CGSize{100, 100}), std::nullopt);
    EXPECT_EQ(scene.desktop.trace.take(), firstLines(2));
}

TEST(MoverFailures, AFrameWithoutASizeIsNone) {
    Scene scene;
    const std::vector<AXValue> values{true, std::string("(800, 600)"), scene.window.element(),
                                      std::vector{scene.window.element()}, CGPoint{800, 600}};
    for (const AXValue& value : values) {
        scene.window.faults.answer(AXAttribute::size, value);
        scene.desktop.trace.clear();
        EXPECT_EQ(WindowMover::frame(scene.window.element()), std::nullopt);
        EXPECT_EQ(scene.desktop.trace.take(), firstLines(2)) << value.index();
    }
}

TEST(MoverFailures, NothingIsWrittenToAWindowWhoseFrameIsOfTheWrongType) {
    Scene scene;
    scene.window.faults.answer(AXAttribute::size, std::string("(800, 600)"));
    EXPECT_EQ(scene.perform(), firstLines(2));
}

TEST(MoverFailures, AFrameOfTheWrongTypeAfterwardsIsNotCorrected) {
    Scene scene;
    scene.desktop.accessibility.interrupt(readPositionAgain,
                                          [&] { scene.window.faults.answer(AXAttribute::size, CGPoint{1, 2}); });
    EXPECT_EQ(scene.perform(), firstLines(12));
}

TEST(MoverFailures, AnUnknownProcessLeavesTheEnhancedUserInterfaceAlone) {
    Scene scene;
    scene.window.faults.failReads(AttributeFaults::process, AXError::failure);
    EXPECT_EQ(scene.perform(), afterFailureOf(readProcess));
}

TEST(MoverFailures, AStepThatCannotBeBoxedIsLeftOutAndTheNextIsWritten) {
    const std::vector<std::string> steps{"size", "position", "size", "correction"};
    for (std::size_t boxing = 0; boxing < steps.size(); ++boxing) {
        SCOPED_TRACE(boxing);
        Scene scene;
        scene.desktop.accessibility.failBoxing(boxing);
        Lines expected = everything;
        const std::size_t line = boxing < 3 ? 6 + boxing : 12;
        expected.erase(expected.begin() + static_cast<long>(line));
        EXPECT_EQ(scene.perform(), expected);
    }
}

TEST(MoverFailures, WithoutBoxedSizesThePositionIsStillWritten) {
    Scene scene;
    scene.desktop.accessibility.failsToBoxSizes = true;
    EXPECT_EQ(scene.perform(), without(everything, {"write window 1 AXSize (960, 1055)"}));
}

TEST(MoverFailures, WithoutBoxedPointsTheSizesAreStillWritten) {
    Scene scene;
    scene.desktop.accessibility.failsToBoxPoints = true;
    EXPECT_EQ(scene.perform(), without(everything, {"write window 1 AXPosition (0, 25)", correctionOnly.front()}));
}

TEST(MoverFailures, AFrameThatIsNotANumberIsNotSentOnToTheWindow) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    Scene scene;
    scene.window.moveTo({{nan, 100}, {nan, 600}});
    const Lines lines = scene.perform(WindowAction::center);
    EXPECT_TRUE(std::ranges::none_of(lines, [](const std::string& line) { return line.contains("nan"); }));
}

TEST(MoverFailuresDeathTest, CalledOnAnotherThreadStopsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    Scene scene;
    const auto stops = "^Tessel/WindowMover:[0-9]+: Fatal error: Incorrect actor executor assumption; "
                       "Expected same executor as MainActor\n$";
    const auto elsewhere = [](auto work) { std::thread(work).join(); };
    EXPECT_DEATH(elsewhere([] { (void)WindowMover::focusedWindow(); }), stops);
    EXPECT_DEATH(elsewhere([&] { WindowMover::perform(WindowAction::center, scene.window.element()); }), stops);
    EXPECT_DEATH(elsewhere([&] { (void)WindowMover::frame(scene.window.element()); }), stops);
    EXPECT_DEATH(elsewhere([&] { (void)WindowMover::standardWindows(scene.editor.element()); }), stops);
    EXPECT_DEATH(elsewhere([&] { (void)WindowMover::isStandard(scene.window.element()); }), stops);
}

} // namespace
} // namespace tessel
