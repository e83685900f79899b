#include "TrayOwner.h"

#include "Platform/X11/Event.h"

#include <array>
#include <cstring>

namespace platform::x11 {

namespace {

xcb_visualid_t visualOfDepth(const xcb_screen_t& screen, std::uint8_t depth) {
    for (auto depths = xcb_screen_allowed_depths_iterator(&screen); depths.rem > 0; xcb_depth_next(&depths)) {
        if (depths.data->depth == depth && xcb_depth_visuals_length(depths.data) > 0) {
            return xcb_depth_visuals(depths.data)->visual_id;
        }
    }
    return XCB_NONE;
}

} // namespace

TrayOwner::TrayOwner(const std::string& display, std::uint8_t depth, std::vector<std::uint32_t> colours)
    : testClient(display) {
    xcb_connection_t* raw = testClient.connection().raw();
    const xcb_window_t root = testClient.connection().root();
    owner = xcb_generate_id(raw);
    xcb_create_window(raw, XCB_COPY_FROM_PARENT, owner, root, -10, -10, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    box = xcb_generate_id(raw);
    const std::array<std::uint32_t, 2> values{boxColour, 1};
    xcb_create_window(raw, XCB_COPY_FROM_PARENT, box, root, 300, 200, 100, 60, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values.data());
    xcb_map_window(raw, box);
    if (depth != 0) {
        testClient.setWords(owner, "_NET_SYSTEM_TRAY_VISUAL", "VISUALID",
                            {visualOfDepth(testClient.connection().screenSetup(), depth)});
    }
    if (!colours.empty()) {
        testClient.setWords(owner, "_NET_SYSTEM_TRAY_COLORS", "CARDINAL", colours);
    }
    announce();
}

void TrayOwner::announce() {
    xcb_connection_t* raw = testClient.connection().raw();
    const xcb_atom_t selection = testClient.atom("_NET_SYSTEM_TRAY_S0");
    xcb_set_selection_owner(raw, owner, selection, XCB_CURRENT_TIME);
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = testClient.connection().root();
    message.type = testClient.atom("MANAGER");
    message.data.data32[1] = selection;
    message.data.data32[2] = owner;
    xcb_send_event(raw, 0, testClient.connection().root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    testClient.connection().flush();
}

const std::vector<xcb_window_t>& TrayOwner::asked() {
    const xcb_atom_t opcode = testClient.atom("_NET_SYSTEM_TRAY_OPCODE");
    while (const auto event = testClient.connection().nextEvent()) {
        const auto* message = eventAs<xcb_client_message_event_t>(*event, XCB_CLIENT_MESSAGE);
        if (message != nullptr && message->type == opcode && message->window == owner && message->data.data32[1] == 0) {
            requests.push_back(message->data.data32[2]);
        }
    }
    return requests;
}

void TrayOwner::embed(xcb_window_t window, std::uint16_t size) {
    xcb_connection_t* raw = testClient.connection().raw();
    const std::array<std::uint32_t, 2> sizes{size, size};
    xcb_configure_window(raw, window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, sizes.data());
    xcb_reparent_window(raw, window, box, 10, 5);
    xcb_map_window(raw, window);
    testClient.connection().flush();
}

void TrayOwner::letGo(xcb_window_t window) {
    xcb_reparent_window(testClient.connection().raw(), window, testClient.connection().root(), 0, 0);
    testClient.connection().flush();
}

void TrayOwner::leave() {
    if (owner != XCB_WINDOW_NONE) {
        testClient.destroy(box);
        testClient.destroy(owner);
        owner = XCB_WINDOW_NONE;
    }
}

void TrayOwner::click(xcb_window_t window, std::uint8_t button, std::int16_t rootX, std::int16_t rootY) {
    xcb_button_press_event_t press{};
    press.response_type = XCB_BUTTON_PRESS;
    press.detail = button;
    press.event = window;
    press.root = testClient.connection().root();
    press.root_x = rootX;
    press.root_y = rootY;
    press.same_screen = 1;
    xcb_send_event(testClient.connection().raw(), 0, window, XCB_EVENT_MASK_BUTTON_PRESS,
                   reinterpret_cast<const char*>(&press));
    testClient.connection().flush();
}

std::vector<std::uint32_t> TrayOwner::pixels(xcb_window_t window, std::uint16_t size) {
    testClient.connection().deadline().begin();
    const auto image = testClient.connection().reply<xcb_get_image_reply_t>(
        xcb_get_image(testClient.connection().raw(), XCB_IMAGE_FORMAT_Z_PIXMAP, window, 0, 0, size, size, ~0U));
    if (!image) {
        return {};
    }
    std::vector<std::uint32_t> result(std::size_t{size} * size);
    std::memcpy(result.data(), xcb_get_image_data(image.get()), result.size() * sizeof result[0]);
    return result;
}

std::uint8_t TrayOwner::depthOf(xcb_window_t window) {
    testClient.connection().deadline().begin();
    const auto geometry = testClient.connection().reply<xcb_get_geometry_reply_t>(
        xcb_get_geometry(testClient.connection().raw(), window));
    return geometry ? geometry->depth : std::uint8_t{0};
}

bool TrayOwner::exists(xcb_window_t window) {
    return depthOf(window) != 0;
}

} // namespace platform::x11
