#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace platform::linux {

/// The name that XKB gives to the key (xkeyboard-config, keycodes/evdev) which carries a Carbon virtual key code: both
/// name positions on the keyboard. Nothing for a code that no Linux keyboard has.
[[nodiscard]] std::optional<std::string_view> xkbKeyName(std::uint32_t carbonKeyCode);

/// The number that the kernel gives to the same key (linux/input-event-codes.h).
[[nodiscard]] std::optional<std::uint32_t> kernelKeyCode(std::uint32_t carbonKeyCode);

} // namespace platform::linux
