#include "Platform/X11/WindowManager.h"

#include "Platform/X11/PropertyValue.h"

#include <algorithm>
#include <utility>

namespace platform::x11 {

WindowManager readWindowManager(Connection& connection, const std::function<void(xcb_window_t)>& announced) {
    constexpr std::uint32_t mostAtoms = 1024;
    constexpr std::uint32_t longestName = 64;

    const auto checkRequest =
        requestProperty(connection, connection.root(), connection.atom(Atom::netSupportingWmCheck), 1);
    const auto supportedRequest =
        requestProperty(connection, connection.root(), connection.atom(Atom::netSupported), mostAtoms);
    const auto check = readWords(connection, checkRequest);
    const auto supported = readWords(connection, supportedRequest);
    // The root window proves nothing: it stays when the window manager ends.
    if (check.empty() || check.front() == XCB_WINDOW_NONE || check.front() == connection.root()) {
        return {};
    }

    const xcb_window_t window = check.front();
    if (announced) {
        announced(window);
    }
    const auto ownCheckRequest = requestProperty(connection, window, connection.atom(Atom::netSupportingWmCheck), 1);
    const auto nameRequest = requestProperty(connection, window, connection.atom(Atom::netWmName), longestName);
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
