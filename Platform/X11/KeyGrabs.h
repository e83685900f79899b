#pragma once

#include "Platform/X11/Connection.h"

#include <xcb/xinput.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace platform::x11 {

/// A key with the modifiers that must be held, without locks.
struct KeyCombination {
    xcb_keycode_t keyCode = 0;
    std::uint16_t modifiers = 0;

    friend auto operator<=>(const KeyCombination&, const KeyCombination&) = default;
};

/// Passive grabs on the root window, one for each combination of locks: those of the core (X11 protocol, GrabKey) and
/// those of the X Input extension (XI2, XIPassiveGrabDevice). Main thread only.
///
/// Two grabs of one kind conflict, which the server reports. Grabs of different kinds do not: the later one gets the
/// press, and the earlier one applies again when the later one ends, also by the end of its client. So a grab of the
/// other kind can borrow a held key. An equal grab of the same client replaces the former one and is then the latest.
class KeyGrabs {
public:
    enum class Kind : std::uint8_t { core, extension };

    struct Outcome {
        /// The active grab; empty if it was refused.
        std::optional<Kind> kind;
        /// Another client holds the combination by a grab of the other kind.
        bool isHeldByOthers = false;
        /// Other clients, or one of them, hold it by grabs of both kinds.
        bool isHeldBothWays = false;
    };

    explicit KeyGrabs(Connection& connection)
        : connection(connection) {}

    /// Grabs a free combination. `borrows`: grabs one as well that others hold by one kind of grab. A refused grab
    /// leaves nothing behind. A refused combination whose outcome is `isHeldByOthers` could be borrowed. A server that
    /// does not reply within the turn's time has refused nothing.
    [[nodiscard]] Outcome take(const KeyCombination& key, std::uint16_t locks, bool borrows);

    /// Makes an active grab the latest one; false if another client has the combination by now.
    [[nodiscard]] bool renew(const KeyCombination& key, std::uint16_t locks, Kind kind);

    /// Releases it. Does not flush.
    void release(const KeyCombination& key, std::uint16_t locks, Kind kind);

private:
    using ExtensionGrab = xcb_input_xi_passive_grab_device_cookie_t;

    [[nodiscard]] std::vector<xcb_void_cookie_t> grabCore(const KeyCombination& key, std::uint16_t locks);
    /// Empty without the extension.
    [[nodiscard]] std::optional<ExtensionGrab> grabThroughExtension(const KeyCombination& key, std::uint16_t locks);
    [[nodiscard]] bool isRefused(const std::optional<ExtensionGrab>& grab);

    Connection& connection;
};

} // namespace platform::x11
