#include "Tessel/StatusLine.h"

#include <gtest/gtest.h>

namespace tessel {
namespace {

TEST(StatusLine, SaysHowThingsStand) {
    EXPECT_EQ(statusLine(AppStatus::active, {}), "Active");
    EXPECT_EQ(statusLine(AppStatus::paused, {}), "Paused");
    EXPECT_EQ(statusLine(AppStatus::waitingForPermission, {}), "Waiting for permission");
}

TEST(StatusLine, NamesTheTakenShortcutsInDeclarationOrder) {
    EXPECT_EQ(statusLine(AppStatus::shortcutsTaken, {WindowAction::maximizeHeight, WindowAction::leftHalf}),
              "Some shortcuts are taken: leftHalf, maximizeHeight");
    EXPECT_EQ(statusLine(AppStatus::shortcutsTaken, {WindowAction::center}), "Some shortcuts are taken: center");
}

} // namespace
} // namespace tessel
