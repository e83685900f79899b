#pragma once

#include <cstdint>
#include <optional>

namespace platform::kwin {

/// A key with modifiers as KGlobalAccel names it: `Qt::Key` and `Qt::KeyboardModifier` in one number, as in
/// `QKeySequence`. Both arguments are in the numbering of `corvid::Shortcut`. Nothing for a key code that is not in the
/// table, or for a modifier that is none of the four.
[[nodiscard]] std::optional<std::int32_t> qtKey(std::uint32_t keyCode, std::uint32_t modifiers);

} // namespace platform::kwin
