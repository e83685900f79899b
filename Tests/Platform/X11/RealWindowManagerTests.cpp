#include "FollowedDesktop.h"
#include "Openbox.h"
#include "Platform/X11/Element.h"
#include "Platform/X11/WindowManager.h"

#include <gtest/gtest.h>

namespace platform::x11 {
namespace {

using Reports = std::vector<std::string>;

/// Every readable attribute of a window, and the windows of its application.
std::vector<AXValue> everything(platform::Accessibility& accessibility, const AXUIElement& window) {
    std::vector<AXValue> values;
    for (const std::string_view attribute : {AXAttribute::subrole, AXAttribute::position, AXAttribute::size}) {
        if (const auto value = accessibility.copyAttributeValue(window, attribute)) {
            values.push_back(*value);
        }
    }
    const auto process = accessibility.processIdentifier(window);
    const auto windows =
        accessibility.copyAttributeValue(accessibility.applicationElement(process.value_or(0)), AXAttribute::windows);
    if (windows) {
        values.push_back(*windows);
    }
    return values;
}

class RealWindowManagerTest : public testing::Test {
protected:
    FollowedDesktop followed;
    std::unique_ptr<Openbox> manager;

    void SetUp() override {
        if (!Openbox::isInstalled()) {
            GTEST_SKIP() << "openbox is not installed";
        }
        startManager("--sm-disable");
    }

    /// Starts another one, and waits until it is the window manager.
    void startManager(const char* option) {
        const xcb_window_t former = inCharge();
        auto next = std::make_unique<Openbox>(option);
        ASSERT_TRUE(followed.runUntil([&] { return inCharge() != XCB_WINDOW_NONE && inCharge() != former; }));
        manager = std::move(next);
        // It announces itself before it listens.
        Fence fence(followed.testClient.connection());
        ASSERT_TRUE(followed.runUntil([&] {
            followed.testClient.connection().deadline().begin();
            return fence.wait();
        }));
    }

    /// The check window of the present one. The selection's owner does not count: openbox owns it before it redirects
    /// the requests of windows, and does not manage a window that is mapped in between.
    xcb_window_t inCharge() {
        followed.testClient.connection().deadline().begin();
        const WindowManager present = readWindowManager(followed.testClient.connection());
        return present.capabilities.announcesItself ? present.window : xcb_window_t{XCB_WINDOW_NONE};
    }

    /// The program's next window, shown.
    xcb_window_t show(const ClientProcess& client, const std::string& className) {
        const xcb_window_t window = followed.makeWindow(client, className);
        xcb_map_window(followed.testClient.connection().raw(), window);
        followed.testClient.connection().flush();
        return window;
    }

    [[nodiscard]] bool isReported(std::size_t count) {
        return followed.runUntil([&] { return followed.reported.size() >= count; });
    }
};

TEST_F(RealWindowManagerTest, ALaunchAndANewWindowAreReportedWhenTheirFramesAreFinal) {
    followed.start();
    const ClientProcess editor(followed.server.display());
    platform::Accessibility& accessibility = followed.desktop->parts().accessibility;
    std::vector<AXValue> atLaunch;
    xcb_window_t first = XCB_WINDOW_NONE;
    const auto token = followed.applications().notificationCenter()->addObserver(
        WorkspaceNotification::didLaunchApplication, [&](const Notification&) {
            atLaunch = everything(accessibility, AXUIElement(std::make_shared<const WindowElement>(first)));
        });
    first = show(editor, "Editor");
    ASSERT_TRUE(isReported(1));
    followed.applications().notificationCenter()->removeObserver(token);
    followed.drain();
    ASSERT_EQ(atLaunch.size(), 4U);
    EXPECT_EQ(atLaunch, everything(accessibility, AXUIElement(std::make_shared<const WindowElement>(first))));

    struct Witness {
        platform::Accessibility& accessibility;
        std::vector<AXUIElement> windows;
        std::vector<AXValue> atCreation;
    } witness{accessibility, {}, {}};

    const auto observer = followed.desktop->parts().accessibilityObservers.createObserver(
        editor.process(), [](AXObserver&, const AXUIElement& element, std::string_view, void* context) {
            auto& seen = *static_cast<Witness*>(context);
            seen.windows.push_back(element);
            seen.atCreation = everything(seen.accessibility, element);
        });
    ASSERT_TRUE(observer.has_value());
    ASSERT_EQ((*observer)->addNotification(accessibility.applicationElement(editor.process()),
                                           AXNotification::windowCreated, &witness),
              AXError::success);
    const xcb_window_t second = show(editor, "Editor");
    ASSERT_TRUE(followed.runUntil([&] { return !witness.windows.empty(); }));
    followed.drain();
    ASSERT_EQ(witness.windows.size(), 1U);
    EXPECT_EQ(witness.windows.front(), AXUIElement(std::make_shared<const WindowElement>(second)));
    ASSERT_EQ(witness.atCreation.size(), 4U);
    EXPECT_EQ(witness.atCreation, everything(accessibility, witness.windows.front()));
}

TEST_F(RealWindowManagerTest, AnotherWindowManagerTakesOverAndNothingIsReportedAgain) {
    ClientProcess before(followed.server.display());
    show(before, "Browser");
    ASSERT_TRUE(followed.runUntil([&] {
        followed.testClient.connection().deadline().begin();
        return RootFactsRequest(followed.testClient.connection())
                   .read(followed.testClient.connection())
                   ->clients.size() == 1;
    }));
    followed.start();
    ClientProcess editor(followed.server.display());
    show(editor, "Editor");
    show(editor, "Editor");
    ASSERT_TRUE(isReported(1));
    startManager("--replace");
    ClientProcess terminal(followed.server.display());
    show(terminal, "Terminal");
    ASSERT_TRUE(isReported(2));
    EXPECT_EQ(followed.reported, (Reports{"launch editor", "launch terminal"}));

    // A restart looks like a crash without a window manager for some time.
    manager.reset();
    followed.drain();
    startManager("--sm-disable");
    editor.end();
    ASSERT_TRUE(isReported(3));
    before.end();
    ASSERT_TRUE(isReported(4));
    EXPECT_EQ(followed.reported,
              (Reports{"launch editor", "launch terminal", "terminate editor", "terminate browser"}));
}

} // namespace
} // namespace platform::x11
