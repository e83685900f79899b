#include "Platform/Awesome/Manager.h"

#include "Platform/Awesome/Scripts.h"
#include "Platform/X11/PropertyValue.h"
#include "Platform/X11/WindowOwner.h"

#include <algorithm>

namespace platform::awesome {

namespace {

/// The process of the window manager; empty if it did not tell its window, or the server did not reply in time.
std::optional<ProcessIdentifier> windowManagerProcess(x11::Connection& display) {
    const auto request =
        x11::requestProperty(display, display.root(), display.atom(x11::Atom::netSupportingWmCheck), 1);
    const auto check = x11::readWords(display, request);
    if (check.empty()) {
        return std::nullopt;
    }
    const ProcessIdentifier process = x11::WindowOwnerRequest(display, check.front()).read(display);
    return process > 0 ? std::optional(process) : std::nullopt;
}

} // namespace

bool Manager::isReachable(x11::Connection& display) {
    if (!link) {
        link.emplace(mainLoop);
        // The time at the start of the program is much longer, and a bus that hangs is no reason to use it up.
        link->commands.await(std::min(display.deadline().end(), mainLoop.now() + linux::TurnDeadline::turnLimit));
    }
    const CommandInterface::Owner& owner = link->commands.owner();
    if (owner.connection.empty()) {
        return false;
    }
    // A process keeps its display and its connection to the bus, so once is enough for each connection.
    if (owner.connection != compared) {
        const auto process = windowManagerProcess(display);
        if (!process) {
            return false;
        }
        compared = owner.connection;
        isSame = *process == owner.process;
    }
    return isSame;
}

std::optional<x11::Layout> Manager::readLayout(x11::Connection& display) {
    if (!isReachable(display)) {
        return std::nullopt;
    }
    const auto reply = link->commands.evaluate(layoutScript(), display.deadline().end());
    return reply ? awesome::readLayout(*reply) : std::nullopt;
}

bool Manager::place(x11::Connection& display, xcb_window_t window, const corvid::CGRect& frame) {
    if (!isReachable(display)) {
        return false;
    }
    const auto reply = link->commands.evaluate(placeScript(window, frame), display.deadline().end());
    return reply && isPlaced(*reply);
}

} // namespace platform::awesome
