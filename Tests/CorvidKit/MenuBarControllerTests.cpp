#include "CorvidKit/MenuBarController.h"
#include "Platform/Simulated/Desktop.h"
#include "Platform/Simulated/Popover.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvid {
namespace {

using Lines = std::vector<std::string>;
using Anchor = platform::Popover::Anchor;

constexpr CGRect itemFrame{{1800, 1056}, {24, 24}};

class MenuBar : public testing::Test {
protected:
    ~MenuBar() override { MenuBarController::releaseShared(); }

    std::shared_ptr<MenuBarController> make() {
        return MenuBarController::make("Tessel", content, popover, changes, [this] { return symbol; });
    }

    /// A controller whose trace starts after its construction.
    std::shared_ptr<MenuBarController> made() {
        auto controller = make();
        desktop.trace.clear();
        return controller;
    }

    const platform::simulated::StatusBar::Item& shown() { return *desktop.statusBar.items().back(); }

    const platform::ImageDescription& icon() { return shown().image.value().description(); }

    std::string iconSymbol() { return std::get<platform::SystemSymbol>(icon().source).name; }

    platform::simulated::Desktop desktop;
    platform::simulated::Popover popover{desktop.trace};
    std::shared_ptr<const platform::View> content = std::make_shared<platform::View>();
    Publisher<> changes;
    std::string symbol = "uiwindow.split.2x1";
};

TEST_F(MenuBar, HasAnItemAndAPopoverWithItsContent) {
    const auto controller = make();
    const Lines reported = desktop.trace.take();
    for (const char* line : {"create status item Item-0", "set popover behavior 1", "set popover animates 1"}) {
        EXPECT_EQ(std::ranges::count(reported, line), 1) << line;
    }
    EXPECT_EQ(popover.content, content);
    EXPECT_FALSE(popover.isShown());
    ASSERT_EQ(desktop.statusBar.items().size(), 1U);
    EXPECT_EQ(shown().title, "Tessel");
    EXPECT_EQ(iconSymbol(), "uiwindow.split.2x1");
    EXPECT_TRUE(icon().isTemplate);
    EXPECT_FALSE(icon().isBadged);
    EXPECT_EQ(icon().accessibilityDescription, "Tessel");
    EXPECT_EQ(MenuBarController::shared(), controller);
}

TEST_F(MenuBar, TheSharedOneIsTheLast) {
    EXPECT_EQ(MenuBarController::shared(), nullptr);
    const auto first = make();
    const auto second = make();
    EXPECT_EQ(MenuBarController::shared(), second);
    EXPECT_EQ(desktop.statusBar.items().size(), 2U);
}

TEST_F(MenuBar, BecomesTheSharedOneOnlyWhenItIsComplete) {
    const auto first = made();
    MenuBarController* during = nullptr;
    const auto second = MenuBarController::make("Tessel", content, popover, changes, [&during] {
        during = MenuBarController::shared().get();
        return std::string();
    });
    EXPECT_EQ(during, first.get());
}

TEST_F(MenuBar, TheIconFollowsTheStateAfterTheChange) {
    const auto controller = made();
    changes.send();
    symbol = "rectangle.split.2x1";
    EXPECT_EQ(iconSymbol(), "uiwindow.split.2x1") << "not before the change has been made";
    desktop.mainActor.run();
    EXPECT_EQ(iconSymbol(), "rectangle.split.2x1");
}

TEST_F(MenuBar, ASymbolThatDoesNotExistLeavesTheIcon) {
    const auto controller = made();
    symbol = "no.such.symbol";
    changes.send();
    desktop.mainActor.run();
    EXPECT_EQ(iconSymbol(), "uiwindow.split.2x1");
    EXPECT_EQ(desktop.trace.take(), Lines());
}

TEST_F(MenuBar, AnItemWithoutAKnownSymbolHasNoIconAtFirst) {
    symbol = "no.such.symbol";
    const auto controller = make();
    EXPECT_EQ(shown().image, std::nullopt);
}

TEST_F(MenuBar, NothingKeepsAControllerThatNobodyHolds) {
    std::weak_ptr<MenuBarController> gone;
    {
        const auto controller = make();
        gone = controller;
        UpdateCenter updates = UpdateCenter::preview("tessel", true);
        controller->showUpdateBadge(updates);
        changes.send();
        MenuBarController::releaseShared();
    }
    EXPECT_TRUE(gone.expired());
    desktop.trace.clear();
    desktop.mainActor.run();
    changes.send();
    desktop.mainActor.run();
    EXPECT_EQ(desktop.trace.take(), Lines());
    EXPECT_TRUE(desktop.statusBar.items().empty());
}

TEST_F(MenuBar, AReminderThatIsDueShowsTheDotInTheNextTurn) {
    UpdateCenter updates = UpdateCenter::preview("tessel", true);
    const auto controller = made();
    controller->showUpdateBadge(updates);
    EXPECT_FALSE(icon().isBadged);
    desktop.mainActor.run();
    EXPECT_TRUE(icon().isBadged);
    EXPECT_TRUE(icon().isTemplate);
    EXPECT_EQ(icon().accessibilityDescription, "Tessel");
    EXPECT_EQ(iconSymbol(), "uiwindow.split.2x1");
    updates.dismissUpdateReminder();
    desktop.mainActor.run();
    EXPECT_FALSE(icon().isBadged);
}

TEST_F(MenuBar, TheDotStaysWhenTheSymbolChanges) {
    UpdateCenter updates = UpdateCenter::preview("tessel", true);
    const auto controller = made();
    controller->showUpdateBadge(updates);
    symbol = "rectangle.split.2x1";
    changes.send();
    desktop.mainActor.run();
    EXPECT_TRUE(icon().isBadged);
    EXPECT_EQ(iconSymbol(), "rectangle.split.2x1");
}

TEST_F(MenuBar, ARepeatedFlagIsTakenOnce) {
    UpdateCenter updates = UpdateCenter::preview("tessel", false);
    const auto controller = made();
    controller->showUpdateBadge(updates);
    for (const bool isDue : {false, true, true, false, false}) {
        updates.updateReminderDueFlag().set(isDue);
    }
    desktop.mainActor.run();
    EXPECT_EQ(desktop.trace.take(), (Lines{"set status item image", "set status item image", "set status item image"}));
    EXPECT_FALSE(icon().isBadged);
}

TEST_F(MenuBar, AnotherCenterTakesTheFirstOnesPlace) {
    UpdateCenter first = UpdateCenter::preview("tessel", true);
    UpdateCenter second = UpdateCenter::preview("tessel", false);
    const auto controller = made();
    controller->showUpdateBadge(first);
    controller->showUpdateBadge(second);
    desktop.mainActor.run();
    EXPECT_FALSE(icon().isBadged);
    first.updateReminderDueFlag().set(false);
    first.updateReminderDueFlag().set(true);
    desktop.mainActor.run();
    EXPECT_FALSE(icon().isBadged);
}

TEST_F(MenuBar, AClickOpensThePopoverWithTheKeyboardAndTheNextClosesIt) {
    const auto controller = made();
    shown().click();
    EXPECT_EQ(desktop.trace.take(), (Lines{"activate this program", "show popover on edge 1", "make popover key"}));
    EXPECT_TRUE(popover.isShown());
    shown().click();
    EXPECT_EQ(desktop.trace.take(), (Lines{"close popover"}));
    EXPECT_FALSE(popover.isShown());
}

TEST_F(MenuBar, ThePopoverHangsWhereTheUserAskedForIt) {
    struct Row {
        std::optional<CGPoint> click;
        std::optional<CGRect> frame;
        Anchor expected;
    };
    constexpr CGPoint click{1811, 1070};
    const std::vector<Row> rows{
        {click, itemFrame, {.rect = CGRect{click, {}}}},
        {click, std::nullopt, {.rect = CGRect{click, {}}}},
        {std::nullopt, itemFrame, {.rect = itemFrame}},
        {std::nullopt, std::nullopt, {.rect = std::nullopt, .isAtPointer = true}},
    };
    const auto controller = made();
    for (const Row& row : rows) {
        desktop.statusBar.itemFrame = row.frame;
        shown().click(row.click);
        EXPECT_EQ(popover.anchor, row.expected);
        shown().click(row.click);
    }
}

TEST_F(MenuBar, AskedFromElsewhereThePopoverHangsAtTheItemOrInTheCorner) {
    const auto controller = made();
    controller->open();
    EXPECT_EQ(popover.anchor, Anchor{.rect = itemFrame});
    desktop.trace.clear();
    controller->open();
    EXPECT_EQ(desktop.trace.take(), Lines()) << "it is open already";
    controller->close();
    EXPECT_EQ(desktop.trace.take(), (Lines{"close popover"}));
    controller->close();
    EXPECT_EQ(desktop.trace.take(), Lines()) << "it is closed already";
    desktop.statusBar.itemFrame.reset();
    controller->open();
    EXPECT_EQ(popover.anchor, Anchor());
}

TEST_F(MenuBar, WithoutContentThePopoverOpensWithoutTheKeyboard) {
    content = nullptr;
    const auto controller = made();
    controller->open();
    EXPECT_EQ(desktop.trace.take(), (Lines{"activate this program", "show popover on edge 1"}));
}

TEST_F(MenuBar, AClickMayBeTheLastThatTheControllerSees) {
    std::weak_ptr<MenuBarController> gone;
    {
        auto controller = made();
        gone = controller;
        MenuBarController::releaseShared();
        shown().click();
    }
    EXPECT_TRUE(gone.expired());
    EXPECT_TRUE(desktop.statusBar.items().empty());
}

using MenuBarDeathTest = MenuBar;

TEST_F(MenuBarDeathTest, IsOfTheMainThreadOnly) {
    const auto controller = made();
    UpdateCenter updates = UpdateCenter::preview("tessel", false);
    const std::vector<std::function<void()>> operations{
        [&] { static_cast<void>(make()); },
        [&] { controller->open(); },
        [&] { controller->close(); },
        [&] { controller->toggle(std::nullopt); },
        [&] { controller->showUpdateBadge(updates); },
    };
    for (const auto& operation : operations) {
        EXPECT_DEATH(
            {
                const platform::simulated::MainActor::Elsewhere elsewhere(desktop.mainActor);
                operation();
            },
            "CorvidKit/MenuBarController:[0-9]+: Fatal error: Incorrect actor executor assumption");
    }
}

} // namespace
} // namespace corvid
