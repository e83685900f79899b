#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/X11/FrameGeometry.h"

#include <cstdint>
#include <map>
#include <optional>
#include <tuple>

namespace platform::x11 {

/// Where a client lands that is given a position by a configure request.
///
/// By ICCCM 4.1.5 the position is that of the frame, placed so that the client's reference point stands where it would
/// without a frame; window managers differ in the gravities that they know, and in whether a border counts. So the
/// result is observed, for each gravity and decoration. Root coordinates.
class ConfiguredPositions {
public:
    /// The position to request, so that the client lands at `client`. Before anything was observed: that of the frame.
    [[nodiscard]] corvid::CGPoint request(corvid::CGPoint client, std::uint32_t gravity,
                                          const Extents& decoration) const;

    /// Takes into account that a client landed there after that request; in each dimension, unless the distance has
    /// another cause than the decoration, such as the edge of the screen.
    void observe(corvid::CGPoint requested, corvid::CGPoint landed, std::uint32_t gravity, const Extents& decoration);

    /// Forgets what was observed, for another window manager.
    void clear() { distances.clear(); }

private:
    using Key = std::tuple<std::uint32_t, std::int32_t, std::int32_t, std::int32_t, std::int32_t>;

    /// From the request to the client.
    std::map<Key, corvid::CGPoint> distances;
};

} // namespace platform::x11
