#include "Platform/X11/HotKeys.h"

#include "CorvidKitCore/Keys.h"
#include "Platform/X11/Event.h"

#include <xcb/xinput.h>

#include <algorithm>
#include <utility>

namespace platform::x11 {

HotKeys::HotKeys(Connection& connection)
    : connection(connection)
    , grabs(connection) {
}

HotKeys::~HotKeys() {
    for (auto& [reference, registered] : registrations) {
        release(registered);
    }
    connection.flush();
}

HotKeyEvents::Registration HotKeys::registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID name) {
    const Carbon carbon{keyCode, modifiers};
    const auto key = combinationFor(carbon);
    if (!key) {
        return {.status = eventHotKeyInvalidErr, .reference = std::nullopt};
    }
    const bool isOurs = std::ranges::any_of(
        registrations, [&](const auto& entry) { return entry.second.grab && entry.second.key == *key; });
    Registered registered{
        .carbon = carbon, .name = name, .key = *key, .grab = std::nullopt, .borrowedThrough = std::nullopt};
    if (!isOurs) {
        take(registered);
    }
    if (!registered.grab) {
        return {.status = eventHotKeyExistsErr, .reference = std::nullopt};
    }
    registrations.emplace(++lastReference, registered);
    return {.status = noErr, .reference = EventHotKeyRef{lastReference}};
}

void HotKeys::unregisterHotKey(EventHotKeyRef reference) {
    const auto found = registrations.find(reference.value);
    if (found == registrations.end()) {
        return;
    }
    release(found->second);
    connection.flush();
    registrations.erase(found);
}

HotKeyLoan HotKeys::loan(std::uint32_t keyCode, std::uint32_t modifiers) const {
    const Carbon carbon{keyCode, modifiers};
    const bool isMade = std::ranges::any_of(registrations, [&](const auto& entry) {
        return entry.second.carbon == carbon && entry.second.grab && entry.second.borrowedThrough;
    });
    if (isMade) {
        return HotKeyLoan::made;
    }
    return refused.isLendable(carbon) ? HotKeyLoan::possible : HotKeyLoan::none;
}

std::optional<LoanObstacle> HotKeys::loanObstacle(std::uint32_t keyCode, std::uint32_t modifiers) const {
    return refused.obstacle({keyCode, modifiers});
}

void HotKeys::handle(const xcb_generic_event_t& event) {
    if (const auto* pressed = eventAs<xcb_key_press_event_t>(event, XCB_KEY_PRESS)) {
        press({.keyCode = pressed->detail, .modifiers = pressed->state});
    } else if (const auto* released = eventAs<xcb_key_release_event_t>(event, XCB_KEY_RELEASE)) {
        releaseKey(released->detail);
    } else if (const auto* generic = eventAs<xcb_ge_generic_event_t>(event, XCB_GE_GENERIC)) {
        const xcb_query_extension_reply_t* input = xcb_get_extension_data(connection.raw(), &xcb_input_id);
        if (input == nullptr || generic->extension != input->major_opcode) {
            return;
        }
        // Presses and releases have the same layout (XI2, DeviceEvent).
        const auto& key = reinterpret_cast<const xcb_input_key_press_event_t&>(event);
        const auto keyCode = static_cast<xcb_keycode_t>(key.detail);
        if (generic->event_type == XCB_INPUT_KEY_PRESS) {
            press({.keyCode = keyCode, .modifiers = static_cast<std::uint16_t>(key.mods.effective)});
        } else if (generic->event_type == XCB_INPUT_KEY_RELEASE) {
            releaseKey(keyCode);
        }
    }
}

void HotKeys::press(const KeyCombination& pressed) {
    // A held key repeats its press without a release in between.
    if (heldKey == pressed.keyCode) {
        return;
    }
    heldKey = pressed.keyCode;
    if (!keyboard || !hasHandler()) {
        return;
    }
    constexpr unsigned keyModifiers = 0xff;
    const KeyCombination key{
        .keyCode = pressed.keyCode,
        .modifiers = static_cast<std::uint16_t>(pressed.modifiers & keyModifiers & ~unsigned{keyboard->lockModifiers})};
    const auto found = std::ranges::find_if(
        registrations, [&](const auto& entry) { return entry.second.grab && entry.second.key == key; });
    if (found != registrations.end()) {
        reportPress(found->second.name);
    }
}

void HotKeys::releaseKey(xcb_keycode_t key) {
    if (heldKey == key) {
        heldKey.reset();
    }
}

bool HotKeys::followKeyboard() {
    auto present = readKeyboardMap(connection);
    if (!present) {
        return false;
    }
    if (present != keyboard) {
        for (auto& [reference, registered] : registrations) {
            release(registered);
        }
        keyboard = std::move(present);
        renew();
    }
    return true;
}

void HotKeys::renew() {
    for (auto& [reference, registered] : registrations) {
        renew(registered);
    }
    connection.flush();
}

bool HotKeys::renewBorrowed() {
    bool isAny = false;
    for (auto& [reference, registered] : registrations) {
        if (registered.borrowedThrough) {
            renew(registered);
            isAny = true;
        }
    }
    return isAny;
}

bool HotKeys::hasBorrowed() const {
    return std::ranges::any_of(registrations,
                               [](const auto& entry) { return entry.second.borrowedThrough.has_value(); });
}

const KeyboardMap* HotKeys::keyboardMap() {
    if (!keyboard) {
        keyboard = readKeyboardMap(connection);
        // A server that is too busy to answer has refused nothing.
        if (!keyboard) {
            reportLoss();
        }
    }
    return keyboard ? &*keyboard : nullptr;
}

std::optional<KeyCombination> HotKeys::combinationFor(const Carbon& carbon) {
    const KeyboardMap* map = keyboardMap();
    const corvid::Key* place = corvid::keyOf(carbon.first);
    if (map == nullptr || place == nullptr) {
        return std::nullopt;
    }
    const auto key = map->keyCode(place->xkbName);
    return key ? std::optional(KeyCombination{*key, coreModifiers(*map, carbon.second)}) : std::nullopt;
}

void HotKeys::take(Registered& registered) {
    const KeyGrabs::Outcome outcome = grabs.take(registered.key, keyboard->lockModifiers, borrows);
    registered.grab = outcome.kind;
    registered.borrowedThrough = outcome.isHeldByOthers ? outcome.kind : std::nullopt;
    refused.forget(registered.carbon);
    if (!outcome.kind && outcome.isHeldByOthers) {
        refused.refuse(registered.carbon, std::nullopt);
    } else if (outcome.isHeldBothWays) {
        refused.refuse(registered.carbon, LoanObstacle::heldBothWays);
    }
}

void HotKeys::renew(Registered& registered) {
    const auto key = combinationFor(registered.carbon);
    if (!key) {
        registered.grab.reset();
        return;
    }
    registered.key = *key;
    if (const auto kind = registered.borrowedThrough) {
        registered.grab = grabs.renew(*key, keyboard->lockModifiers, *kind) ? kind : std::nullopt;
    } else {
        take(registered);
    }
    if (!registered.grab) {
        reportLoss();
    }
}

void HotKeys::release(Registered& registered) {
    if (const auto kind = std::exchange(registered.grab, std::nullopt)) {
        grabs.release(registered.key, keyboard->lockModifiers, *kind);
    }
}

} // namespace platform::x11
