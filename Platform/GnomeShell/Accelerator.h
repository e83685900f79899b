#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace platform::gnomeshell {

/// A key with its modifiers in the shell's format: "<Control><Alt>0x71". The key is given by its key code, because its
/// position counts (mutter, src/core/meta-accel-parse.c: "0x" and the hexadecimal key code of XKB). `keyCode` is
/// Carbon's virtual key code, `modifiers` its mask. Empty for a key that no Linux keyboard has, or for modifiers other
/// than command (there: Super), shift, option (Alt) and control. Any thread.
[[nodiscard]] std::optional<std::string> accelerator(std::uint32_t keyCode, std::uint32_t modifiers);

} // namespace platform::gnomeshell
