#pragma once

#include "CorvidKitCore/Shortcut.h"
#include "Platform/Localization.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessel {

/// The keys by the names that stand on them on this desktop, as in "Ctrl+Alt+C": the Option key is Alt, the Command key
/// Super. In English, for what other programs may read.
[[nodiscard]] std::string shortcutText(const corvid::Shortcut& shortcut);

/// The same as the keyboards of the user's language have it: "Strg+Alt+C".
[[nodiscard]] std::string shortcutText(const corvid::Shortcut& shortcut, const platform::Localization& localization);

/// The same for modifiers and the name of a key that a shortcut of ours need not know.
[[nodiscard]] std::string shortcutText(std::uint32_t modifiers, std::string_view key,
                                       const platform::Localization& localization);

/// Those names one by one, for key caps.
[[nodiscard]] std::vector<std::string> keysAsPrinted(const corvid::Shortcut& shortcut,
                                                     const platform::Localization& localization);

} // namespace tessel
