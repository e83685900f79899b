#include "Platform/Herbstluftwm/Manager.h"

#include "Platform/Herbstluftwm/Replies.h"

namespace platform::herbstluftwm {

std::optional<x11::Layout> Manager::readLayout(x11::Connection& display) {
    const auto output = commands.outputOf(display, layoutCommand());
    return output ? std::optional(herbstluftwm::readLayout(*output)) : std::nullopt;
}

bool Manager::place(x11::Connection& display, xcb_window_t window, const corvid::CGRect& frame) {
    const auto released = commands.outputOf(display, releaseCommand(window));
    const auto command = released ? placeCommand(window, *released, frame) : std::nullopt;
    return command && commands.outputOf(display, *command).has_value();
}

} // namespace platform::herbstluftwm
