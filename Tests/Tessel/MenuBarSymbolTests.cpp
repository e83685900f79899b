#include "CorvidKit/HotKeys.h"
#include "CorvidKit/MenuBarController.h"
#include "Platform/Simulated/Desktop.h"
#include "Platform/Simulated/Popover.h"
#include "Platform/View.h"
#include "Tessel/AppState.h"
#include "Tessel/MenuBarSymbol.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <variant>

namespace tessel {
namespace {

/// A program that has just been launched: its state, and its item in the panel.
class LaunchedItem : public testing::Test {
protected:
    ~LaunchedItem() override { corvid::MenuBarController::releaseShared(); }

    void launch() {
        state.emplace(desktop.standardUserDefaults, false, dispatcher);
        menuBar = corvid::MenuBarController::make("Tessel", std::make_shared<platform::View>(), popover,
                                                  state->objectWillChange(), menuBarSymbol(*state));
    }

    std::string symbol() {
        const platform::ImageDescription& icon = desktop.statusBar.items().front()->image.value().description();
        return std::get<platform::SystemSymbol>(icon.source).name;
    }

    platform::simulated::Desktop desktop;
    platform::simulated::Popover popover{desktop.trace};
    corvid::HotKeyDispatcher dispatcher;
    std::optional<AppState> state;
    std::shared_ptr<corvid::MenuBarController> menuBar;
};

TEST_F(LaunchedItem, WithoutPermissionShowsTheWarningTriangleFirst) {
    desktop.accessibility.isTrusted = false;
    launch();
    EXPECT_EQ(symbol(), "exclamationmark.triangle.fill");
    desktop.accessibility.isTrusted = true;
    desktop.mainActor.advance(std::chrono::seconds(2));
    EXPECT_EQ(symbol(), "uiwindow.split.2x1");
}

TEST_F(LaunchedItem, WithATakenShortcutLooksAsItDoesAtWork) {
    desktop.hotKeyEvents.refuse(WindowAction(WindowAction::center).shortcut().keyCode,
                                WindowAction(WindowAction::center).shortcut().modifiers);
    launch();
    ASSERT_EQ(state->status(), AppStatus::shortcutsTaken);
    EXPECT_EQ(symbol(), "uiwindow.split.2x1");
}

TEST_F(LaunchedItem, SwitchedOffIsAnOutline) {
    launch();
    state->setEnabled(false);
    EXPECT_EQ(symbol(), "uiwindow.split.2x1") << "notified before the change";
    desktop.mainActor.run();
    EXPECT_EQ(symbol(), "rectangle.split.2x1");
}

} // namespace
} // namespace tessel
