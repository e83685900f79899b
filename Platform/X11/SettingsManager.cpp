#include "Platform/X11/SettingsManager.h"

#include "Platform/Linux/Services/ThemeName.h"
#include "Platform/X11/Event.h"
#include "Platform/X11/PropertyValue.h"
#include "Platform/X11/XSettingsFormat.h"

#include <array>
#include <span>
#include <string>
#include <utility>

namespace platform::x11 {

namespace {

/// Ten times the size on usual desktops, in 32-bit units.
constexpr std::uint32_t mostWords = 16384;

template <typename Value>
const Value* find(const XSettings& settings, std::string_view name) {
    const auto found = settings.find(name);
    return found == settings.end() ? nullptr : std::get_if<Value>(&found->second);
}

linux::AppearanceWishes wishesOf(const XSettings& settings) {
    linux::AppearanceWishes wishes;
    if (const auto* theme = find<std::string>(settings, "Net/ThemeName")) {
        wishes.colorScheme = linux::colorSchemeOfTheme(*theme);
    }
    if (const auto* isAnimated = find<std::int32_t>(settings, "Gtk/EnableAnimations")) {
        wishes.reducesMotion = *isAnimated == 0;
    }
    return wishes;
}

} // namespace

void SettingsManager::follow(std::function<void()> newChanged) {
    internNames();
    // A new manager announces itself with an event on the root window (ICCCM 2.8).
    selection.selectBeside(connection.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    find();
    changed = std::move(newChanged);
}

void SettingsManager::internNames() {
    const std::array<std::string, 3> names{"_XSETTINGS_S" + std::to_string(connection.screenNumber()), "MANAGER",
                                           "_XSETTINGS_SETTINGS"};
    std::array<xcb_intern_atom_cookie_t, names.size()> requests{};
    for (std::size_t index = 0; index < names.size(); ++index) {
        requests[index] =
            xcb_intern_atom(connection.raw(), 0, static_cast<std::uint16_t>(names[index].size()), names[index].data());
    }
    const std::array<xcb_atom_t*, names.size()> atoms{&managerSelection, &announcement, &property};
    for (std::size_t index = 0; index < names.size(); ++index) {
        const auto interned = connection.reply<xcb_intern_atom_reply_t>(requests[index]);
        *atoms[index] = interned ? interned->atom : xcb_atom_t{XCB_ATOM_NONE};
    }
}

void SettingsManager::handle(const xcb_generic_event_t& event) {
    if (const auto* message = eventAs<xcb_client_message_event_t>(event, XCB_CLIENT_MESSAGE)) {
        if (message->window == connection.root() && announcement != XCB_ATOM_NONE && message->type == announcement &&
            message->data.data32[1] == managerSelection) {
            find();
        }
    } else if (manager == XCB_WINDOW_NONE) {
        return;
    } else if (const auto* written = eventAs<xcb_property_notify_event_t>(event, XCB_PROPERTY_NOTIFY)) {
        if (written->window == manager && written->atom == property) {
            read();
        }
    } else if (const auto* destroyed = eventAs<xcb_destroy_notify_event_t>(event, XCB_DESTROY_NOTIFY)) {
        if (destroyed->window == manager) {
            find();
        }
    }
}

void SettingsManager::find() {
    const auto owner =
        connection.reply<xcb_get_selection_owner_reply_t>(xcb_get_selection_owner(connection.raw(), managerSelection));
    if (manager != XCB_WINDOW_NONE) {
        selection.selectBeside(manager, XCB_EVENT_MASK_NO_EVENT);
    }
    manager = owner ? owner->owner : xcb_window_t{XCB_WINDOW_NONE};
    if (manager != XCB_WINDOW_NONE) {
        selection.selectBeside(manager, XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
    }
    read();
}

void SettingsManager::read() {
    linux::AppearanceWishes wishes;
    if (manager != XCB_WINDOW_NONE) {
        const std::string contents = readText(connection, requestProperty(connection, manager, property, mostWords));
        wishes = wishesOf(readXSettings(std::as_bytes(std::span(contents))));
    }
    if (std::exchange(known, wishes) != wishes && changed) {
        changed();
    }
}

} // namespace platform::x11
