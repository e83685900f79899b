#pragma once

#include <cstdint>
#include <optional>

namespace platform::kwin {

/// What Qt calls a key with modifiers (`Qt::Key` and `Qt::KeyboardModifier` in one number, as in `QKeySequence`), for a
/// Carbon virtual key code and Carbon modifiers. The key code is a place on the keyboard, Qt's key is what an American
/// layout has there. Nothing for a key that has no place in the table, and for modifiers that are none of the four.
[[nodiscard]] std::optional<std::int32_t> qtKey(std::uint32_t carbonKeyCode, std::uint32_t carbonModifiers);

} // namespace platform::kwin
