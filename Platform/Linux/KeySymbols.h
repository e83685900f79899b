#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace platform::linux {

/// The names, in lower case, of the symbols that a key has on an American keyboard, without and with Shift
/// (xkeyboard-config, symbols/us). The key is named by its Carbon virtual key code; empty for one that is not there.
[[nodiscard]] std::vector<std::string_view> keySymbols(std::uint32_t carbonKeyCode);

} // namespace platform::linux
