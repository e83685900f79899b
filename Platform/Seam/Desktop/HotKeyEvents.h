#pragma once

#include "Platform/Seam/Desktop/NotificationCenter.h"

#include <cstdint>
#include <expected>
#include <memory>
#include <optional>
#include <string_view>

namespace platform {

/// A platform status; zero is success.
using OSStatus = std::int32_t;
inline constexpr OSStatus noErr = 0;
/// An event handler's result for an event that is not its own.
inline constexpr OSStatus eventNotHandledErr = -9874;
/// A hot key that another client holds.
inline constexpr OSStatus eventHotKeyExistsErr = -9878;
/// A hot key that the desktop cannot bind at all: no such key on the keyboard, or modifiers that it does not have.
inline constexpr OSStatus eventHotKeyInvalidErr = -9879;
/// An event without the requested parameter.
inline constexpr OSStatus eventParameterNotFoundErr = -9870;

/// The id that the caller assigns to a hot key and finds again in its press.
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

    /// The event's direct object: the id of the pressed hot key.
    [[nodiscard]] virtual std::expected<EventHotKeyID, OSStatus> directObject() const = 0;
};

/// The handlers after this one; no backend has any so far.
class EventHandlerCall;

/// Whether a combination that others hold can be borrowed while this program runs.
enum class HotKeyLoan : std::uint8_t {
    /// It is free, or cannot be borrowed.
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

/// Why a combination that is taken cannot be borrowed.
enum class LoanObstacle : std::uint8_t {
    /// X11: it is grabbed in both ways that the server knows, so no other way is left.
    heldBothWays,
    /// GNOME Shell: a program, an extension or a part of the shell has reserved it.
    reserved,
    /// GNOME Shell: one of the shell's own bindings has it, whose handler could not be given back.
    notLent,
    /// GNOME Shell: this version lacks what lending takes.
    unknownShell,
    /// GNOME Shell: it still runs an extension that cannot lend, until the user logs in again.
    oldExtension,
    /// sway: its line is for one keyboard or one layout alone.
    particularLine,
    /// KGlobalAccel: it is part of a sequence of keys.
    keySequence,
    /// KGlobalAccel: the duty to give it back could not be written down.
    notWrittenDown,
    /// KGlobalAccel: its holder's keys could not be changed. Wayfire: it would not take a changed option back.
    /// Hyprland:
    /// it lends nothing.
    notReleased,
};

/// Handles a press on the main thread. `event` is null where the platform lost it; `userData` is what was given when
/// the handler was installed.
using HotKeyEventHandler = OSStatus (*)(EventHandlerCall* nextHandler, const HotKeyEvent* event, void* userData);

/// Global keyboard shortcuts. Main thread only.
///
/// Keys are positions on the keyboard, not letters: a key code names the key with the letter on an American layout, in
/// any layout. A press counts once, however long the key is held, and whether or not a lock (CapsLock, NumLock,
/// ScrollLock) is on.
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
    /// control 0x1000) under an id that the caller chooses. All or nothing: if another client holds the combination, in
    /// any of its lock variants, nothing is registered.
    [[nodiscard]] virtual Registration registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                      EventHotKeyID name) = 0;

    /// Releases the combination. An unknown reference is ignored.
    virtual void unregisterHotKey(EventHotKeyRef reference) = 0;

    /// Whether combinations that others hold are borrowed, if possible. Initially false, because it needs the user's
    /// consent. Applies to later registrations.
    virtual void setBorrows(bool /*borrows*/) {}

    /// Whether borrowing changes the desktop's settings until the key is given back, so that a killed program must be
    /// started again to give it back. Elsewhere the desktop does that by itself.
    [[nodiscard]] virtual bool borrowingChangesSettings() const { return false; }

    /// The state of a combination at its last registration or refusal.
    [[nodiscard]] virtual HotKeyLoan loan(std::uint32_t /*keyCode*/, std::uint32_t /*modifiers*/) const {
        return HotKeyLoan::none;
    }

    /// Why a combination cannot be borrowed that was refused when it was last to be registered; nothing for any other,
    /// and where nobody can say.
    [[nodiscard]] virtual std::optional<LoanObstacle> loanObstacle(std::uint32_t /*keyCode*/,
                                                                   std::uint32_t /*modifiers*/) const {
        return std::nullopt;
    }

    /// Posts `HotKeyNotification::didLoseHotKeys`. Always the same center.
    [[nodiscard]] const std::shared_ptr<NotificationCenter>& notificationCenter() const { return center; }

private:
    std::shared_ptr<NotificationCenter> center = std::make_shared<NotificationCenter>();
};

} // namespace platform
