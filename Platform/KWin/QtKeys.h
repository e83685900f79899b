#pragma once

#include <cstdint>
#include <optional>

namespace platform::kwin {

/// Qt's number for a key with modifiers (`Qt::Key` and `Qt::KeyboardModifier` in one number, as in `QKeySequence`), for
/// a Carbon virtual key code and Carbon modifiers. The key code is a position on the keyboard, Qt's key is the symbol
/// there on an American layout. Empty for a key without an entry in the table, and for modifiers other than the four.
[[nodiscard]] std::optional<std::int32_t> qtKey(std::uint32_t carbonKeyCode, std::uint32_t carbonModifiers);

} // namespace platform::kwin
