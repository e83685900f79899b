#include "TesselCore/WindowPlacement.h"

#include <algorithm>
#include <cstddef>

namespace tessel {
namespace {

struct PlacementName {
    WindowPlacement placement;
    std::string_view rawValue;
};

constexpr std::array<PlacementName, WindowPlacement::allCases.size()> placementNames{{
    {WindowPlacement::topHalf, "topHalf"},
    {WindowPlacement::bottomHalf, "bottomHalf"},
    {WindowPlacement::topLeft, "topLeft"},
    {WindowPlacement::topRight, "topRight"},
    {WindowPlacement::bottomLeft, "bottomLeft"},
    {WindowPlacement::bottomRight, "bottomRight"},
    {WindowPlacement::firstThird, "firstThird"},
    {WindowPlacement::centerThird, "centerThird"},
    {WindowPlacement::lastThird, "lastThird"},
    {WindowPlacement::firstTwoThirds, "firstTwoThirds"},
    {WindowPlacement::lastTwoThirds, "lastTwoThirds"},
    {WindowPlacement::nextDisplay, "nextDisplay"},
    {WindowPlacement::previousDisplay, "previousDisplay"},
    {WindowPlacement::restore, "restore"},
}};

// The index into the table is the placement's position in the declaration.
static_assert(std::ranges::equal(placementNames, WindowPlacement::allCases, {}, &PlacementName::placement));

} // namespace

std::optional<WindowPlacement> WindowPlacement::fromRawValue(std::string_view rawValue) {
    const auto match = std::ranges::find(placementNames, rawValue, &PlacementName::rawValue);
    return match != placementNames.end() ? std::optional{match->placement} : std::nullopt;
}

std::string_view WindowPlacement::rawValue() const {
    return placementNames.at(static_cast<std::size_t>(value)).rawValue;
}

} // namespace tessel
