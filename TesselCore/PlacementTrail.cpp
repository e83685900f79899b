#include "TesselCore/PlacementTrail.h"

#include "TesselCore/WindowLayout.h"
#include "TesselCore/WindowMove.h"

#include <cmath>

namespace tessel {
namespace {

using corvid::CGRect;

// The tolerance for a window's position equals that for its size.
constexpr double trailTolerance = WindowMove::sizeTolerance;

bool isSameOrigin(const CGRect& a, const CGRect& b) {
    return std::abs(a.minX() - b.minX()) <= trailTolerance && std::abs(a.minY() - b.minY()) <= trailTolerance;
}

bool isSameSize(const CGRect& a, const CGRect& b) {
    return WindowLayout::sizeMatches({a.width(), a.height()}, {b.width(), b.height()}, trailTolerance);
}

bool isSamePlace(const CGRect& a, const CGRect& b) {
    return isSameOrigin(a, b) && isSameSize(a, b);
}

} // namespace

std::optional<CGRect> PlacementTrail::former(const CGRect& present) const {
    PlacementTrail heard = *this;
    heard.hear(present);
    if (heard.frames.empty() || !isSamePlace(heard.frames.back(), present)) {
        return std::nullopt;
    }
    return heard.frames.at(heard.frames.size() - 2);
}

void PlacementTrail::add(const CGRect& before, const CGRect& placed, Answer answer) {
    hear(before);
    const bool goesOn = !frames.empty() && isSamePlace(frames.back(), before);
    if (!goesOn) {
        frames.clear();
    }
    if (isSamePlace(before, placed)) {
        amend(placed, answer);
        return;
    }
    if (!goesOn) {
        frames.push_back(before);
    }
    frames.push_back(placed);
    lastAnswer = answer;
    if (frames.size() > mostPlacements + 1) {
        frames.erase(frames.begin());
    }
}

void PlacementTrail::goBack(const CGRect& present, const CGRect& placed, Answer answer) {
    hear(present);
    if (frames.size() <= 2) {
        frames.clear();
        return;
    }
    frames.pop_back();
    amend(placed, answer);
}

void PlacementTrail::amend(const CGRect& placed, Answer answer) {
    if (!frames.empty()) {
        frames.back() = placed;
        lastAnswer = answer;
        if (answer == Answer::given) {
            dropStepToSamePlace();
        }
    }
}

void PlacementTrail::hear(const CGRect& present) {
    if (lastAnswer == Answer::given || frames.empty()) {
        return;
    }
    lastAnswer = Answer::given;
    if (isSamePlace(frames.at(frames.size() - 2), present) || isSameOrigin(frames.back(), present) ||
        isSameSize(frames.back(), present)) {
        frames.back() = present;
        dropStepToSamePlace();
    }
}

void PlacementTrail::dropStepToSamePlace() {
    if (!isSamePlace(frames.at(frames.size() - 2), frames.back())) {
        return;
    }
    frames.pop_back();
    if (frames.size() < 2) {
        frames.clear();
    }
}

} // namespace tessel
