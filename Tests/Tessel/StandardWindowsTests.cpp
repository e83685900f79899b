#include "Platform/Simulated/Desktop.h"
#include "Tessel/WindowMover.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tessel {
namespace {

using platform::AXError;
using platform::AXUIElement;
using platform::AXValue;
using platform::simulated::Application;
using platform::simulated::Window;
namespace AXAttribute = platform::AXAttribute;

class StandardWindows : public testing::Test {
protected:
    platform::simulated::Desktop desktop;
    Application& editor = desktop.applications.add({.process = 10});
};

TEST_F(StandardWindows, AreListedInTheOrderOfTheApplicationWithoutTheOthers) {
    Window& first = editor.addWindow({});
    editor.addWindow({.subrole = "AXDialog"});
    Window& third = editor.addWindow({});
    editor.addWindow({.subrole = ""});
    EXPECT_EQ(WindowMover::standardWindows(editor.element()), (std::vector{first.element(), third.element()}));
}

TEST_F(StandardWindows, AreThoseWhoseSubroleIsExactlyThat) {
    for (const char* subrole : {"AXStandardWindow ", "axstandardwindow", "AXStandardWindows", "AXStandard", ""}) {
        EXPECT_FALSE(WindowMover::isStandard(editor.addWindow({.subrole = subrole}).element())) << subrole;
    }
    EXPECT_TRUE(WindowMover::isStandard(editor.addWindow({.subrole = "AXStandardWindow"}).element()));
}

TEST_F(StandardWindows, LeaveOutAWindowWhoseSubroleCannotBeRead) {
    Window& silent = editor.addWindow({});
    Window& odd = editor.addWindow({});
    Window& closed = editor.addWindow({});
    Window& good = editor.addWindow({});
    silent.faults.failReads(AXAttribute::subrole, AXError::cannotComplete);
    odd.faults.answer(AXAttribute::subrole, true);
    editor.faults.answer(AXAttribute::windows,
                         std::vector{silent.element(), odd.element(), closed.element(), good.element()});
    closed.close();
    EXPECT_EQ(WindowMover::standardWindows(editor.element()), (std::vector{good.element()}));
    for (const Window* window : {&silent, &odd, &closed}) {
        EXPECT_FALSE(WindowMover::isStandard(window->element()));
    }
}

TEST_F(StandardWindows, AreNoneWhereTheListCannotBeRead) {
    Window& window = editor.addWindow({});
    editor.faults.failReads(AXAttribute::windows, AXError::cannotComplete);
    EXPECT_TRUE(WindowMover::standardWindows(editor.element()).empty());
    const std::vector<AXValue> values{true, std::string("windows"), corvid::CGPoint{}, corvid::CGSize{},
                                      window.element()};
    for (const AXValue& value : values) {
        editor.faults.answer(AXAttribute::windows, value);
        EXPECT_TRUE(WindowMover::standardWindows(editor.element()).empty()) << value.index();
    }
    editor.faults.answer(AXAttribute::windows, std::vector<AXUIElement>{});
    EXPECT_TRUE(WindowMover::standardWindows(editor.element()).empty());
}

TEST_F(StandardWindows, AreNoneOfAnApplicationThatHasEnded) {
    editor.addWindow({});
    desktop.applications.terminate(editor);
    EXPECT_TRUE(WindowMover::standardWindows(editor.element()).empty());
}

} // namespace
} // namespace tessel
