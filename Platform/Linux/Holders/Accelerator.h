#pragma once

#include "CorvidKitCore/Shortcut.h"
#include "Platform/Seam/Desktop/ShortcutHolders.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::linux {

/// A key with modifiers as settings write it down.
struct Accelerator {
    /// Carbon's mask, as in `corvid::Shortcut`.
    std::uint32_t modifiers = 0;
    /// The name of the key's symbol in lower case, or its number in keymaps as "0x71".
    std::string key;

    friend bool operator==(const Accelerator&, const Accelerator&) = default;
};

/// Parses "<Primary><Alt>Left": GTK's form, which the settings of GNOME, Cinnamon, MATE and Xfce use (GTK,
/// gtk_accelerator_parse; mutter, src/core/meta-accel-parse.c). Modifiers may have any of their names, in any order and
/// case. Empty without a key, or with a modifier that no hot key of ours has.
[[nodiscard]] std::optional<Accelerator> readAccelerator(std::string_view text);

/// Reads "C-A-Left", openbox's form (openbox, openbox/translate.c). Otherwise the same.
[[nodiscard]] std::optional<Accelerator> readOpenboxKey(std::string_view text);

/// Writes a shortcut in GTK's form, with the key by its number in keymaps, for a shortcut means its place:
/// "<Control><Alt>0x71" (mutter, src/core/meta-accel-parse.c). Nothing for a key code that is not in the table, or for
/// a modifier that is none of the four.
[[nodiscard]] std::optional<std::string> acceleratorText(const corvid::Shortcut& shortcut);

/// Whether both are the same keys held down, by the symbols of an American keyboard: settings name symbols, a shortcut
/// is a place.
[[nodiscard]] bool isSame(const Accelerator& accelerator, const corvid::Shortcut& shortcut);

/// Of the keys of a binding, in GTK's form, the first that are none of the shortcuts. Empty if there are none, or none
/// with a name for people.
[[nodiscard]] std::optional<ShortcutHolder::Keys> otherKeys(const std::vector<std::string>& accelerators,
                                                            const std::vector<corvid::Shortcut>& shortcuts);

} // namespace platform::linux
