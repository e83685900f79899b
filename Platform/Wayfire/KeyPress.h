#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::wayfire {

/// A key with modifiers, as options of Wayfire write it: "<ctrl> <alt> KEY_LEFT". Keys have the kernel's names, so they
/// are places on the keyboard (wf-config 0.10, `keybinding_t`).
struct KeyPress {
    /// Bits of `corvid::Shortcut`.
    std::uint32_t modifiers = 0;
    /// The kernel's name: "KEY_LEFT".
    std::string key;

    /// Both in the numbering of `corvid::Shortcut`. Nothing for a key code that no keyboard has, or for a modifier that
    /// Wayfire does not know.
    [[nodiscard]] static std::optional<KeyPress> of(std::uint32_t keyCode, std::uint32_t modifiers);

    /// In Wayfire's notation.
    [[nodiscard]] std::string text() const;

    friend auto operator<=>(const KeyPress&, const KeyPress&) = default;
};

/// The keys among the alternatives of an option: "<super> KEY_LEFT | <super> KEY_KP4". Buttons, gestures, and modifiers
/// alone are passed over.
[[nodiscard]] std::vector<KeyPress> keyPressesIn(std::string_view value);

} // namespace platform::wayfire
