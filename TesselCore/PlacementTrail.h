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

    /// The frame before the last placement; nothing where there was none, or where the window stands elsewhere now. A
    /// window that is a point or two off, as one that rounds its size, still stands where it was put.
    [[nodiscard]] std::optional<corvid::CGRect> former(const corvid::CGRect& present) const;

    /// The window was put from one frame to another. A placement that changed nothing leaves the way back as it was.
    void add(const corvid::CGRect& before, const corvid::CGRect& placed);

    /// The window was put to `former`, and came to stand at `placed`.
    void goBack(const corvid::CGRect& placed);

    /// The last placement, repeated, ended elsewhere.
    void amend(const corvid::CGRect& placed);

    /// Whether there is no way back, wherever the window stands.
    [[nodiscard]] bool isEmpty() const { return frames.empty(); }

private:
    /// Oldest first; where the window was put is the last. Two at least, or none.
    std::vector<corvid::CGRect> frames;
};

} // namespace tessel
