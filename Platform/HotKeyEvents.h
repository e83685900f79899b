#pragma once

#include "Platform/NotificationCenter.h"

#include <cstdint>
#include <expected>
#include <memory>
#include <optional>
#include <string_view>

namespace platform {

/// A platform status; zero is success.
using OSStatus = std::int32_t;
inline constexpr OSStatus noErr = 0;
/// An event handler's answer for an event that is not its own.
inline constexpr OSStatus eventNotHandledErr = -9874;
/// A hot key that somebody else holds.
inline constexpr OSStatus eventHotKeyExistsErr = -9878;
/// A hot key that the desktop cannot bind at all: no such key on the keyboard, or modifiers it does not have.
inline constexpr OSStatus eventHotKeyInvalidErr = -9879;
/// An event without the parameter that was asked for.
inline constexpr OSStatus eventParameterNotFoundErr = -9870;

/// The name that the caller gives to a hot key and finds again in its press.
struct EventHotKeyID {
    std::uint32_t signature = 0;
    std::uint32_t id = 0;

    friend bool operator==(const EventHotKeyID&, const EventHotKeyID&) = default;
};

/// A registered hot key, as the backend knows it.
struct EventHotKeyRef {
    std::uint64_t value = 0;

    friend bool operator==(const EventHotKeyRef&, const EventHotKeyRef&) = default;
};

/// A press of a hot key. Lives for the duration of the handler's call.
class HotKeyEvent {
public:
    HotKeyEvent() = default;
    HotKeyEvent(const HotKeyEvent&) = delete;
    HotKeyEvent& operator=(const HotKeyEvent&) = delete;
    virtual ~HotKeyEvent() = default;

    /// The event's direct object: the name of the pressed hot key.
    [[nodiscard]] virtual std::expected<EventHotKeyID, OSStatus> directObject() const = 0;
};

/// The handlers that would be asked after this one; no backend has any so far.
class EventHandlerCall;

/// Whether a combination that others hold can be had for as long as this program runs.
enum class HotKeyLoan : std::uint8_t {
    /// It is nobody else's, or not to be had.
    none,
    /// It was refused, and would be granted to a program that borrows.
    possible,
    /// It is registered, and its holder gets it back when this program ends.
    made,
};

namespace HotKeyNotification {
/// A hot key that was registered is not held any more, or one that was refused may be free: register all of them anew.
/// May be posted while a hot key is being registered, so an observer registers in a later turn of the event loop; after
/// a pause, because a desktop that was too busy to answer says so with every registration.
inline constexpr std::string_view didLoseHotKeys = "TesselDidLoseHotKeysNotification";
} // namespace HotKeyNotification

/// Handles a press on the main thread. `event` is null where the platform lost it; `userData` is what was given when
/// the handler was installed.
using HotKeyEventHandler = OSStatus (*)(EventHandlerCall* nextHandler, const HotKeyEvent* event, void* userData);

/// Global keyboard shortcuts. Main thread only.
///
/// Keys are positions on the keyboard, not letters: a key code names the key that carries the letter on an American
/// layout, whatever layout is in use. A press counts once, however long the key is held, and whether or not a lock
/// (CapsLock, NumLock, ScrollLock) is on.
class HotKeyEvents {
public:
    /// `reference` is present exactly when `status` is `noErr`, unless the platform is at fault.
    struct Registration {
        OSStatus status = noErr;
        std::optional<EventHotKeyRef> reference;
    };

    HotKeyEvents() = default;
    HotKeyEvents(const HotKeyEvents&) = delete;
    HotKeyEvents& operator=(const HotKeyEvents&) = delete;
    virtual ~HotKeyEvents() = default;

    /// Installs the one handler of all presses; it stays for the life of the process.
    virtual OSStatus installHandler(HotKeyEventHandler handler, void* userData) = 0;

    /// Registers a key (Carbon virtual key code) with modifiers (Carbon mask: command 0x100, shift 0x200, option 0x800,
    /// control 0x1000) under a name of the caller's choosing. All or nothing: a combination held by somebody else, in
    /// any of its lock variants, leaves no trace.
    [[nodiscard]] virtual Registration registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                      EventHotKeyID name) = 0;

    /// Gives the combination back. An unknown reference is ignored.
    virtual void unregisterHotKey(EventHotKeyRef reference) = 0;

    /// Whether combinations that others hold are borrowed, where that can be done. Not at first: it takes the user's
    /// consent. Acts on what is registered from now on.
    virtual void setBorrows(bool /*borrows*/) {}

    /// Whether borrowing changes the desktop's settings until it is given back, so that a program which was killed has
    /// to be started again to give it back. Elsewhere the desktop does that by itself.
    [[nodiscard]] virtual bool borrowingChangesSettings() const { return false; }

    /// How a combination stands since it was last registered or refused.
    [[nodiscard]] virtual HotKeyLoan loan(std::uint32_t /*keyCode*/, std::uint32_t /*modifiers*/) const {
        return HotKeyLoan::none;
    }

    /// Posts `HotKeyNotification::didLoseHotKeys`. Always the same center.
    [[nodiscard]] const std::shared_ptr<NotificationCenter>& notificationCenter() const { return center; }

private:
    std::shared_ptr<NotificationCenter> center = std::make_shared<NotificationCenter>();
};

} // namespace platform
