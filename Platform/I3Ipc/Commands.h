#pragma once

#include "CorvidKitCore/Geometry.h"

#include <string>

namespace platform::i3ipc {

/// The command that moves a floating window, named before, to that top-left corner of its outer rectangle, rounded to
/// whole points (sway(5), "move"; i3 User's Guide, "Moving containers").
[[nodiscard]] std::string movingCommand(corvid::CGPoint topLeft);

/// The commands, for a window that is named before, that put its outer rectangle there, rounded to whole points, as far
/// as it has one: floating first, because only then it has a place of its own (sway(5), "floating", "resize", "move";
/// i3 User's Guide, "Floating", "Resizing containers/windows", "Moving containers").
[[nodiscard]] std::string placingCommands(const corvid::CGRect& frame);

} // namespace platform::i3ipc
