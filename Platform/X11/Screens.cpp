#include "Platform/X11/Screens.h"

#include "Platform/X11/VisibleFrames.h"

namespace platform::x11 {

namespace {

/// From root coordinates to the screen space, whose origin is the primary monitor's bottom-left corner.
corvid::CGRect inScreenSpace(const corvid::CGRect& rectangle, const corvid::CGRect& primary) {
    return {{rectangle.minX() - primary.minX(), primary.maxY() - rectangle.maxY()}, rectangle.size};
}

} // namespace

std::vector<Screen> Screens::screens() {
    const WorkSpace* space = turn.workSpace();
    if (space == nullptr || space->monitors.empty()) {
        return {};
    }
    const corvid::CGRect& primary = space->monitors.front();
    const std::vector<corvid::CGRect> visible = visibleFrames(*space);
    std::vector<Screen> screens;
    screens.reserve(visible.size());
    for (std::size_t index = 0; index < visible.size(); ++index) {
        screens.push_back({.frame = inScreenSpace(space->monitors[index], primary),
                           .visibleFrame = inScreenSpace(visible[index], primary)});
    }
    return screens;
}

} // namespace platform::x11
