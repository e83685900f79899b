#include "Platform/X11/WindowManager.h"

#include "Platform/X11/PropertyValue.h"

#include <algorithm>
#include <utility>

namespace platform::x11 {

namespace {

/// Whether a client receives the requests of top-level windows. Asking for them oneself would show it as well, but
/// would make us the window manager if there is none.
bool isRedirected(Connection& connection) {
    const auto attributes = connection.reply<xcb_get_window_attributes_reply_t>(
        xcb_get_window_attributes(connection.raw(), connection.root()));
    return attributes && (attributes->all_event_masks & XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT) != 0;
}

/// One that announces itself by a check window; without such a window nothing.
WindowManager readAnnounced(Connection& connection, const std::function<void(xcb_window_t)>& found) {
    const auto checkRequest =
        requestProperty(connection, connection.root(), connection.atom(Atom::netSupportingWmCheck), 1);
    const auto supportedRequest = requestProperty(connection, connection.root(), connection.atom(Atom::netSupported));
    const auto check = readWords(connection, checkRequest);
    const auto supported = readWords(connection, supportedRequest);
    // The root window proves nothing: it stays when the window manager ends.
    if (check.empty() || check.front() == XCB_WINDOW_NONE || check.front() == connection.root()) {
        return {};
    }

    const xcb_window_t window = check.front();
    if (found) {
        found(window);
    }
    const auto ownCheckRequest = requestProperty(connection, window, connection.atom(Atom::netSupportingWmCheck), 1);
    const auto nameRequest = requestProperty(connection, window, connection.atom(Atom::netWmName));
    const auto ownCheck = readWords(connection, ownCheckRequest);
    std::string name = readText(connection, nameRequest);
    if (ownCheck.empty() || ownCheck.front() != window) {
        return {};
    }
    const Capabilities capabilities = announcedCapabilities(connection.atomTable(), supported);
    const bool isProven = capabilities.namesActiveWindow && capabilities.listsWindows && capabilities.movesOnMessage;
    return {
        .isPresent = isProven || isRedirected(connection),
        .window = window,
        .name = std::move(name),
        .capabilities = capabilities,
    };
}

xcb_window_t ownerOf(Connection& connection, xcb_atom_t selection) {
    const auto owner =
        connection.reply<xcb_get_selection_owner_reply_t>(xcb_get_selection_owner(connection.raw(), selection));
    return owner ? owner->owner : xcb_window_t{XCB_WINDOW_NONE};
}

/// One that only does what a window manager does.
WindowManager readSilent(Connection& connection, const std::function<void(xcb_window_t)>& found) {
    const xcb_atom_t selection = windowManagerSelection(connection);
    const xcb_window_t owner = ownerOf(connection, selection);
    if (owner != XCB_WINDOW_NONE) {
        if (found) {
            found(owner);
        }
        // The first answer may be older than the call.
        if (ownerOf(connection, selection) == owner) {
            return {.isPresent = true, .window = owner, .name = {}, .capabilities = {}};
        }
    }
    return {.isPresent = isRedirected(connection), .window = XCB_WINDOW_NONE, .name = {}, .capabilities = {}};
}

} // namespace

Capabilities announcedCapabilities(const AtomTable& atoms, const std::vector<std::uint32_t>& supported) {
    const auto supports = [&](Atom feature) { return std::ranges::find(supported, atoms[feature]) != supported.end(); };
    return {.announcesItself = true,
            .namesActiveWindow = supports(Atom::netActiveWindow),
            .listsWindows = supports(Atom::netClientList),
            .movesOnMessage = supports(Atom::netMoveResizeWindow),
            .announcesFrameExtents = supports(Atom::netFrameExtents),
            .supportsClientShadows = supports(Atom::gtkFrameExtents)};
}

WindowManager readWindowManager(Connection& connection, const std::function<void(xcb_window_t)>& found) {
    WindowManager announced = readAnnounced(connection, found);
    if (announced.window == XCB_WINDOW_NONE && !connection.isExhausted()) {
        return readSilent(connection, found);
    }
    return announced;
}

xcb_atom_t windowManagerSelection(Connection& connection) {
    const std::string name = "WM_S" + std::to_string(connection.screenNumber());
    const auto interned = connection.reply<xcb_intern_atom_reply_t>(
        xcb_intern_atom(connection.raw(), 0, static_cast<std::uint16_t>(name.size()), name.data()));
    return interned ? interned->atom : xcb_atom_t{XCB_ATOM_NONE};
}

} // namespace platform::x11
