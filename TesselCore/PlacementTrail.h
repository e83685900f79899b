#pragma once

#include "CorvidKitCore/Geometry.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace tessel {

/// Where one window stood before each of its last placements, for going back. The frames follow one another without a
/// gap: a window that was moved by somebody else meanwhile begins anew. Frames in points in the accessibility space.
class PlacementTrail {
public:
    /// More placements than these are not remembered.
    static constexpr std::size_t mostPlacements = 8;

    /// Whether a window has told where a placement has put it.
    enum class Answer : bool { missing, given };

    /// The frame before the last placement; nothing where there was none, or where the window stands elsewhere now. A
    /// window that is a point or two off, as one that rounds its size, still stands where it was put. One that has not
    /// answered may have come to the place or the size that it was asked for, or have stayed.
    [[nodiscard]] std::optional<corvid::CGRect> former(const corvid::CGRect& present) const;

    /// The window was put from one frame to another; without an answer that is the one that it was asked for. A
    /// placement that changed nothing leaves the way back as it was.
    void add(const corvid::CGRect& before, const corvid::CGRect& placed, Answer answer = Answer::given);

    /// The window was put from `present` to the frame that `former` gave for it, and came to stand at `placed`.
    void goBack(const corvid::CGRect& present, const corvid::CGRect& placed, Answer answer = Answer::given);

    /// The last placement, repeated, ended elsewhere.
    void amend(const corvid::CGRect& placed, Answer answer = Answer::given);

    /// Whether there is no way back, wherever the window stands.
    [[nodiscard]] bool isEmpty() const { return frames.empty(); }

private:
    /// Settles where an unanswered placement has left the window.
    void hear(const corvid::CGRect& present);

    /// Oldest first; where the window was put is the last. Two at least, or none.
    std::vector<corvid::CGRect> frames;
    Answer lastAnswer = Answer::given;
};

} // namespace tessel
