#include "Platform/X11/WorkSpaceRequest.h"

#include "Platform/X11/PropertyValue.h"

namespace platform::x11 {

namespace {

constexpr std::uint32_t strutValues = 12;
constexpr std::uint32_t mostMonitorValues = 4 * 64;
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

WorkSpaceRequest::WorkSpaceRequest(Connection& connection, const std::vector<xcb_window_t>& clients,
                                   xcb_atom_t monitorWorkAreasName)
    : monitorWorkAreas(requestProperty(connection, connection.root(), monitorWorkAreasName, mostMonitorValues)) {
    clientRequests.reserve(clients.size());
    for (const xcb_window_t client : clients) {
        clientRequests.push_back({
            .partialStrut = requestProperty(connection, client, connection.atom(Atom::netWmStrutPartial), strutValues),
            .strut = requestProperty(connection, client, connection.atom(Atom::netWmStrut), strutValues),
            .desktop = requestProperty(connection, client, connection.atom(Atom::netWmDesktop), 1),
        });
    }
}

WorkSpace WorkSpaceRequest::read(Connection& connection, const RootFacts& root) {
    WorkSpace space{.rootSize = root.size,
                    .monitors = root.monitors,
                    .struts = {},
                    .workArea = std::nullopt,
                    .monitorWorkAreas = {}};
    for (const ClientRequest& client : clientRequests) {
        const auto partial = readWords(connection, client.partialStrut);
        const auto plain = readWords(connection, client.strut);
        const auto desktop = readWords(connection, client.desktop);
        const auto strut = strutFromValues(partial.empty() ? plain : partial);
        const bool isHere = desktop.empty() || desktop.front() == allDesktops || desktop.front() == root.currentDesktop;
        if (strut && isHere) {
            space.struts.push_back(*strut);
        }
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
