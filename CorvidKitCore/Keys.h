#pragma once

#include "CorvidKitCore/Shortcut.h"

#include <array>
#include <cstdint>
#include <ranges>
#include <span>
#include <string_view>

namespace corvid {

/// A key by its place on the keyboard, with its name in each numbering that a shortcut crosses. Symbols and Qt's
/// numbers are those of an American layout.
struct Key {
    /// The virtual key code, as in `Shortcut::keyCode`.
    std::uint32_t code;
    /// The text on the key cap. UTF-8.
    std::string_view cap;
    /// The kernel's number (linux/input-event-codes.h).
    std::uint32_t kernelCode;
    /// The name of the place in XKB (xkeyboard-config, keycodes/evdev).
    std::string_view xkbName;
    /// The keysym's name in lower case, without Shift and with it; the second is empty where settings cannot name it
    /// (xkeyboard-config, symbols/us).
    std::string_view symbol;
    std::string_view shiftedSymbol;
    /// The number in `Qt::Key`, which for a printing key is its character.
    std::int32_t qtKey;

    /// The key code in keymaps of XKB. The X protocol reserves the first eight codes.
    [[nodiscard]] constexpr std::uint32_t keymapCode() const { return kernelCode + 8; }

    /// Whether settings that write this name, in lower case, mean the key.
    [[nodiscard]] constexpr bool hasSymbol(std::string_view name) const {
        return !name.empty() && (name == symbol || name == shiftedSymbol);
    }
};

/// All keys: the rows of the keyboard from top to bottom, each from left to right.
[[nodiscard]] std::span<const Key> allKeys();

/// The key with this virtual key code, for the life of the process; null where no keyboard has one.
[[nodiscard]] const Key* keyOf(std::uint32_t code);

/// A modifier of a shortcut, with its name in each notation that a shortcut crosses.
struct Modifier {
    /// The bit in `Shortcut::modifiers`.
    std::uint32_t bit;
    /// The symbol on the key cap. UTF-8.
    std::string_view cap;
    /// The name that keyboards for this system print.
    std::string_view label;
    /// As settings write it in front of a key (GTK, gtk_accelerator_parse).
    std::string_view accelerator;
    /// The bit in the X protocol's masks and in XKB, where the keymap has Alt and Super in their usual places.
    std::uint32_t coreMask;
    /// The bit of `Qt::KeyboardModifier`. Qt calls Super "Meta".
    std::int32_t qtModifier;
};

/// In the order in which shortcuts are shown.
inline constexpr std::array allModifiers{
    Modifier{Shortcut::control, "⌃", "Ctrl", "<Control>", 4, 0x04000000},
    Modifier{Shortcut::option, "⌥", "Alt", "<Alt>", 8, 0x08000000},
    Modifier{Shortcut::shift, "⇧", "Shift", "<Shift>", 1, 0x02000000},
    Modifier{Shortcut::command, "⌘", "Super", "<Super>", 64, 0x10000000},
};

/// The modifiers whose bits are set. Other bits are passed over.
[[nodiscard]] constexpr auto modifiersIn(std::uint32_t mask) {
    return allModifiers | std::views::filter([mask](const Modifier& each) { return (mask & each.bit) != 0; });
}

/// Whether the mask has a bit that is none of the modifiers.
[[nodiscard]] constexpr bool hasUnknownModifier(std::uint32_t mask) {
    for (const Modifier& each : modifiersIn(mask)) {
        mask &= ~each.bit;
    }
    return mask != 0;
}

/// The mask in the X protocol's bits, for the usual keymap.
[[nodiscard]] constexpr std::uint32_t coreModifiers(std::uint32_t mask) {
    std::uint32_t core = 0;
    for (const Modifier& each : modifiersIn(mask)) {
        core |= each.coreMask;
    }
    return core;
}

} // namespace corvid
