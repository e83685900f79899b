#pragma once

#include "CorvidKitCore/Shortcut.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tessel {

/// The keys by their labels on this desktop, as in "Ctrl+Alt+C": the Option key is Alt, the Command key Super.
[[nodiscard]] std::string shortcutText(const corvid::Shortcut& shortcut);

/// The same for modifiers and the name of any key, which need not be one of our shortcuts'.
[[nodiscard]] std::string shortcutText(std::uint32_t modifiers, std::string_view key);

} // namespace tessel
