#include "TestClient.h"

#include "Platform/X11/Event.h"

#include <stdexcept>

namespace platform::x11 {

namespace {

Connection connect(const std::string& display, linux::TurnDeadline& deadline) {
    auto opened = Connection::open(display, deadline);
    if (!opened) {
        throw std::runtime_error(opened.error());
    }
    return *std::move(opened);
}

} // namespace

TestClient::TestClient(const std::string& display)
    : link(connect(display, clock.turnDeadline())) {
}

xcb_atom_t TestClient::atom(std::string_view name) {
    link.deadline().begin();
    const auto interned = link.reply<xcb_intern_atom_reply_t>(
        xcb_intern_atom(link.raw(), 0, static_cast<std::uint16_t>(name.size()), name.data()));
    return interned ? interned->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void TestClient::setText(xcb_window_t window, std::string_view property, std::string_view text) {
    xcb_change_property(link.raw(), XCB_PROP_MODE_REPLACE, window, atom(property), XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
    finish();
}

void TestClient::setWords(xcb_window_t window, std::string_view property, std::string_view type,
                          const std::vector<std::uint32_t>& words) {
    xcb_change_property(link.raw(), XCB_PROP_MODE_REPLACE, window, atom(property), atom(type), 32,
                        static_cast<std::uint32_t>(words.size()), words.data());
    finish();
}

void TestClient::removeProperty(xcb_window_t window, std::string_view property) {
    xcb_delete_property(link.raw(), window, atom(property));
    finish();
}

void TestClient::destroy(xcb_window_t window) {
    xcb_destroy_window(link.raw(), window);
    finish();
}

void TestClient::awaitEnd(xcb_window_t window) {
    const auto exists = [&] {
        link.deadline().begin();
        return link.reply<xcb_get_geometry_reply_t>(xcb_get_geometry(link.raw(), window)) != nullptr;
    };
    while (exists()) {
    }
}

void TestClient::list(const std::vector<xcb_window_t>& windows) {
    setWords(link.root(), "_NET_CLIENT_LIST", "WINDOW", windows);
}

void TestClient::becomeWindowManager() {
    becomeSilentWindowManager();
    const xcb_window_t check = xcb_generate_id(link.raw());
    xcb_create_window(link.raw(), XCB_COPY_FROM_PARENT, check, link.root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    setWords(check, "_NET_SUPPORTING_WM_CHECK", "WINDOW", {check});
    setWords(link.root(), "_NET_SUPPORTED", "ATOM", {atom("_NET_CLIENT_LIST")});
    setWords(link.root(), "_NET_SUPPORTING_WM_CHECK", "WINDOW", {check});
}

void TestClient::becomeSilentWindowManager() {
    selectOnRoot(XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT);
}

void TestClient::resign() {
    selectOnRoot(0);
    static_cast<void>(waitingRequests());
    requests.clear();
}

std::size_t TestClient::waitingRequests() {
    finish();
    while (const auto event = link.nextEvent()) {
        if (const auto* request = eventAs<xcb_configure_request_event_t>(*event, XCB_CONFIGURE_REQUEST)) {
            requests.push_back(*request);
        }
    }
    return requests.size();
}

void TestClient::answerRequests() {
    static_cast<void>(waitingRequests());
    for (const xcb_configure_request_event_t& request : requests) {
        const std::uint32_t width = request.width;
        xcb_configure_window(link.raw(), request.window, XCB_CONFIG_WINDOW_WIDTH, &width);
    }
    requests.clear();
    finish();
}

void TestClient::finish() {
    link.deadline().begin();
    static_cast<void>(link.reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(link.raw())));
}

void TestClient::selectOnRoot(std::uint32_t mask) {
    xcb_change_window_attributes(link.raw(), link.root(), XCB_CW_EVENT_MASK, &mask);
    finish();
}

} // namespace platform::x11
