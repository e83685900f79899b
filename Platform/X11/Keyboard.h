#pragma once

#include "Platform/X11/Connection.h"

#include <array>
#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::x11 {

/// The XKB name of a key's position on the keyboard, filled up with zeros.
using KeyName = std::array<char, 4>;

struct KeyPosition {
    KeyName name{};
    xcb_keycode_t keyCode = 0;

    friend auto operator<=>(const KeyPosition&, const KeyPosition&) = default;
};

/// The keyboard's layout of positions and modifiers at one moment.
struct KeyboardMap {
    /// Every named key, aliases included, sorted by name.
    std::vector<KeyPosition> positions;
    /// The modifier bits that locks occupy: CapsLock, and NumLock and ScrollLock where they have one.
    std::uint16_t lockModifiers = XCB_MOD_MASK_LOCK;
    /// The modifier bits of Alt and Super; the usual ones if the keyboard's map has none.
    std::uint16_t altModifier = XCB_MOD_MASK_1;
    std::uint16_t superModifier = XCB_MOD_MASK_4;

    /// The key with that name; empty if the keyboard has none.
    [[nodiscard]] std::optional<xcb_keycode_t> keyCode(std::string_view name) const;

    friend bool operator==(const KeyboardMap&, const KeyboardMap&) = default;
};

/// Reads the map: key names through the XKEYBOARD extension, modifiers through the core protocol. Empty if the server
/// did not reply within the turn's time. A key that the keyboard lacks is missing from the map.
[[nodiscard]] std::optional<KeyboardMap> readKeyboardMap(Connection& connection);

/// Sets up the extension for this process: its version, events for map changes, and that a held key repeats presses
/// only, so that a repeat can be distinguished from a new press. The error is a sentence for the user: the server has
/// no XKEYBOARD, or did not reply in time.
[[nodiscard]] std::expected<void, std::string> prepareKeyboard(Connection& connection);

/// The mask of the X protocol for one of `corvid::Shortcut`: command is Super and option is Alt, where this keyboard
/// has them.
[[nodiscard]] std::uint16_t coreModifiers(const KeyboardMap& map, std::uint32_t modifiers);

/// Every combination of the lock modifiers, none of them first.
[[nodiscard]] std::vector<std::uint16_t> lockVariants(std::uint16_t lockModifiers);

} // namespace platform::x11
