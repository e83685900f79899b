#include "Platform/Herbstluftwm/Manager.h"

namespace platform::herbstluftwm {

std::optional<x11::Layout> Manager::readLayout(x11::Connection& display) {
    const auto output = commands.outputOf(display, stateCommand());
    state = output ? readState(*output) : State{};
    return output ? std::optional(layoutOf(state)) : std::nullopt;
}

bool Manager::place(x11::Connection& display, xcb_window_t window, const corvid::CGRect& frame) {
    const auto known = state.clients.find(window);
    if (known == state.clients.end() || state.areas.empty()) {
        return false;
    }
    Client reckoned = known->second;
    const corvid::CGPoint origin = originOf(reckoned, state);
    // A second command could come too late.
    const auto& outside = extentsOutside(window, state);
    if (reckoned.isTiled && outside) {
        reckoned = reckoned.withDecoration(*outside);
    }
    for (bool isDecorationRight = false; !isDecorationRight;) {
        const auto output = commands.outputOf(display, placeCommand(window, reckoned, origin, frame));
        const State after = output ? readState(*output) : State{};
        const auto found = after.clients.find(window);
        if (found == after.clients.end()) {
            return false;
        }
        isDecorationRight = !reckoned.isTiled || reckoned.hasDecorationOf(found->second);
        reckoned = found->second;
    }
    known->second = reckoned;
    return true;
}

} // namespace platform::herbstluftwm
