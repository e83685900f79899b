#include "Platform/X11/KeyGrabs.h"

#include "Platform/X11/Keyboard.h"

namespace platform::x11 {

namespace {

/// The modifiers with each combination of locks, in the extension's format.
std::vector<std::uint32_t> extensionModifiers(const KeyCombination& key, std::uint16_t locks) {
    std::vector<std::uint32_t> modifiers;
    for (const std::uint16_t variant : lockVariants(locks)) {
        modifiers.push_back(static_cast<std::uint32_t>(key.modifiers | variant));
    }
    return modifiers;
}

} // namespace

KeyGrabs::Outcome KeyGrabs::take(const KeyCombination& key, std::uint16_t locks, bool borrows) {
    const std::optional<ExtensionGrab> throughExtension = grabThroughExtension(key, locks);
    if (throughExtension && !borrows) {
        // Only the reply matters. The grab is released before the core grab is requested, so that it receives no press.
        release(key, locks, Kind::extension);
    }
    const bool isCoreGranted = connection.succeeded(grabCore(key, locks)).value_or(true);
    const bool isExtensionGranted = !isRefused(throughExtension);
    const bool isHeldByOthers = throughExtension && isCoreGranted != isExtensionGranted;

    std::optional<Kind> kept;
    if (isCoreGranted && (isExtensionGranted || borrows)) {
        kept = Kind::core;
    } else if (isHeldByOthers && borrows) {
        kept = Kind::extension;
    }
    if (kept != Kind::core) {
        release(key, locks, Kind::core);
    }
    if (throughExtension && borrows && kept != Kind::extension) {
        release(key, locks, Kind::extension);
    }
    connection.flush();
    return {.kind = kept,
            .isHeldByOthers = isHeldByOthers,
            .isHeldBothWays = throughExtension && !isCoreGranted && !isExtensionGranted};
}

bool KeyGrabs::renew(const KeyCombination& key, std::uint16_t locks, Kind kind) {
    // Not released before, so that no press is lost in between.
    const bool isGranted = kind == Kind::core ? connection.succeeded(grabCore(key, locks)).value_or(true)
                                              : !isRefused(grabThroughExtension(key, locks));
    if (!isGranted) {
        release(key, locks, kind);
        connection.flush();
    }
    return isGranted;
}

void KeyGrabs::release(const KeyCombination& key, std::uint16_t locks, Kind kind) {
    if (kind == Kind::core) {
        for (const std::uint16_t variant : lockVariants(locks)) {
            xcb_ungrab_key(connection.raw(), key.keyCode, connection.root(),
                           static_cast<std::uint16_t>(key.modifiers | variant));
        }
        return;
    }
    const std::vector<std::uint32_t> modifiers = extensionModifiers(key, locks);
    xcb_input_xi_passive_ungrab_device(connection.raw(), connection.root(), key.keyCode, XCB_INPUT_DEVICE_ALL_MASTER,
                                       static_cast<std::uint16_t>(modifiers.size()), XCB_INPUT_GRAB_TYPE_KEYCODE,
                                       modifiers.data());
}

std::vector<xcb_void_cookie_t> KeyGrabs::grabCore(const KeyCombination& key, std::uint16_t locks) {
    std::vector<xcb_void_cookie_t> cookies;
    for (const std::uint16_t variant : lockVariants(locks)) {
        cookies.push_back(xcb_grab_key_checked(connection.raw(), 0, connection.root(),
                                               static_cast<std::uint16_t>(key.modifiers | variant), key.keyCode,
                                               XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    }
    return cookies;
}

std::optional<KeyGrabs::ExtensionGrab> KeyGrabs::grabThroughExtension(const KeyCombination& key, std::uint16_t locks) {
    if (!connection.has(xcb_input_id)) {
        return std::nullopt;
    }
    const std::vector<std::uint32_t> modifiers = extensionModifiers(key, locks);
    constexpr std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_KEY_RELEASE;
    return xcb_input_xi_passive_grab_device(
        connection.raw(), XCB_CURRENT_TIME, connection.root(), XCB_CURSOR_NONE, key.keyCode,
        XCB_INPUT_DEVICE_ALL_MASTER, static_cast<std::uint16_t>(modifiers.size()), 1, XCB_INPUT_GRAB_TYPE_KEYCODE,
        XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_OWNER_NO_OWNER, &mask,
        modifiers.data());
}

bool KeyGrabs::isRefused(const std::optional<ExtensionGrab>& grab) {
    const auto refused = grab ? connection.reply<xcb_input_xi_passive_grab_device_reply_t>(*grab) : nullptr;
    return refused && refused->num_modifiers > 0;
}

} // namespace platform::x11
