#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace platform::x11 {

/// The name that XKB gives to the key (xkeyboard-config, keycodes/evdev) which carries a Carbon virtual key code: both
/// name positions on the keyboard. Nothing for a code that no Linux keyboard has.
[[nodiscard]] std::optional<std::string_view> xkbKeyName(std::uint32_t carbonKeyCode);

} // namespace platform::x11
