#include "Platform/Simulated/Desktop.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace platform::simulated {
namespace {

using corvid::CGPoint;
using corvid::CGSize;
using Lines = std::vector<std::string>;
using Answer = std::expected<AXValue, AXError>;

class SimulatedAccessibility : public testing::Test {
protected:
    Answer read(const AXUIElement& element, std::string_view attribute) {
        return desktop.accessibility.copyAttributeValue(element, attribute);
    }

    AXError write(const AXUIElement& element, std::string_view attribute, const AXValue& value) {
        return desktop.accessibility.setAttributeValue(element, attribute, value);
    }

    Desktop desktop;
    Application& editor = desktop.applications.add({.process = 10});
    Window& window = editor.addWindow({.frame = {{10, 20}, {300, 200}}});
};

TEST_F(SimulatedAccessibility, IsTheOneOfTheTableInForce) {
    EXPECT_EQ(&current().desktop.accessibility, &desktop.accessibility);
    {
        Desktop other;
        EXPECT_EQ(&current().desktop.accessibility, &other.accessibility);
    }
    EXPECT_EQ(&current().desktop.accessibility, &desktop.accessibility);
}

TEST_F(SimulatedAccessibility, ReadsTheFocusedWindowAndTheWindowsOfAnApplication) {
    Window& second = editor.addWindow({});
    const AXUIElement application = desktop.accessibility.applicationElement(10);
    EXPECT_EQ(read(application, AXAttribute::focusedWindow), Answer(window.element()));
    EXPECT_EQ(read(application, AXAttribute::windows),
              Answer(std::vector<AXUIElement>{window.element(), second.element()}));
    EXPECT_EQ(read(application, AXAttribute::position), Answer(std::unexpected(AXError::attributeUnsupported)));
    editor.focusedWindow = nullptr;
    EXPECT_EQ(read(application, AXAttribute::focusedWindow), Answer(std::unexpected(AXError::noValue)));
}

TEST_F(SimulatedAccessibility, ReadsAndWritesTheFrameOfAWindow) {
    EXPECT_EQ(read(window.element(), AXAttribute::subrole), Answer(std::string("AXStandardWindow")));
    EXPECT_EQ(write(window.element(), AXAttribute::position, CGPoint{1, 2}), AXError::success);
    EXPECT_EQ(write(window.element(), AXAttribute::size, CGSize{3, 4}), AXError::success);
    EXPECT_EQ(read(window.element(), AXAttribute::position), Answer(CGPoint{1, 2}));
    EXPECT_EQ(read(window.element(), AXAttribute::size), Answer(CGSize{3, 4}));
    EXPECT_EQ(write(window.element(), AXAttribute::size, CGPoint{3, 4}), AXError::illegalArgument);
    EXPECT_EQ(write(window.element(), AXAttribute::subrole, std::string()), AXError::attributeUnsupported);
}

TEST_F(SimulatedAccessibility, RecordsEveryReadAndWriteInOrder) {
    (void)read(editor.element(), AXAttribute::focusedWindow);
    (void)read(window.element(), AXAttribute::position);
    (void)desktop.accessibility.processIdentifier(window.element());
    write(window.element(), AXAttribute::size, CGSize{960, 1080.5});
    write(window.element(), AXAttribute::position, CGPoint{-1, 0});
    write(editor.element(), AXAttribute::enhancedUserInterface, false);
    EXPECT_EQ(desktop.trace.take(),
              (Lines{"read application 10 AXFocusedWindow", "read window 1 AXPosition", "read window 1 process",
                     "write window 1 AXSize (960, 1080.5)", "write window 1 AXPosition (-1, 0)",
                     "write application 10 AXEnhancedUserInterface false"}));
    EXPECT_EQ(desktop.accessibility.operationCount(), 6U);
    EXPECT_EQ(desktop.trace.lines(), Lines{});
}

TEST_F(SimulatedAccessibility, TheEnhancedUserInterfaceCanBeMissingAndOfAnyType) {
    EXPECT_EQ(read(editor.element(), AXAttribute::enhancedUserInterface),
              Answer(std::unexpected(AXError::attributeUnsupported)));
    EXPECT_EQ(write(editor.element(), AXAttribute::enhancedUserInterface, true), AXError::attributeUnsupported);
    editor.enhancedUserInterface = std::string("yes");
    EXPECT_EQ(read(editor.element(), AXAttribute::enhancedUserInterface), Answer(std::string("yes")));
    EXPECT_EQ(write(editor.element(), AXAttribute::enhancedUserInterface, true), AXError::success);
    EXPECT_EQ(editor.enhancedUserInterface, AXValue(true));
}

TEST_F(SimulatedAccessibility, AClosedWindowAndAnEndedApplicationAreInvalid) {
    window.close();
    EXPECT_EQ(read(window.element(), AXAttribute::position), Answer(std::unexpected(AXError::invalidUIElement)));
    EXPECT_EQ(write(window.element(), AXAttribute::position, CGPoint{}), AXError::invalidUIElement);
    EXPECT_EQ(desktop.accessibility.processIdentifier(window.element()),
              (std::expected<ProcessIdentifier, AXError>(std::unexpected(AXError::invalidUIElement))));
    EXPECT_EQ(read(editor.element(), AXAttribute::windows), Answer(std::vector<AXUIElement>{}));
    desktop.applications.terminate(editor);
    EXPECT_EQ(read(editor.element(), AXAttribute::windows), Answer(std::unexpected(AXError::invalidUIElement)));
}

TEST_F(SimulatedAccessibility, AttributesFailAndLieOnRequest) {
    window.faults.failReads(AXAttribute::position, AXError::cannotComplete);
    window.faults.answer(AXAttribute::size, std::string("large"));
    window.faults.failWrites(AXAttribute::size, AXError::failure);
    EXPECT_EQ(read(window.element(), AXAttribute::position), Answer(std::unexpected(AXError::cannotComplete)));
    EXPECT_EQ(read(window.element(), AXAttribute::size), Answer(std::string("large")));
    EXPECT_EQ(write(window.element(), AXAttribute::size, CGSize{1, 1}), AXError::failure);
    EXPECT_EQ(write(window.element(), AXAttribute::position, CGPoint{1, 1}), AXError::success);
    window.faults.clear();
    EXPECT_EQ(read(window.element(), AXAttribute::position), Answer(CGPoint{1, 1}));
    EXPECT_EQ(read(window.element(), AXAttribute::size), Answer(CGSize{300, 200}));
}

TEST_F(SimulatedAccessibility, TheProcessOfAWindowCanBeUnknown) {
    using Process = std::expected<ProcessIdentifier, AXError>;
    EXPECT_EQ(desktop.accessibility.processIdentifier(window.element()), Process(10));
    EXPECT_EQ(desktop.accessibility.processIdentifier(editor.element()), Process(10));
    window.faults.failReads(AttributeFaults::process, AXError::failure);
    EXPECT_EQ(desktop.accessibility.processIdentifier(window.element()), Process(std::unexpected(AXError::failure)));
}

TEST_F(SimulatedAccessibility, SomethingCanHappenJustBeforeAnOperation) {
    desktop.accessibility.interrupt(1, [&] { window.close(); });
    desktop.accessibility.failOperation(2, AXError::failure);
    EXPECT_TRUE(read(window.element(), AXAttribute::position));
    EXPECT_EQ(read(window.element(), AXAttribute::position), Answer(std::unexpected(AXError::invalidUIElement)));
    EXPECT_EQ(read(editor.element(), AXAttribute::windows), Answer(std::unexpected(AXError::failure)));
    EXPECT_TRUE(read(editor.element(), AXAttribute::windows));
}

TEST_F(SimulatedAccessibility, NothingWorksWithoutTrust) {
    desktop.accessibility.isTrusted = false;
    EXPECT_EQ(read(window.element(), AXAttribute::position), Answer(std::unexpected(AXError::apiDisabled)));
    EXPECT_EQ(write(window.element(), AXAttribute::position, CGPoint{}), AXError::apiDisabled);
    EXPECT_FALSE(desktop.accessibility.isProcessTrusted());
    EXPECT_EQ(desktop.accessibility.promptCount(), 0);
    EXPECT_FALSE(desktop.accessibility.isProcessTrustedWithPrompt());
    EXPECT_EQ(desktop.accessibility.promptCount(), 1);
    desktop.accessibility.isTrusted = true;
    EXPECT_TRUE(desktop.accessibility.isProcessTrustedWithPrompt());
    EXPECT_EQ(desktop.accessibility.promptCount(), 1);
}

TEST_F(SimulatedAccessibility, BoxesFiniteValuesUnlessAFailureIsSet) {
    auto& accessibility = desktop.accessibility;
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    accessibility.failBoxing(2);
    EXPECT_EQ(accessibility.createValue(CGPoint{1, 2}), AXValue(CGPoint{1, 2}));
    EXPECT_EQ(accessibility.createValue(CGSize{1, 2}), AXValue(CGSize{1, 2}));
    EXPECT_EQ(accessibility.createValue(CGSize{1, 2}), std::nullopt);
    EXPECT_EQ(accessibility.createValue(CGPoint{nan, 2}), std::nullopt);
    EXPECT_EQ(accessibility.createValue(CGSize{1, std::numeric_limits<double>::infinity()}), std::nullopt);
    accessibility.failsToBoxPoints = true;
    EXPECT_EQ(accessibility.createValue(CGPoint{1, 2}), std::nullopt);
    EXPECT_TRUE(accessibility.createValue(CGSize{1, 2}));
    accessibility.failsToBoxSizes = true;
    EXPECT_EQ(accessibility.createValue(CGSize{1, 2}), std::nullopt);
}

TEST_F(SimulatedAccessibility, ElementsAreEqualWhenTheyNameTheSame) {
    class Foreign final : public AXElementStorage {
        [[nodiscard]] bool isEqual(const AXElementStorage& other) const override { return this == &other; }
    };
    EXPECT_EQ(window.element(), window.element());
    EXPECT_NE(window.element(), editor.addWindow({}).element());
    EXPECT_NE(window.element(), editor.element());
    EXPECT_EQ(editor.element(), desktop.accessibility.applicationElement(10));
    const AXUIElement foreign(std::make_shared<Foreign>());
    EXPECT_NE(window.element(), foreign);
    EXPECT_EQ(read(foreign, AXAttribute::position), Answer(std::unexpected(AXError::illegalArgument)));
}

} // namespace
} // namespace platform::simulated
