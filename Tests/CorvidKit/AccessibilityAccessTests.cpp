#include "CorvidKit/AccessibilityAccess.h"
#include "Platform/Simulated/Desktop.h"

#include <gtest/gtest.h>

namespace corvid {
namespace {

TEST(AccessibilityAccess, IsAskedForAfreshAndWithoutAPrompt) {
    platform::simulated::Desktop desktop;
    desktop.accessibility.isTrusted = false;
    EXPECT_FALSE(AccessibilityAccess::isTrusted());
    desktop.accessibility.isTrusted = true;
    EXPECT_TRUE(AccessibilityAccess::isTrusted());
    EXPECT_EQ(desktop.accessibility.promptCount(), 0);
}

TEST(AccessibilityAccess, IsRequestedWithAPromptOnlyWhereItIsMissing) {
    platform::simulated::Desktop desktop;
    EXPECT_TRUE(AccessibilityAccess::requestIfNeeded());
    EXPECT_EQ(desktop.accessibility.promptCount(), 0);
    desktop.accessibility.isTrusted = false;
    EXPECT_FALSE(AccessibilityAccess::requestIfNeeded());
    EXPECT_EQ(desktop.accessibility.promptCount(), 1);
}

} // namespace
} // namespace corvid
