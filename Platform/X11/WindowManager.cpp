#include "Platform/X11/WindowManager.h"

#include "Platform/X11/PropertyValue.h"

#include <algorithm>
#include <utility>

namespace platform::x11 {

WindowManager readWindowManager(Connection& connection) {
    const auto checkRequest =
        requestProperty(connection, connection.root(), connection.atom(Atom::netSupportingWmCheck), 1);
    const auto supportedRequest = requestProperty(connection, connection.root(), connection.atom(Atom::netSupported));
    const auto check = readWords(connection, checkRequest);
    const auto supported = readWords(connection, supportedRequest);
    if (check.empty() || check.front() == XCB_WINDOW_NONE) {
        return {};
    }

    const xcb_window_t window = check.front();
    const auto ownCheckRequest = requestProperty(connection, window, connection.atom(Atom::netSupportingWmCheck), 1);
    const auto nameRequest = requestProperty(connection, window, connection.atom(Atom::netWmName));
    const auto ownCheck = readWords(connection, ownCheckRequest);
    std::string name = readText(connection, nameRequest);
    if (ownCheck.empty() || ownCheck.front() != window) {
        return {};
    }

    const auto supports = [&](Atom feature) {
        return std::ranges::find(supported, connection.atom(feature)) != supported.end();
    };
    return {.checkWindow = window,
            .name = std::move(name),
            .supportsPlacement =
                supports(Atom::netActiveWindow) && supports(Atom::netClientList) && supports(Atom::netMoveResizeWindow),
            .supportsClientShadows = supports(Atom::gtkFrameExtents)};
}

} // namespace platform::x11
