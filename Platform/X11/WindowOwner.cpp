#include "Platform/X11/WindowOwner.h"

#include "Platform/X11/PropertyValue.h"

namespace platform::x11 {

namespace {

std::optional<xcb_res_query_client_ids_cookie_t> requestOwner(Connection& connection, xcb_window_t window) {
    if (!connection.has(xcb_res_id)) {
        return std::nullopt;
    }
    const xcb_res_client_id_spec_t specification{.client = window, .mask = XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    return xcb_res_query_client_ids(connection.raw(), 1, &specification);
}

std::optional<std::uint32_t> localClientProcess(Connection& connection,
                                                const std::optional<xcb_res_query_client_ids_cookie_t>& cookie) {
    const auto answer = cookie ? connection.reply<xcb_res_query_client_ids_reply_t>(*cookie) : nullptr;
    if (!answer) {
        return std::nullopt;
    }
    for (auto ids = xcb_res_query_client_ids_ids_iterator(answer.get()); ids.rem > 0;
         xcb_res_client_id_value_next(&ids)) {
        const bool isProcess = (ids.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0;
        if (isProcess && xcb_res_client_id_value_value_length(ids.data) > 0) {
            return *xcb_res_client_id_value_value(ids.data);
        }
    }
    return std::nullopt;
}

} // namespace

ProcessIdentifier windowOwner(std::optional<std::uint32_t> localClientProcess,
                              const std::vector<std::uint32_t>& claimed, xcb_window_t window,
                              std::uint32_t resourceIdentifierMask) {
    constexpr std::uint32_t largestProcess = 0x7fffffff;
    if (localClientProcess && *localClientProcess > 0 && *localClientProcess <= largestProcess) {
        return static_cast<ProcessIdentifier>(*localClientProcess);
    }
    if (!claimed.empty() && claimed.front() > 0 && claimed.front() <= largestProcess) {
        return static_cast<ProcessIdentifier>(claimed.front());
    }
    // Resource identifiers use 29 bits, so the base is a positive number and never zero for a client.
    return -static_cast<ProcessIdentifier>(window & ~resourceIdentifierMask & largestProcess);
}

WindowOwnerRequest::WindowOwnerRequest(Connection& connection, xcb_window_t window)
    : window(window)
    , claimedProcess(requestProperty(connection, window, connection.atom(Atom::netWmPid), 1))
    , owner(requestOwner(connection, window)) {
}

ProcessIdentifier WindowOwnerRequest::read(Connection& connection) const {
    const auto claimed = readWords(connection, claimedProcess);
    const auto known = localClientProcess(connection, owner);
    return windowOwner(known, claimed, window, xcb_get_setup(connection.raw())->resource_id_mask);
}

} // namespace platform::x11
