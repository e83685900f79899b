#include "Platform/X11/Screens.h"

#include "Platform/Linux/Windows/ScreenSpace.h"
#include "Platform/X11/VisibleFrames.h"

namespace platform::x11 {

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
        screens.push_back({.frame = linux::inScreenSpace(space->monitors[index], primary),
                           .visibleFrame = linux::inScreenSpace(visible[index], primary)});
    }
    return screens;
}

} // namespace platform::x11
