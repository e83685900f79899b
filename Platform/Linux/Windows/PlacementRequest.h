#pragma once

#include "CorvidKitCore/Geometry.h"

#include <optional>

namespace platform::linux {

/// A request for a window's visible rectangle; an absent part is left as it is.
struct PlacementRequest {
    std::optional<corvid::CGPoint> position;
    std::optional<corvid::CGSize> size;

    [[nodiscard]] bool isEmpty() const { return !position && !size; }

    /// Adds a later request, which overrides earlier ones.
    void add(const PlacementRequest& part) {
        position = part.position ? part.position : position;
        size = part.size ? part.size : size;
    }

    friend bool operator==(const PlacementRequest&, const PlacementRequest&) = default;
};

} // namespace platform::linux
