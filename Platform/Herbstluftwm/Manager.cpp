#include "Platform/Herbstluftwm/Manager.h"

#include <utility>

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
    Client& client = known->second;
    // A window has another decoration once it floats.
    bool isDecorationKnown = false;
    while (!isDecorationKnown) {
        const auto output = commands.outputOf(display, placeCommand(window, client, originOf(client, state), frame));
        const State after = output ? readState(*output) : State{};
        const auto placed = after.clients.find(window);
        if (placed == after.clients.end()) {
            return false;
        }
        isDecorationKnown = client.hasDecorationOf(placed->second) || !client.isTiled;
        client = placed->second;
    }
    return true;
}

} // namespace platform::herbstluftwm
