#pragma once

#include "CorvidKitCore/Shortcut.h"

#include <string>

namespace tessel {

/// The keys by the names that stand on them on this desktop, as in "Ctrl+Alt+C": the Option key is Alt, the Command key
/// Super.
[[nodiscard]] std::string shortcutText(const corvid::Shortcut& shortcut);

} // namespace tessel
