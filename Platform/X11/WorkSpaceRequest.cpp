#include "Platform/X11/WorkSpaceRequest.h"

#include "Platform/X11/PropertyValue.h"

#include <algorithm>

namespace platform::x11 {

namespace {

constexpr std::uint32_t strutValues = 12;
constexpr std::size_t rectangleValues = 4;
// `_NET_WM_DESKTOP` of a window that is on all desktops.
constexpr std::uint32_t allDesktops = 0xffffffff;

corvid::CGRect rectangleAt(const std::vector<std::uint32_t>& values, std::size_t first) {
    const auto signedValue = [&](std::size_t offset) {
        return static_cast<double>(static_cast<std::int32_t>(values[first + offset]));
    };
    return {{signedValue(0), signedValue(1)}, {signedValue(2), signedValue(3)}};
}

} // namespace

WorkSpaceRequest::WorkSpaceRequest(Connection& connection, std::span<const xcb_window_t> clients,
                                   xcb_atom_t monitorWorkAreasName)
    : unasked(clients)
    , monitorWorkAreas(requestProperty(connection, connection.root(), monitorWorkAreasName)) {
    askOn(connection);
}

void WorkSpaceRequest::askOn(Connection& connection) {
    // More than any desktop has.
    constexpr std::size_t mostAtOnce = 256;
    static_assert(mostAtOnce * 3 * sizeof(xcb_get_property_request_t) < largestBurst);
    const std::span asked = unasked.first(std::min(unasked.size(), mostAtOnce));
    unasked = unasked.subspan(asked.size());
    clientRequests.clear();
    clientRequests.reserve(asked.size());
    for (const xcb_window_t client : asked) {
        clientRequests.push_back({
            .partialStrut = requestProperty(connection, client, connection.atom(Atom::netWmStrutPartial), strutValues),
            .strut = requestProperty(connection, client, connection.atom(Atom::netWmStrut), strutValues),
            .desktop = requestProperty(connection, client, connection.atom(Atom::netWmDesktop), 1),
        });
    }
}

void WorkSpaceRequest::readAsked(Connection& connection, std::uint32_t currentDesktop, WorkSpace& space) {
    for (const ClientRequest& client : clientRequests) {
        const auto partial = readWords(connection, client.partialStrut);
        const auto plain = readWords(connection, client.strut);
        const auto desktop = readWords(connection, client.desktop);
        const auto strut = strutFromValues(partial.empty() ? plain : partial);
        const bool isHere = desktop.empty() || desktop.front() == allDesktops || desktop.front() == currentDesktop;
        if (strut && isHere) {
            space.struts.push_back(*strut);
        }
    }
}

void WorkSpaceRequest::drop(Connection& connection) {
    WorkSpace space;
    readAsked(connection, 0, space);
    static_cast<void>(readWords(connection, monitorWorkAreas));
}

WorkSpace WorkSpaceRequest::read(Connection& connection, const RootFacts& root) {
    WorkSpace space{.rootSize = root.size,
                    .monitors = root.monitors,
                    .struts = {},
                    .workArea = std::nullopt,
                    .monitorWorkAreas = {}};
    readAsked(connection, root.currentDesktop, space);
    while (!unasked.empty() && !connection.isExhausted()) {
        askOn(connection);
        readAsked(connection, root.currentDesktop, space);
    }
    const auto boxes = readWords(connection, monitorWorkAreas);
    for (std::size_t first = 0; first + rectangleValues <= boxes.size(); first += rectangleValues) {
        space.monitorWorkAreas.push_back(rectangleAt(boxes, first));
    }
    const std::size_t first = rectangleValues * root.currentDesktop;
    if (first + rectangleValues <= root.workAreas.size()) {
        space.workArea = rectangleAt(root.workAreas, first);
    }
    return space;
}

} // namespace platform::x11
