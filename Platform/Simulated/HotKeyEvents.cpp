#include "Platform/Simulated/HotKeyEvents.h"

#include <algorithm>
#include <expected>
#include <string>
#include <utility>

namespace platform::simulated {

namespace {

class Event final : public HotKeyEvent {
public:
    explicit Event(std::expected<EventHotKeyID, OSStatus> object)
        : object(std::move(object)) {}

    [[nodiscard]] std::expected<EventHotKeyID, OSStatus> directObject() const override { return object; }

private:
    std::expected<EventHotKeyID, OSStatus> object;
};

/// The four characters of the signature, and the id.
std::string text(EventHotKeyID name) {
    std::string result;
    for (const unsigned shift : {24U, 16U, 8U, 0U}) {
        result += static_cast<char>((name.signature >> shift) & 0xFFU);
    }
    return result + " " + std::to_string(name.id);
}

} // namespace

OSStatus HotKeyEvents::installHandler(HotKeyEventHandler newHandler, void* newUserData) {
    trace.record("install hot key handler");
    if (installStatus == noErr) {
        handler = newHandler;
        userData = newUserData;
    }
    return installStatus;
}

HotKeyEvents::Registration HotKeyEvents::registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                        EventHotKeyID name) {
    trace.record("register hot key " + std::to_string(keyCode) + " " + std::to_string(modifiers) + " as " + text(name));
    if (const auto refusal = refusals.find({keyCode, modifiers}); refusal != refusals.end()) {
        return {.status = refusal->second,
                .reference = refusesWithReference ? std::optional(EventHotKeyRef{}) : std::nullopt};
    }
    if (!borrows && lendable.contains({keyCode, modifiers})) {
        return {.status = eventHotKeyExistsErr, .reference = std::nullopt};
    }
    const bool isHeld = std::ranges::any_of(hotKeys, [keyCode, modifiers](const Registered& hotKey) {
        return hotKey.keyCode == keyCode && hotKey.modifiers == modifiers;
    });
    if (isHeld) {
        return {.status = eventHotKeyExistsErr, .reference = std::nullopt};
    }
    const EventHotKeyRef reference{++lastReference};
    hotKeys.push_back({reference, keyCode, modifiers, name});
    return {.status = noErr, .reference = reference};
}

void HotKeyEvents::unregisterHotKey(EventHotKeyRef reference) {
    const auto found = std::ranges::find(hotKeys, reference, &Registered::reference);
    trace.record("unregister hot key " + (found == hotKeys.end() ? "unknown" : text(found->name)));
    if (found != hotKeys.end()) {
        hotKeys.erase(found);
    }
}

HotKeyLoan HotKeyEvents::loan(std::uint32_t keyCode, std::uint32_t modifiers) const {
    if (!lendable.contains({keyCode, modifiers})) {
        return HotKeyLoan::none;
    }
    return borrows ? HotKeyLoan::made : HotKeyLoan::possible;
}

void HotKeyEvents::refuse(std::uint32_t keyCode, std::uint32_t modifiers, OSStatus status) {
    refusals.insert_or_assign({keyCode, modifiers}, status);
}

void HotKeyEvents::release(std::uint32_t keyCode, std::uint32_t modifiers) {
    refusals.erase({keyCode, modifiers});
    lendable.erase({keyCode, modifiers});
}

void HotKeyEvents::announceLoss() {
    notificationCenter()->post({.name = std::string(HotKeyNotification::didLoseHotKeys), .userInfo = {}});
}

std::optional<OSStatus> HotKeyEvents::press(std::uint32_t keyCode, std::uint32_t modifiers) {
    const auto found = std::ranges::find_if(hotKeys, [keyCode, modifiers](const Registered& hotKey) {
        return hotKey.keyCode == keyCode && hotKey.modifiers == modifiers;
    });
    return found == hotKeys.end() ? std::nullopt : deliver(found->name);
}

std::optional<OSStatus> HotKeyEvents::deliver(EventHotKeyID name) {
    const Event event(name);
    return call(&event);
}

std::optional<OSStatus> HotKeyEvents::deliverWithoutParameter(OSStatus status) {
    const Event event{std::unexpected(status)};
    return call(&event);
}

std::optional<OSStatus> HotKeyEvents::deliverWithoutEvent() {
    return call(nullptr);
}

std::optional<OSStatus> HotKeyEvents::call(const HotKeyEvent* event) {
    return handler == nullptr ? std::nullopt : std::optional(handler(nullptr, event, userData));
}

} // namespace platform::simulated
