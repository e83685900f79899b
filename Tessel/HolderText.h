#pragma once

#include "CorvidKitCore/Shortcut.h"
#include "Platform/Seam/Desktop/Localization.h"
#include "Platform/Seam/Desktop/ShortcutHolders.h"

#include <string>

namespace tessel {

/// The purpose of a held shortcut, as the end of a sentence in the user's language, or in the holder's own words. Empty
/// if it is unknown.
[[nodiscard]] std::string purposeText(const platform::ShortcutHolder& holder,
                                      const platform::Localization& localization);

/// The holder of a shortcut and its purpose, in the user's language: "Ctrl+Alt+← switches to the workspace on the left
/// (GNOME)".
[[nodiscard]] std::string holderText(const corvid::Shortcut& shortcut, const platform::ShortcutHolder& holder,
                                     const platform::Localization& localization);

} // namespace tessel
