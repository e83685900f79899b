#include "Platform/X11/OwnBars.h"

#include <algorithm>
#include <utility>

namespace platform::x11 {

namespace {

/// The reserved space at each edge of the root window.
struct Margins {
    double left = 0;
    double right = 0;
    double top = 0;
    double bottom = 0;
};

Margins marginsOfWorkArea(const WorkSpace& space) {
    if (!space.workArea) {
        return {};
    }
    return {.left = space.workArea->minX(),
            .right = space.rootSize.width - space.workArea->maxX(),
            .top = space.workArea->minY(),
            .bottom = space.rootSize.height - space.workArea->maxY()};
}

Margins marginsOfStruts(const WorkSpace& space) {
    Margins margins;
    for (const Strut& strut : space.struts) {
        margins.left = std::max(margins.left, strut.left);
        margins.right = std::max(margins.right, strut.right);
        margins.top = std::max(margins.top, strut.top);
        margins.bottom = std::max(margins.bottom, strut.bottom);
    }
    return margins;
}

/// The work area's margins beyond the struts; zero at an edge that struts explain.
Margins unexplainedMargins(const WorkSpace& space) {
    const Margins area = marginsOfWorkArea(space);
    const Margins struts = marginsOfStruts(space);
    const auto rest = [](double margin, double explained) { return margin > explained ? margin : 0.0; };
    return {.left = rest(area.left, struts.left),
            .right = rest(area.right, struts.right),
            .top = rest(area.top, struts.top),
            .bottom = rest(area.bottom, struts.bottom)};
}

/// The outer rectangles of those children of the root window for which `isWanted` holds.
template <typename Condition>
std::vector<corvid::CGRect> readWindows(Connection& connection, Condition isWanted) {
    constexpr std::size_t mostWindows = 4096;
    static_assert(mostWindows * (sizeof(xcb_get_window_attributes_request_t) + sizeof(xcb_get_geometry_request_t)) <=
                  largestBurst);
    const auto tree = connection.reply<xcb_query_tree_reply_t>(xcb_query_tree(connection.raw(), connection.root()));
    if (!tree) {
        return {};
    }
    const auto count = std::min(static_cast<std::size_t>(xcb_query_tree_children_length(tree.get())), mostWindows);
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    std::vector<std::pair<xcb_get_window_attributes_cookie_t, xcb_get_geometry_cookie_t>> requests;
    requests.reserve(count);
    for (std::size_t index = 0; index < count; ++index) {
        requests.emplace_back(xcb_get_window_attributes(connection.raw(), children[index]),
                              xcb_get_geometry(connection.raw(), children[index]));
    }
    std::vector<corvid::CGRect> windows;
    for (std::size_t index = 0; index < count; ++index) {
        const auto attributes = connection.reply<xcb_get_window_attributes_reply_t>(requests[index].first);
        const auto geometry = connection.reply<xcb_get_geometry_reply_t>(requests[index].second);
        if (attributes && geometry && isWanted(children[index], *attributes)) {
            const int borders = 2 * geometry->border_width;
            windows.push_back(
                {{static_cast<double>(geometry->x), static_cast<double>(geometry->y)},
                 {static_cast<double>(geometry->width + borders), static_cast<double>(geometry->height + borders)}});
        }
    }
    return windows;
}

} // namespace

bool hasUnexplainedMargin(const WorkSpace& space) {
    const Margins margins = unexplainedMargins(space);
    return margins.left > 0 || margins.right > 0 || margins.top > 0 || margins.bottom > 0;
}

std::vector<Strut> strutsOfBars(const WorkSpace& space, const std::vector<corvid::CGRect>& windows) {
    const Margins margins = unexplainedMargins(space);
    const auto [width, height] = space.rootSize;
    std::vector<Strut> struts;
    for (const corvid::CGRect& window : windows) {
        Strut strut;
        if (margins.left > 0 && window.minX() == 0 && window.maxX() == margins.left) {
            strut.left = margins.left;
        } else if (margins.right > 0 && window.maxX() == width && window.minX() == width - margins.right) {
            strut.right = margins.right;
        } else if (margins.top > 0 && window.minY() == 0 && window.maxY() == margins.top) {
            strut.top = margins.top;
        } else if (margins.bottom > 0 && window.maxY() == height && window.minY() == height - margins.bottom) {
            strut.bottom = margins.bottom;
        } else {
            continue;
        }
        strut.leftStart = strut.rightStart = window.minY();
        strut.leftEnd = strut.rightEnd = window.maxY() - 1;
        strut.topStart = strut.bottomStart = window.minX();
        strut.topEnd = strut.bottomEnd = window.maxX() - 1;
        struts.push_back(strut);
    }
    return struts;
}

std::vector<Strut> strutsOfEdgeBars(corvid::CGSize rootSize, const std::vector<corvid::CGRect>& windows) {
    // Thinner ones notice a pointer at the edge of the screen.
    constexpr double thinnest = 8;
    constexpr double widestPart = 0.125;
    const auto [width, height] = rootSize;
    std::vector<Strut> struts;
    for (const corvid::CGRect& window : windows) {
        const bool spansWidth = window.minX() <= 0 && window.maxX() >= width;
        const bool spansHeight = window.minY() <= 0 && window.maxY() >= height;
        const auto isBar = [](double shown, double whole) { return shown >= thinnest && shown <= whole * widestPart; };
        Strut strut;
        if (spansWidth && window.minY() <= 0 && isBar(window.maxY(), height)) {
            strut.top = window.maxY();
        } else if (spansWidth && window.maxY() >= height && isBar(height - window.minY(), height)) {
            strut.bottom = height - window.minY();
        } else if (spansHeight && window.minX() <= 0 && isBar(window.maxX(), width)) {
            strut.left = window.maxX();
        } else if (spansHeight && window.maxX() >= width && isBar(width - window.minX(), width)) {
            strut.right = width - window.minX();
        } else {
            continue;
        }
        strut.leftEnd = strut.rightEnd = height - 1;
        strut.topEnd = strut.bottomEnd = width - 1;
        struts.push_back(strut);
    }
    return struts;
}

std::vector<corvid::CGRect> readUnmanagedWindows(Connection& connection) {
    return readWindows(connection, [](xcb_window_t, const auto& attributes) {
        return attributes.override_redirect != 0 && attributes.map_state == XCB_MAP_STATE_VIEWABLE;
    });
}

std::vector<corvid::CGRect> readUnmanagedWindowsOf(Connection& connection, xcb_window_t relative) {
    // The server gives each program a range of numbers.
    const std::uint32_t numbers = ~xcb_get_setup(connection.raw())->resource_id_mask;
    return readWindows(connection, [=](xcb_window_t window, const auto& attributes) {
        return attributes.override_redirect != 0 && attributes.map_state == XCB_MAP_STATE_VIEWABLE &&
               attributes._class == XCB_WINDOW_CLASS_INPUT_OUTPUT && (window & numbers) == (relative & numbers);
    });
}

} // namespace platform::x11
