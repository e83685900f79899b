#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Compositor/Window.h"
#include "Platform/Seam/Desktop/Accessibility.h"

#include <string>

namespace platform::sway {

/// `i3ipc::placingCommands` for one of sway's windows. `hiddenWorkspace`: the name of its workspace if that is not
/// shown, else empty. A window that is moved goes to the workspace that is shown there, and is put back.
[[nodiscard]] std::string placingCommands(const compositor::WindowIdentifier& window, const corvid::CGRect& frame,
                                          const std::string& hiddenWorkspace);

/// Makes a window of ours a popover with its top-left corner there: above the layout, without a border of the
/// compositor's, on every workspace.
[[nodiscard]] std::string popoverCommands(corvid::CGPoint topLeft);

/// The criteria for a process's window of this title ("CRITERIA"); only ASCII letters and digits are compared, and any
/// other character matches any one character.
[[nodiscard]] std::string ownWindowCriteria(ProcessIdentifier process, const std::string& title);

} // namespace platform::sway
