#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Accessibility.h"
#include "Platform/Compositor/Window.h"

#include <string>

namespace platform::sway {

/// The commands, for the window of the preceding criteria, that set its outer rectangle, rounded to whole points, as
/// far as a coordinate is given: floating first, because only a floating window has a position of its own (sway(5),
/// "floating", "resize", "move"; i3 User's Guide, "Floating", "Resizing containers/windows", "Moving containers").
[[nodiscard]] std::string placingCommands(const corvid::CGRect& frame);

/// The same for one of sway's windows. `hiddenWorkspace`: the name of its workspace if that is hidden, else empty; a
/// moved window goes to the visible workspace, and is put back.
[[nodiscard]] std::string placingCommands(const compositor::WindowIdentifier& window, const corvid::CGRect& frame,
                                          const std::string& hiddenWorkspace);

/// Makes a window of ours a popover with its top-left corner there: above the layout, without a border of the
/// compositor's, on every workspace.
[[nodiscard]] std::string popoverCommands(corvid::CGPoint topLeft);

/// The criteria for a process's window of this title ("CRITERIA"); only ASCII letters and digits are compared, and any
/// other character matches any one character.
[[nodiscard]] std::string ownWindowCriteria(ProcessIdentifier process, const std::string& title);

} // namespace platform::sway
