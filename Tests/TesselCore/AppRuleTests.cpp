#include "TesselCore/AppRule.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace {

using tessel::AppRule::applies;

TEST(AppRule, AppliesToTheOnlyStandardWindow) {
    EXPECT_TRUE(applies(1));
}

TEST(AppRule, AppliesToAWindowThatIsNotYetCounted) {
    EXPECT_TRUE(applies(0));
    EXPECT_TRUE(applies(std::numeric_limits<std::int64_t>::min()));
}

TEST(AppRule, DoesNotApplyToASecondWindow) {
    EXPECT_FALSE(applies(2));
    EXPECT_FALSE(applies(3));
    EXPECT_FALSE(applies(std::numeric_limits<std::int64_t>::max()));
}

} // namespace
