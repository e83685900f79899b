#include "Tests/Tessel/AppRulesFixture.h"

#include <chrono>
#include <cstddef>

namespace tessel {
namespace {

using namespace std::chrono_literals;
using platform::AXError;
namespace AXAttribute = platform::AXAttribute;

class AppRulesFailures : public AppRulesTest {
protected:
    AppRulesFailures() {
        watcher->start();
        desktop.mainActor.run();
        desktop.trace.clear();
    }

    Application& editor = launchEditor();
};

TEST_F(AppRulesFailures, LeaveAWindowAloneWhoseSubroleOrProcessCannotBeRead) {
    for (const auto attribute : {AXAttribute::subrole, platform::simulated::AttributeFaults::process}) {
        Window& window = editor.openWindow();
        window.faults.failReads(attribute, AXError::cannotComplete);
        desktop.mainActor.advance(1s);
        EXPECT_EQ(window.frame(), natural) << attribute;
        window.close();
    }
    editor.openWindow().close();
    desktop.mainActor.advance(1s);
    EXPECT_EQ(desktop.trace.take("write"), Lines{});
}

TEST_F(AppRulesFailures, CountAnApplicationThatDoesNotListItsWindowsAsHavingNone) {
    editor.faults.failReads(AXAttribute::windows, AXError::cannotComplete);
    Window& window = editor.openWindow();
    desktop.mainActor.run();
    EXPECT_EQ(window.frame(), maximized) << "a window that has just been created is there all the same";
}

TEST_F(AppRulesFailures, LeaveAWindowAloneWhoseApplicationIsGone) {
    Window& window = editor.openWindow();
    desktop.accessibility.interrupt(desktop.accessibility.operationCount() + 4,
                                    [this] { desktop.applications.terminate(editor); });
    desktop.mainActor.advance(1s);
    EXPECT_EQ(desktop.trace.take("write"), Lines{});
    EXPECT_EQ(window.frame(), natural);
}

/// The worst result of a failed step is a window that does not move.
TEST_F(AppRulesFailures, AreSilentAtEveryStep) {
    std::size_t operations = 0;
    {
        const std::size_t before = desktop.accessibility.operationCount();
        editor.openWindow();
        desktop.mainActor.advance(1s);
        operations = desktop.accessibility.operationCount() - before;
        for (Window* open : editor.windows()) {
            open->close();
        }
    }
    ASSERT_GT(operations, 10U);
    for (std::size_t step = 0; step < operations; ++step) {
        for (const AXError error : {AXError::cannotComplete, AXError::invalidUIElement}) {
            desktop.accessibility.failOperation(desktop.accessibility.operationCount() + step, error);
            Window& window = editor.openWindow();
            desktop.mainActor.advance(1s);
            const corvid::CGRect frame = window.frame();
            EXPECT_TRUE(frame == natural || frame == maximized || frame.size == maximized.size ||
                        frame.origin == maximized.origin)
                << step;
            window.close();
            desktop.mainActor.advance(1s);
        }
        desktop.accessibility.interrupt(desktop.accessibility.operationCount() + step, [this] {
            for (Window* open : editor.windows()) {
                open->close();
            }
        });
        editor.openWindow();
        desktop.mainActor.advance(1s);
    }
    EXPECT_EQ(observerCount(), 1U);
}

} // namespace
} // namespace tessel
