#include "Platform/X11/HotKeys.h"

#include "Platform/Linux/KeyPositions.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace platform::x11 {

HotKeys::HotKeys(Connection& connection)
    : connection(connection) {
}

HotKeys::~HotKeys() {
    releaseAll();
    connection.flush();
}

HotKeyEvents::Registration HotKeys::registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID name) {
    const auto grab = grabFor(keyCode, modifiers);
    if (!grab) {
        return {.status = eventHotKeyInvalidErr, .reference = std::nullopt};
    }
    const bool isOurs =
        std::ranges::any_of(registrations, [&](const auto& entry) { return entry.second.grab == grab; });
    const OSStatus status = isOurs ? eventHotKeyExistsErr : establish(*grab);
    if (status != noErr) {
        return {.status = status, .reference = std::nullopt};
    }
    registrations.emplace(++lastReference,
                          Registered{.keyCode = keyCode, .modifiers = modifiers, .name = name, .grab = grab});
    return {.status = noErr, .reference = EventHotKeyRef{lastReference}};
}

void HotKeys::unregisterHotKey(EventHotKeyRef reference) {
    const auto found = registrations.find(reference.value);
    if (found == registrations.end()) {
        return;
    }
    if (found->second.grab) {
        release(*found->second.grab);
        connection.flush();
    }
    registrations.erase(found);
}

void HotKeys::handlePress(const xcb_key_press_event_t& event) {
    // A key that is held repeats its press without a release between.
    if (heldKey == event.detail) {
        return;
    }
    heldKey = event.detail;
    if (!keyboard || !hasHandler()) {
        return;
    }
    constexpr unsigned keyModifiers = 0xff;
    const Grab pressed{event.detail,
                       static_cast<std::uint16_t>(event.state & keyModifiers & ~unsigned{keyboard->lockModifiers})};
    const auto found =
        std::ranges::find_if(registrations, [&](const auto& entry) { return entry.second.grab == pressed; });
    if (found != registrations.end()) {
        tellOfPress(found->second.name);
    }
}

void HotKeys::handleRelease(const xcb_key_release_event_t& event) {
    if (heldKey == event.detail) {
        heldKey.reset();
    }
}

bool HotKeys::followKeyboard() {
    auto present = readKeyboardMap(connection);
    if (!present) {
        return false;
    }
    if (present != keyboard) {
        releaseAll();
        keyboard = std::move(present);
        renew();
    }
    return true;
}

void HotKeys::renew() {
    for (auto& [reference, registered] : registrations) {
        // Not released first: a grab replaces an equal one of the same client, and no press falls between.
        registered.grab = grabFor(registered.keyCode, registered.modifiers);
        if (registered.grab && establish(*registered.grab) != noErr) {
            registered.grab.reset();
            grabWasLost = true;
        }
    }
    connection.flush();
}

bool HotKeys::takeLoss() {
    return std::exchange(grabWasLost, false);
}

const KeyboardMap* HotKeys::keyboardMap() {
    if (!keyboard) {
        keyboard = readKeyboardMap(connection);
        // A server that is too busy to answer has refused nothing.
        grabWasLost = grabWasLost || !keyboard;
    }
    return keyboard ? &*keyboard : nullptr;
}

std::optional<HotKeys::Grab> HotKeys::grabFor(std::uint32_t keyCode, std::uint32_t modifiers) {
    const KeyboardMap* map = keyboardMap();
    const auto name = linux::xkbKeyName(keyCode);
    if (map == nullptr || !name) {
        return std::nullopt;
    }
    const auto key = map->keyCode(*name);
    return key ? std::optional(Grab{*key, coreModifiers(*map, modifiers)}) : std::nullopt;
}

OSStatus HotKeys::establish(const Grab& grab) {
    const auto attempt = tryThroughExtension(grab);
    std::vector<xcb_void_cookie_t> cookies;
    for (const std::uint16_t locks : lockVariants(keyboard->lockModifiers)) {
        cookies.push_back(xcb_grab_key_checked(connection.raw(), 0, connection.root(),
                                               static_cast<std::uint16_t>(grab.modifiers | locks), grab.keyCode,
                                               XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    }
    // A server that is too busy to answer has refused nothing.
    const bool isGranted = connection.succeeded(cookies).value_or(true);
    if (!isGranted || isRefused(attempt)) {
        release(grab);
        connection.flush();
        return eventHotKeyExistsErr;
    }
    return noErr;
}

std::optional<xcb_input_xi_passive_grab_device_cookie_t> HotKeys::tryThroughExtension(const Grab& grab) {
    if (!connection.has(xcb_input_id)) {
        return std::nullopt;
    }
    std::vector<std::uint32_t> modifiers;
    for (const std::uint16_t locks : lockVariants(keyboard->lockModifiers)) {
        modifiers.push_back(static_cast<std::uint32_t>(grab.modifiers | locks));
    }
    constexpr std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS;
    const auto count = static_cast<std::uint16_t>(modifiers.size());
    const auto request = xcb_input_xi_passive_grab_device(
        connection.raw(), XCB_CURRENT_TIME, connection.root(), XCB_CURSOR_NONE, grab.keyCode,
        XCB_INPUT_DEVICE_ALL_MASTER, count, 1, XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_ASYNC,
        XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_OWNER_NO_OWNER, &mask, modifiers.data());
    xcb_input_xi_passive_ungrab_device(connection.raw(), connection.root(), grab.keyCode, XCB_INPUT_DEVICE_ALL_MASTER,
                                       count, XCB_INPUT_GRAB_TYPE_KEYCODE, modifiers.data());
    return request;
}

bool HotKeys::isRefused(const std::optional<xcb_input_xi_passive_grab_device_cookie_t>& attempt) {
    const auto refused = attempt ? connection.reply<xcb_input_xi_passive_grab_device_reply_t>(*attempt) : nullptr;
    return refused && refused->num_modifiers > 0;
}

void HotKeys::release(const Grab& grab) {
    for (const std::uint16_t locks : lockVariants(keyboard->lockModifiers)) {
        xcb_ungrab_key(connection.raw(), grab.keyCode, connection.root(),
                       static_cast<std::uint16_t>(grab.modifiers | locks));
    }
}

void HotKeys::releaseAll() {
    for (auto& [reference, registered] : registrations) {
        if (registered.grab) {
            release(*registered.grab);
            registered.grab.reset();
        }
    }
}

} // namespace platform::x11
