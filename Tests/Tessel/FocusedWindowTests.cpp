#include "Platform/Simulated/Desktop.h"
#include "Tessel/WindowMover.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace tessel {
namespace {

using platform::AXAttribute::focusedWindow;
using platform::simulated::Application;
using platform::simulated::Window;
using Lines = std::vector<std::string>;

class FocusedWindow : public testing::Test {
protected:
    void SetUp() override { desktop.applications.frontmost = &editor; }

    platform::simulated::Desktop desktop;
    Application& editor = desktop.applications.add({.process = 10});
    Window& window = editor.addWindow({});
};

TEST_F(FocusedWindow, IsThatOfTheFrontmostApplication) {
    Application& other = desktop.applications.add({.process = 11});
    other.addWindow({});
    Window& second = editor.addWindow({});
    editor.focusedWindow = &second;
    EXPECT_EQ(WindowMover::focusedWindow(), second.element());
}

TEST_F(FocusedWindow, IsNoneWhileNoApplicationIsFrontmost) {
    desktop.applications.frontmost = nullptr;
    EXPECT_EQ(WindowMover::focusedWindow(), std::nullopt);
}

TEST_F(FocusedWindow, IsNoneWhileThisProgramIsFrontmostWhichIsNotEvenAsked) {
    Application& ourselves = desktop.applications.add({.process = platform::simulated::ProcessInfo::ownProcess});
    ourselves.addWindow({});
    desktop.applications.frontmost = &ourselves;
    EXPECT_EQ(WindowMover::focusedWindow(), std::nullopt);
    EXPECT_EQ(desktop.trace.take("read application"), Lines{});
}

TEST_F(FocusedWindow, IsNoneWhereItCannotBeRead) {
    for (const auto error : {platform::AXError::failure, platform::AXError::cannotComplete, platform::AXError::noValue,
                             platform::AXError::attributeUnsupported, platform::AXError::apiDisabled}) {
        editor.faults.failReads(focusedWindow, error);
        EXPECT_EQ(WindowMover::focusedWindow(), std::nullopt);
    }
}

TEST_F(FocusedWindow, IsNoneWhereItsValueIsNotAnElement) {
    const std::vector<platform::AXValue> values{true, std::string("AXWindow"), corvid::CGPoint{1, 2},
                                                corvid::CGSize{1, 2}, std::vector{window.element()}};
    for (const platform::AXValue& value : values) {
        editor.faults.answer(focusedWindow, value);
        EXPECT_EQ(WindowMover::focusedWindow(), std::nullopt) << value.index();
    }
}

TEST_F(FocusedWindow, IsNoneWithoutTrust) {
    desktop.accessibility.isTrusted = false;
    EXPECT_EQ(WindowMover::focusedWindow(), std::nullopt);
}

TEST_F(FocusedWindow, IsNoneWhenTheApplicationEndsInBetween) {
    desktop.accessibility.interrupt(0, [&] { desktop.applications.terminate(editor); });
    EXPECT_EQ(WindowMover::focusedWindow(), std::nullopt);
}

} // namespace
} // namespace tessel
