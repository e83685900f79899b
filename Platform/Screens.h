#pragma once

#include "CorvidKitCore/Geometry.h"

#include <vector>

namespace platform {

/// One attached screen, both rectangles in points in the screen space (origin at the bottom-left corner of the primary
/// screen, y up).
struct Screen {
    corvid::CGRect frame;
    /// The frame without the space that panels and docks keep for themselves.
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

    /// The screens as they are at this moment, the primary one first; nothing is remembered between two turns of the
    /// event loop. Empty where the desktop has none or does not answer.
    [[nodiscard]] virtual std::vector<Screen> screens() = 0;
};

} // namespace platform
