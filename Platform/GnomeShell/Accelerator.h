#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace platform::gnomeshell {

/// A key with its modifiers as the shell reads it: "<Control><Alt>0x71". The key goes by its number, for it is meant by
/// its place (mutter, src/core/meta-accel-parse.c: "0x" and the hexadecimal key code of XKB). `keyCode` is Carbon's
/// virtual key code, `modifiers` its mask. Nothing for a key that no Linux keyboard has, or for modifiers that are not
/// command (there: Super), shift, option (Alt) and control. Any thread.
[[nodiscard]] std::optional<std::string> accelerator(std::uint32_t keyCode, std::uint32_t modifiers);

} // namespace platform::gnomeshell
