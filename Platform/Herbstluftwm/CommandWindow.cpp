#include "Platform/Herbstluftwm/CommandWindow.h"

#include "Platform/X11/Event.h"
#include "Platform/X11/PropertyValue.h"

#include <cstdint>
#include <utility>

namespace platform::herbstluftwm {

namespace {

using namespace std::string_view_literals;

/// WM_CLASS has two texts that end in zeros.
constexpr std::string_view className = "HERBST_IPC_CLASS\0HERBST_IPC_CLASS\0"sv;

/// Some ten thousand windows, in 32-bit units.
constexpr std::uint32_t longestOutput = std::uint32_t{64} << 10U;

void setText(x11::Connection& connection, xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
             std::string_view text) {
    xcb_change_property(connection.raw(), XCB_PROP_MODE_REPLACE, window, property, type, 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
}

} // namespace

std::optional<std::string> CommandWindow::outputOf(x11::Connection& connection, const std::vector<std::string>& words) {
    if (connection.isBacklogged() || !internNames(connection)) {
        return std::nullopt;
    }
    std::string arguments;
    for (const std::string& word : words) {
        arguments.append(word).push_back('\0');
    }
    arguments.pop_back();

    const xcb_window_t window = xcb_generate_id(connection.raw());
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    // Sent at once, because herbstluftwm looks at the class as soon as it hears of the window.
    xcb_create_window(connection.raw(), XCB_COPY_FROM_PARENT, window, connection.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    setText(connection, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, className);
    setText(connection, window, names.arguments, connection.atom(x11::Atom::utf8String), arguments);
    connection.flush();
    auto output = readReply(connection, window);
    xcb_destroy_window(connection.raw(), window);
    return output;
}

bool CommandWindow::internNames(x11::Connection& connection) {
    if (names.status != XCB_ATOM_NONE) {
        return true;
    }
    const auto request = [&](std::string_view name) {
        return xcb_intern_atom(connection.raw(), 0, static_cast<std::uint16_t>(name.size()), name.data());
    };
    const auto arguments = request("_HERBST_IPC_ARGS");
    const auto output = request("_HERBST_IPC_OUTPUT");
    const auto status = request("_HERBST_IPC_EXIT_STATUS");
    const auto read = [&](xcb_intern_atom_cookie_t cookie) {
        const auto interned = connection.reply<xcb_intern_atom_reply_t>(cookie);
        return interned ? interned->atom : xcb_atom_t{XCB_ATOM_NONE};
    };
    names.arguments = read(arguments);
    names.output = read(output);
    names.status = read(status);
    return names.status != XCB_ATOM_NONE;
}

std::optional<std::string> CommandWindow::readReply(x11::Connection& connection, xcb_window_t window) const {
    bool hasOutput = false;
    bool hasStatus = false;
    const bool isComplete = connection.waitForEvent(connection.deadline().end(), [&](const xcb_generic_event_t& event) {
        const auto* changed = x11::eventAs<xcb_property_notify_event_t>(event, XCB_PROPERTY_NOTIFY);
        if (changed == nullptr || changed->window != window) {
            return false;
        }
        hasOutput = hasOutput || changed->atom == names.output;
        hasStatus = hasStatus || changed->atom == names.status;
        return hasOutput && hasStatus;
    });
    if (!isComplete) {
        return std::nullopt;
    }
    const auto statusRequest = x11::requestProperty(connection, window, names.status, 1);
    const auto outputRequest = x11::requestProperty(connection, window, names.output, longestOutput);
    const auto status = x11::readWords(connection, statusRequest);
    std::string output = x11::readText(connection, outputRequest);
    return status == std::vector<std::uint32_t>{0} ? std::optional(std::move(output)) : std::nullopt;
}

} // namespace platform::herbstluftwm
