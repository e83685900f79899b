#include "Platform/X11/WindowTree.h"

#include "Platform/X11/PropertyValue.h"

#include <algorithm>
#include <utility>

namespace platform::x11 {

namespace {

// Frames have one or two windows between the root and the client; a few more cost nothing.
constexpr int deepestClient = 5;
// More than any desktop has. Applications may have any number of windows.
constexpr std::size_t mostWindowsOfALevel = 2048;
static_assert(mostWindowsOfALevel * (sizeof(xcb_get_property_request_t) + sizeof(xcb_query_tree_request_t)) <=
              largestBurst);

/// `WM_STATE` of a withdrawn window (ICCCM 4.1.3.1).
constexpr std::uint32_t withdrawn = 0;

std::span<const xcb_window_t> childrenOf(const xcb_query_tree_reply_t& tree) {
    return {xcb_query_tree_children(&tree), static_cast<std::size_t>(xcb_query_tree_children_length(&tree))};
}

bool isManagedState(const std::vector<std::uint32_t>& state) {
    return !state.empty() && state.front() != withdrawn;
}

struct Level {
    std::vector<xcb_window_t> managed;
    /// The children of the others.
    std::vector<xcb_window_t> below;
};

Level readLevel(Connection& connection, std::span<const xcb_window_t> windows) {
    std::vector<std::pair<xcb_get_property_cookie_t, xcb_query_tree_cookie_t>> requests;
    requests.reserve(windows.size());
    for (const xcb_window_t window : windows) {
        requests.emplace_back(requestProperty(connection, window, connection.atom(Atom::wmState), 1),
                              xcb_query_tree(connection.raw(), window));
    }
    Level level;
    for (std::size_t index = 0; index < windows.size(); ++index) {
        const auto& [stateRequest, treeRequest] = requests[index];
        const auto state = readOptionalWords(connection, stateRequest);
        const auto tree = connection.reply<xcb_query_tree_reply_t>(treeRequest);
        if (state && isManagedState(*state)) {
            level.managed.push_back(windows[index]);
        } else if (tree && !state) {
            const auto children = childrenOf(*tree);
            level.below.insert(level.below.end(), children.begin(), children.end());
        }
    }
    return level;
}

/// The window and those around it, without the root; the last one is the root's child.
std::vector<xcb_window_t> readAncestry(Connection& connection, xcb_window_t window) {
    std::vector<xcb_window_t> ancestry;
    // An application may nest its windows as deeply as it likes.
    constexpr std::size_t deepest = 64;
    while (window != connection.root() && window != XCB_WINDOW_NONE && ancestry.size() < deepest) {
        const auto tree = connection.reply<xcb_query_tree_reply_t>(xcb_query_tree(connection.raw(), window));
        if (!tree) {
            return {};
        }
        ancestry.push_back(window);
        window = tree->parent;
    }
    return ancestry;
}

/// The first of `clients` among those windows.
xcb_window_t firstOf(std::span<const xcb_window_t> clients, std::span<const xcb_window_t> windows) {
    const auto found = std::ranges::find_first_of(windows, clients);
    return found == windows.end() ? xcb_window_t{XCB_WINDOW_NONE} : *found;
}

/// The client in a frame: the first of `clients` below the window, level by level.
xcb_window_t readClientBelow(Connection& connection, xcb_window_t window, std::span<const xcb_window_t> clients) {
    std::vector<xcb_window_t> windows{window};
    for (int depth = 0; depth < deepestClient && !windows.empty(); ++depth) {
        if (const xcb_window_t client = firstOf(clients, windows); client != XCB_WINDOW_NONE) {
            return client;
        }
        windows = readLevel(connection, windows).below;
        if (windows.size() > mostWindowsOfALevel) {
            windows.resize(mostWindowsOfALevel);
        }
    }
    return XCB_WINDOW_NONE;
}

/// The window that gets the keys: the focus, or the root's child below the pointer while the focus follows that.
xcb_window_t readKeyboardWindow(Connection& connection) {
    const auto focusRequest = xcb_get_input_focus(connection.raw());
    const auto pointerRequest = xcb_query_pointer(connection.raw(), connection.root());
    const auto focus = connection.reply<xcb_get_input_focus_reply_t>(focusRequest);
    const auto pointer = connection.reply<xcb_query_pointer_reply_t>(pointerRequest);
    if (!focus) {
        return XCB_WINDOW_NONE;
    }
    const bool followsPointer = focus->focus == XCB_INPUT_FOCUS_POINTER_ROOT || focus->focus == connection.root();
    if (followsPointer) {
        return pointer ? pointer->child : xcb_window_t{XCB_WINDOW_NONE};
    }
    return focus->focus;
}

} // namespace

std::optional<std::vector<xcb_window_t>> readWindowsWithState(Connection& connection,
                                                              std::span<const xcb_window_t> former) {
    std::vector<xcb_window_t> found;
    std::vector<xcb_window_t> windows{connection.root()};
    for (int depth = 0; depth <= deepestClient && !windows.empty() && !connection.isExhausted(); ++depth) {
        Level level = readLevel(connection, windows);
        found.insert(found.end(), level.managed.begin(), level.managed.end());
        windows = std::move(level.below);
        if (windows.size() > mostWindowsOfALevel) {
            windows.resize(mostWindowsOfALevel);
        }
    }
    if (connection.isExhausted()) {
        return std::nullopt;
    }
    // The tree is in the order of stacking. A restacked window has not become another.
    std::ranges::sort(found);
    std::vector<xcb_window_t> ordered;
    ordered.reserve(found.size());
    for (const xcb_window_t window : former) {
        if (std::ranges::binary_search(found, window)) {
            ordered.push_back(window);
        }
    }
    std::ranges::copy_if(found, std::back_inserter(ordered),
                         [&](xcb_window_t window) { return std::ranges::find(former, window) == former.end(); });
    return ordered;
}

std::vector<xcb_window_t> readShownUnmanagedWindows(Connection& connection) {
    const auto tree = connection.reply<xcb_query_tree_reply_t>(xcb_query_tree(connection.raw(), connection.root()));
    if (!tree) {
        return {};
    }
    const auto children = childrenOf(*tree);
    const auto asked = children.last(std::min(children.size(), mostWindowsOfALevel));
    std::vector<xcb_get_window_attributes_cookie_t> requests;
    requests.reserve(asked.size());
    for (const xcb_window_t child : asked) {
        requests.push_back(xcb_get_window_attributes(connection.raw(), child));
    }
    std::vector<xcb_window_t> shown;
    for (std::size_t index = 0; index < asked.size(); ++index) {
        const auto attributes = connection.reply<xcb_get_window_attributes_reply_t>(requests[index]);
        if (attributes && attributes->override_redirect != 0 && attributes->map_state == XCB_MAP_STATE_VIEWABLE) {
            shown.push_back(asked[index]);
        }
    }
    return shown;
}

bool hasState(Connection& connection, xcb_window_t window) {
    return isManagedState(
        readWords(connection, requestProperty(connection, window, connection.atom(Atom::wmState), 1)));
}

xcb_window_t readFocusedClient(Connection& connection, std::span<const xcb_window_t> clients) {
    const xcb_window_t focused = readKeyboardWindow(connection);
    if (focused == XCB_WINDOW_NONE || firstOf(clients, {&focused, 1}) != XCB_WINDOW_NONE) {
        return focused;
    }
    const std::vector<xcb_window_t> ancestry = readAncestry(connection, focused);
    if (const xcb_window_t client = firstOf(clients, ancestry); client != XCB_WINDOW_NONE) {
        return client;
    }
    return ancestry.empty() ? xcb_window_t{XCB_WINDOW_NONE} : readClientBelow(connection, ancestry.back(), clients);
}

xcb_window_t readFrame(Connection& connection, xcb_window_t client) {
    const std::vector<xcb_window_t> ancestry = readAncestry(connection, client);
    return ancestry.size() < 2 ? xcb_window_t{XCB_WINDOW_NONE} : ancestry.back();
}

std::optional<Extents> readDecoration(Connection& connection, xcb_window_t client) {
    const std::vector<xcb_window_t> ancestry = readAncestry(connection, client);
    if (ancestry.empty()) {
        return std::nullopt;
    }
    const xcb_window_t frame = ancestry.back();
    const auto innerRequest = xcb_get_geometry(connection.raw(), client);
    const auto outerRequest = xcb_get_geometry(connection.raw(), frame);
    const auto placeRequest = xcb_translate_coordinates(connection.raw(), client, frame, 0, 0);
    const auto inner = connection.reply<xcb_get_geometry_reply_t>(innerRequest);
    const auto outer = connection.reply<xcb_get_geometry_reply_t>(outerRequest);
    const auto place = connection.reply<xcb_translate_coordinates_reply_t>(placeRequest);
    if (!inner || !outer || !place) {
        return std::nullopt;
    }
    const Extents inside{.left = place->dst_x,
                         .right = outer->width - inner->width - place->dst_x,
                         .top = place->dst_y,
                         .bottom = outer->height - inner->height - place->dst_y};
    return widened(inside, outer->border_width);
}

} // namespace platform::x11
