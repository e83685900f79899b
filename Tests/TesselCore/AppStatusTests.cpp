#include "TesselCore/AppStatus.h"
#include "Tests/TesselCore/Printing.h"

#include <gtest/gtest.h>

#include <unordered_set>

namespace {

using tessel::AppStatus;

TEST(AppStatus, IsActiveWhenOnAllowedAndAllShortcutsAreRegistered) {
    EXPECT_EQ(AppStatus(true, true, false), AppStatus::active);
}

TEST(AppStatus, ReportsTakenShortcutsOnlyWithThePermission) {
    EXPECT_EQ(AppStatus(true, true, true), AppStatus::shortcutsTaken);
    EXPECT_EQ(AppStatus(true, false, true), AppStatus::waitingForPermission);
    EXPECT_EQ(AppStatus(true, false, false), AppStatus::waitingForPermission);
}

TEST(AppStatus, IsPausedWhateverElseHoldsWhenSwitchedOff) {
    for (const bool hasAccessibility : {false, true}) {
        for (const bool shortcutsTaken : {false, true}) {
            EXPECT_EQ(AppStatus(false, hasAccessibility, shortcutsTaken), AppStatus::paused);
        }
    }
}

TEST(AppStatus, ShowsASymbolAndTheSameForTakenShortcutsAsForActive) {
    EXPECT_EQ(AppStatus{AppStatus::paused}.menuBarSymbol(), "rectangle.split.2x1");
    EXPECT_EQ(AppStatus{AppStatus::waitingForPermission}.menuBarSymbol(), "exclamationmark.triangle.fill");
    EXPECT_EQ(AppStatus{AppStatus::shortcutsTaken}.menuBarSymbol(), "uiwindow.split.2x1");
    EXPECT_EQ(AppStatus{AppStatus::active}.menuBarSymbol(), "uiwindow.split.2x1");
}

TEST(AppStatus, CanBeAMemberOfAHashedSet) {
    const std::unordered_set<AppStatus> statuses{AppStatus::paused, AppStatus::active, AppStatus::paused};
    EXPECT_EQ(statuses.size(), 2U);
    EXPECT_TRUE(statuses.contains(AppStatus::active));
    EXPECT_FALSE(statuses.contains(AppStatus::shortcutsTaken));
}

} // namespace
