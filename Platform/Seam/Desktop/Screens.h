#pragma once

#include "CorvidKitCore/Geometry.h"

#include <vector>

namespace platform {

/// One attached screen, both rectangles in points in the screen space (origin at the bottom-left corner of the primary
/// screen, y up).
struct Screen {
    corvid::CGRect frame;
    /// The frame without the space that panels and docks reserve.
    corvid::CGRect visibleFrame;

    friend bool operator==(const Screen&, const Screen&) = default;
};

/// The attached screens. Main thread only.
class Screens {
public:
    Screens() = default;
    Screens(const Screens&) = delete;
    Screens& operator=(const Screens&) = delete;
    virtual ~Screens() = default;

    /// The screens at this moment, the primary one first; nothing is cached between two turns of the event loop. Empty
    /// if the desktop has none or does not reply.
    [[nodiscard]] virtual std::vector<Screen> screens() = 0;
};

} // namespace platform
