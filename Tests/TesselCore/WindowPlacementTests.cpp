#include "TesselCore/WindowOrder.h"
#include "Tests/TesselCore/Printing.h"

#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <string_view>

namespace {

using tessel::orderFromRawValue;
using tessel::WindowAction;
using tessel::WindowOrder;
using tessel::WindowPlacement;

TEST(WindowPlacement, IsBuiltFromItsRawValueAndNoOtherText) {
    for (const WindowPlacement placement : WindowPlacement::allCases) {
        EXPECT_EQ(WindowPlacement::fromRawValue(placement.rawValue()), placement);
    }
    for (const char* text : {"", "TopHalf", "top-half", "topHalf ", "leftHalf"}) {
        EXPECT_EQ(WindowPlacement::fromRawValue(text), std::nullopt) << text;
    }
}

TEST(WindowPlacement, HasTheRawValueOfItsName) {
    EXPECT_EQ(WindowPlacement(WindowPlacement::topHalf).rawValue(), "topHalf");
    EXPECT_EQ(WindowPlacement(WindowPlacement::firstTwoThirds).rawValue(), "firstTwoThirds");
    EXPECT_EQ(WindowPlacement(WindowPlacement::restore).rawValue(), "restore");
}

TEST(WindowOrder, IsAnActionOrAPlacementAndNothingElse) {
    EXPECT_EQ(orderFromRawValue("maximize"), WindowOrder(WindowAction(WindowAction::maximize)));
    EXPECT_EQ(orderFromRawValue("topLeft"), WindowOrder(WindowPlacement(WindowPlacement::topLeft)));
    EXPECT_EQ(orderFromRawValue("none"), std::nullopt);
}

TEST(WindowOrder, HasARawValueOfItsOwnForEachActionAndPlacement) {
    std::set<std::string_view> values;
    for (const WindowAction action : WindowAction::allCases) {
        values.insert(action.rawValue());
    }
    for (const WindowPlacement placement : WindowPlacement::allCases) {
        values.insert(placement.rawValue());
    }
    EXPECT_EQ(values.size(), WindowAction::allCases.size() + WindowPlacement::allCases.size());
}

} // namespace
