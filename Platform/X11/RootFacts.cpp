#include "Platform/X11/RootFacts.h"

#include "Platform/X11/PropertyValue.h"

#include <algorithm>
#include <utility>

namespace platform::x11 {

namespace {

// More windows than any desktop has; a list that claims more is cut off rather than believed.
constexpr std::uint32_t mostClients = 4096;
// Four for each workspace.
constexpr std::uint32_t mostWorkAreaValues = 4 * 1024;

std::vector<corvid::CGRect> readMonitors(Connection& connection,
                                         const std::optional<xcb_randr_get_monitors_cookie_t>& cookie) {
    std::vector<corvid::CGRect> monitors;
    const auto answer = cookie ? connection.reply<xcb_randr_get_monitors_reply_t>(*cookie) : nullptr;
    if (!answer) {
        return monitors;
    }
    for (auto infos = xcb_randr_get_monitors_monitors_iterator(answer.get()); infos.rem > 0;
         xcb_randr_monitor_info_next(&infos)) {
        const auto& info = *infos.data;
        if (info.width == 0 || info.height == 0) {
            continue;
        }
        const corvid::CGRect monitor{{static_cast<double>(info.x), static_cast<double>(info.y)},
                                     {static_cast<double>(info.width), static_cast<double>(info.height)}};
        if (info.primary != 0) {
            monitors.insert(monitors.begin(), monitor);
        } else {
            monitors.push_back(monitor);
        }
    }
    return monitors;
}

std::uint32_t firstWord(const std::vector<std::uint32_t>& words) {
    return words.empty() ? 0 : words.front();
}

} // namespace

RootFactsRequest::RootFactsRequest(Connection& connection)
    : activeWindow(requestProperty(connection, connection.root(), connection.atom(Atom::netActiveWindow), 1))
    , clients(requestProperty(connection, connection.root(), connection.atom(Atom::netClientList), mostClients))
    , currentDesktop(requestProperty(connection, connection.root(), connection.atom(Atom::netCurrentDesktop), 1))
    , workAreas(requestProperty(connection, connection.root(), connection.atom(Atom::netWorkarea), mostWorkAreaValues))
    , geometry(xcb_get_geometry(connection.raw(), connection.root())) {
    if (connection.has(xcb_randr_id)) {
        monitors = xcb_randr_get_monitors(connection.raw(), connection.root(), 1);
    }
}

std::optional<RootFacts> RootFactsRequest::read(Connection& connection) {
    RootFacts facts{
        .activeWindow = firstWord(readWords(connection, activeWindow)),
        .clients = readWords(connection, clients),
        .currentDesktop = firstWord(readWords(connection, currentDesktop)),
        .workAreas = readWords(connection, workAreas),
        .size = {},
        .monitors = {},
    };
    const auto root = connection.reply<xcb_get_geometry_reply_t>(geometry);
    facts.monitors = readMonitors(connection, monitors);
    if (!root) {
        return std::nullopt;
    }
    facts.size = {static_cast<double>(root->width), static_cast<double>(root->height)};
    if (facts.monitors.empty()) {
        facts.monitors.push_back({{0, 0}, facts.size});
    }
    return facts;
}

} // namespace platform::x11
