#pragma once

#include "CorvidKitCore/Geometry.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace tessel {

/// The frames of one window before each of its last placements, for going back. They follow one another without a gap:
/// a window that another client has moved meanwhile starts a new trail. Frames in points in the accessibility space.
class PlacementTrail {
public:
    /// Older placements are forgotten.
    static constexpr std::size_t mostPlacements = 8;

    /// Whether a window has reported its frame after a placement.
    enum class Answer : bool { missing, given };

    /// The frame before the last placement; empty if there was none, or if the window has moved since. A window that is
    /// a point or two off, such as one that rounds its size, has not moved. One that has not answered may have reached
    /// the requested position or size, or have stayed.
    [[nodiscard]] std::optional<corvid::CGRect> former(const corvid::CGRect& present) const;

    /// Records that the window was put from one frame to another; without an answer, that is the requested one. A
    /// placement that changed nothing leaves the trail unchanged.
    void add(const corvid::CGRect& before, const corvid::CGRect& placed, Answer answer = Answer::given);

    /// Records that the window was put from `present` to the frame that `former` returned for it, and came to rest at
    /// `placed`.
    void goBack(const corvid::CGRect& present, const corvid::CGRect& placed, Answer answer = Answer::given);

    /// Records where the last placement, repeated, ended. One that ended where it began is no step.
    void amend(const corvid::CGRect& placed, Answer answer = Answer::given);

    /// Whether there is no way back, for any frame of the window.
    [[nodiscard]] bool isEmpty() const { return frames.empty(); }

private:
    /// Resolves the result of an unanswered placement.
    void hear(const corvid::CGRect& present);

    /// Removes the last placement if it changed nothing: the way back would lead to where the window is.
    void dropStepToSamePlace();

    /// Oldest first; the last one is the window's present place. At least two, or none.
    std::vector<corvid::CGRect> frames;
    Answer lastAnswer = Answer::given;
};

} // namespace tessel
