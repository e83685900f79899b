#include "Platform/Sway/Commands.h"

#include <gtest/gtest.h>

#include <limits>

namespace platform::sway {
namespace {

TEST(SwayCommands, PlaceAWindowInWholePoints) {
    EXPECT_EQ(placingCommands("7", {{-1280.4, 23.5}, {960.2, 1056.6}}, ""),
              "[con_id=7] floating enable, resize set width 960 px height 1057 px, "
              "move absolute position -1280 px 24 px");
}

TEST(SwayCommands, PutAWindowBackOnItsWorkspace) {
    EXPECT_TRUE(placingCommands("7", {}, "3: mail").ends_with(", move container to workspace \"3: mail\""));
    // Such names cannot be quoted.
    EXPECT_EQ(placingCommands("7", {}, "3\", exec x").find("workspace"), std::string::npos);
}

TEST(SwayCommands, NumbersThatMakeNoSenseStayWithinWhatIsUnderstood) {
    constexpr double infinite = std::numeric_limits<double>::infinity();
    constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(placingCommands("7", {{infinite, notANumber}, {1e300, -1e300}}, ""),
              "[con_id=7] floating enable, resize set width 1048576 px height -1048576 px, "
              "move absolute position 0 px 0 px");
}

TEST(SwayCommands, NameAWindowOfOursByItsTitle) {
    EXPECT_EQ(ownWindowCriteria(17, "Tessel"), "[pid=17 title=\"^Tessel$\"]");
    EXPECT_EQ(ownWindowCriteria(17, "A \"b\" (c)"), "[pid=17 title=\"^A .+b.+ .+c.+$\"]");
    EXPECT_EQ(ownWindowCriteria(17, "ä"), "[pid=17 title=\"^.+$\"]");
}

} // namespace
} // namespace platform::sway
