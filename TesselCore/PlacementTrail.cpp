#include "TesselCore/PlacementTrail.h"

#include "TesselCore/WindowLayout.h"
#include "TesselCore/WindowMove.h"

#include <cmath>

namespace tessel {
namespace {

using corvid::CGRect;

// A window may be as far from where it was put as its size may be from the one asked for.
constexpr double trailTolerance = WindowMove::sizeTolerance;

bool isSamePlace(const CGRect& a, const CGRect& b) {
    return std::abs(a.minX() - b.minX()) <= trailTolerance && std::abs(a.minY() - b.minY()) <= trailTolerance &&
           WindowLayout::sizeMatches({a.width(), a.height()}, {b.width(), b.height()}, trailTolerance);
}

} // namespace

std::optional<CGRect> PlacementTrail::former(const CGRect& present) const {
    if (frames.empty() || !isSamePlace(frames.back(), present)) {
        return std::nullopt;
    }
    return frames.at(frames.size() - 2);
}

void PlacementTrail::add(const CGRect& before, const CGRect& placed) {
    const bool goesOn = !frames.empty() && isSamePlace(frames.back(), before);
    if (!goesOn) {
        frames.clear();
    }
    if (isSamePlace(before, placed)) {
        amend(placed);
        return;
    }
    if (!goesOn) {
        frames.push_back(before);
    }
    frames.push_back(placed);
    if (frames.size() > mostPlacements + 1) {
        frames.erase(frames.begin());
    }
}

void PlacementTrail::goBack(const CGRect& placed) {
    if (frames.size() <= 2) {
        frames.clear();
        return;
    }
    frames.pop_back();
    amend(placed);
}

void PlacementTrail::amend(const CGRect& placed) {
    if (!frames.empty()) {
        frames.back() = placed;
    }
}

} // namespace tessel
