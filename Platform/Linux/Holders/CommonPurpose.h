#pragma once

#include "Platform/Seam/Desktop/ShortcutHolders.h"

#include <optional>
#include <string_view>

namespace platform::linux {

/// The purpose of a binding that desktops know under this name, if it is common. `group` is its place: the schema of
/// the setting, the channel or the program ("org.gnome.desktop.wm.keybindings", "xfwm4"), `name` the key or command
/// there.
[[nodiscard]] std::optional<KeyPurpose> commonPurpose(std::string_view group, std::string_view name);

} // namespace platform::linux
