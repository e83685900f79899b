#pragma once

#include "Platform/I3Ipc/Configuration.h"
#include "Platform/Seam/Desktop/ShortcutHolders.h"

#include <string_view>

namespace platform::i3ipc {

/// The holder of a combination that a line of the configuration binds. Its name is the program and the line, as in
/// "sway, ~/.config/sway/config:12"; its purpose is the line's command. `home`: the user's folder, abbreviated as "~";
/// may be empty.
[[nodiscard]] ShortcutHolder lineHolder(std::string_view program, const ConfiguredBinding& binding,
                                        std::string_view home);

} // namespace platform::i3ipc
