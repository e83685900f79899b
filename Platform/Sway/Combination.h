#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::sway {

/// The modifiers that a combination may have, as bits.
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

/// A key with modifiers, as the configuration writes it down.
struct Combination {
    /// Bits of `Modifier`.
    unsigned modifiers = 0;
    /// The key's number or, in lower case, the name of its symbol.
    std::string key;
    bool isNumber = false;
    /// The layout in which alone it holds, counted from one; zero for all.
    unsigned group = 0;

    friend auto operator<=>(const Combination&, const Combination&) = default;
};

/// Reads "Control+Mod1+Left": modifiers by any of their names, in any order and case. Nothing where there is not
/// exactly one key in it. `isNumber`: the key is given by its number.
[[nodiscard]] std::optional<Combination> readCombination(std::string_view text, bool isNumber);

/// A hot key: a key by its place, with modifiers.
struct HotKeyCombination {
    unsigned modifiers = 0;
    /// The key's number in keymaps, which is the kernel's and eight.
    std::uint32_t number = 0;
    /// The names, in lower case, of the symbols that it has on an American keyboard.
    std::vector<std::string_view> symbols;

    /// Nothing for a key code that no keyboard has. The mask is Carbon's, as in `HotKeyEvents::registerHotKey`.
    [[nodiscard]] static std::optional<HotKeyCombination> of(std::uint32_t carbonKeyCode,
                                                             std::uint32_t carbonModifiers);

    /// As commands name it: "Ctrl+Mod1+113".
    [[nodiscard]] std::string text() const;

    /// Whether that is the same keys held down.
    [[nodiscard]] bool isSame(const Combination& combination) const;

    friend bool operator==(const HotKeyCombination&, const HotKeyCombination&) = default;
};

} // namespace platform::sway
