#pragma once

#include "CorvidKitCore/Keys.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform::i3ipc {

/// The modifiers that a combination may have, as bits of the X protocol.
enum class Modifier : unsigned {
    shift = 1,
    lock = 2,
    control = 4,
    mod1 = 8,
    mod2 = 16,
    mod3 = 32,
    mod4 = 64,
    mod5 = 128,
};

/// A key with modifiers, as in the configuration.
struct Combination {
    /// Bits of `Modifier`.
    unsigned modifiers = 0;
    /// The key code or, in lower case, the name of its symbol.
    std::string key;
    bool isNumber = false;
    /// The only layout in which it holds, counted from one; zero for all.
    unsigned group = 0;

    friend auto operator<=>(const Combination&, const Combination&) = default;
};

/// Parses "Control+Mod1+Left": modifiers by any of their names, in any order and case. Empty if there is not exactly
/// one key in it. `isNumber`: the key is given by its key code.
[[nodiscard]] std::optional<Combination> readCombination(std::string_view text, bool isNumber);

/// A hot key: a key by its position, with modifiers.
struct HotKeyCombination {
    /// Bits of `Modifier`.
    unsigned modifiers = 0;
    /// Never null.
    const corvid::Key* key = nullptr;

    /// The arguments are in the numbering of `corvid::Shortcut`. Nothing for a key code that no keyboard has.
    [[nodiscard]] static std::optional<HotKeyCombination> of(std::uint32_t keyCode, std::uint32_t modifiers);

    /// In the format of commands: "Ctrl+Mod1+113".
    [[nodiscard]] std::string text() const;

    /// Whether the same keys are held down.
    [[nodiscard]] bool isSame(const Combination& combination) const;

    friend bool operator==(const HotKeyCombination&, const HotKeyCombination&) = default;
};

} // namespace platform::i3ipc
