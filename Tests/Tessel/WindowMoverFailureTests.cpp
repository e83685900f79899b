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
#include <utility>
#include <vector>

namespace tessel {
namespace {

using corvid::CGPoint;
using corvid::CGRect;
using corvid::CGSize;
using platform::AXError;
using platform::AXUIElement;
using platform::AXValue;
using platform::simulated::Application;
using platform::simulated::AttributeFaults;
using platform::simulated::Desktop;
using platform::simulated::Window;
namespace AXAttribute = platform::AXAttribute;
using Lines = std::vector<std::string>;

/// The writes of a left half without failures, for a window of fixed size of an application with an enhanced user
/// interface.
const Lines everything{"write application 10 AXEnhancedUserInterface false",
                       "write window 1 AXSize (960, 1055)",
                       "write window 1 AXPosition (0, 25)",
                       "write window 1 AXSize (960, 1055)",
                       "write application 10 AXEnhancedUserInterface true",
                       "write window 1 AXPosition (0, 253)"};

/// Its reads and writes, by number.
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

Lines without(Lines lines, const Lines& left) {
    std::erase_if(lines, [&](const std::string& line) { return std::ranges::find(left, line) != left.end(); });
    return lines;
}

const Lines enhancedWrites{"write application 10 AXEnhancedUserInterface false",
                           "write application 10 AXEnhancedUserInterface true"};
const Lines correctionOnly{"write window 1 AXPosition (0, 253)"};

/// A desktop of its own for each try.
struct Scene {
    Scene() {
        window.sizes.isFixed = true;
        editor.enhancedUserInterface = true;
    }

    /// Its writes.
    Lines perform(WindowAction action = WindowAction::leftHalf) {
        desktop.trace.clear();
        WindowMover::perform(action, window.element());
        return desktop.trace.take("write");
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

/// The remaining operations when one fails.
Lines afterFailureOf(std::size_t operation) {
    switch (operation) {
    case readPosition:
    case readSize:
        return {};
    case readProcess:
    case readEnhanced:
        return without(everything, enhancedWrites);
    case readPositionAgain:
    case readSizeAgain:
        return without(everything, correctionOnly);
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

/// The remaining operations when the window is gone from one operation on. Writes to the missing window are tried.
Lines afterVanishingBefore(std::size_t operation) {
    if (operation == readProcess) {
        // The application of the window is not known any more.
        return without(without(everything, enhancedWrites), correctionOnly);
    }
    if (operation > readProcess && operation <= readSizeAgain) {
        return without(everything, correctionOnly);
    }
    return afterFailureOf(operation);
}

/// The same when the application is gone too.
Lines afterItsApplicationWentBefore(std::size_t operation) {
    const Lines left = afterVanishingBefore(operation);
    return operation == readEnhanced ? without(left, enhancedWrites) : left;
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
        EXPECT_EQ(scene.perform(), afterItsApplicationWentBefore(operation));
    }
}

TEST(MoverFailures, TheTrustMayBeTakenAwayAtAnyMoment) {
    for (std::size_t operation = 0; operation <= operationCount; ++operation) {
        SCOPED_TRACE(operation);
        Scene scene;
        scene.desktop.accessibility.interrupt(operation, [&] { scene.desktop.accessibility.isTrusted = false; });
        EXPECT_EQ(scene.perform(), afterItsApplicationWentBefore(operation));
    }
}

TEST(MoverFailures, WithoutScreensNothingIsWritten) {
    Scene scene;
    scene.desktop.screens.attach({});
    EXPECT_EQ(scene.perform(), Lines{});
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

TEST(MoverFailures, AFrameWithoutAPositionOrASizeIsNone) {
    const AXUIElement element = Scene().window.element();
    const std::vector<AXValue> neither{true, std::string("(100, 100)"), element, std::vector{element}};
    for (const auto& [attribute, other] :
         {std::pair{AXAttribute::position, AXValue(CGSize{100, 100})}, {AXAttribute::size, AXValue(CGPoint{8, 6})}}) {
        std::vector<AXValue> values = neither;
        values.push_back(other);
        for (const AXValue& value : values) {
            Scene scene;
            scene.window.faults.answer(attribute, value);
            EXPECT_EQ(WindowMover::frame(scene.window.element()), std::nullopt) << attribute << " " << value.index();
        }
    }
}

TEST(MoverFailures, NothingIsWrittenToAWindowWhoseFrameIsOfTheWrongType) {
    Scene scene;
    scene.window.faults.answer(AXAttribute::size, std::string("(800, 600)"));
    EXPECT_EQ(scene.perform(), Lines{});
}

TEST(MoverFailures, AFrameOfTheWrongTypeAfterwardsIsNotCorrected) {
    Scene scene;
    scene.desktop.accessibility.interrupt(readPositionAgain,
                                          [&] { scene.window.faults.answer(AXAttribute::size, CGPoint{1, 2}); });
    EXPECT_EQ(scene.perform(), without(everything, correctionOnly));
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
        const std::size_t line = boxing < 3 ? 1 + boxing : 5;
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
