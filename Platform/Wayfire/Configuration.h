#pragma once

#include "Platform/Seam/Desktop/Accessibility.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::wayfire {

/// The known facts of a compositor's process.
struct CompositorProcess {
    /// The words of its command line.
    std::vector<std::string> words;
    /// Its environment when it began: "NAME=value".
    std::vector<std::string> variables;

    /// Nothing is known of a process that is gone, or belongs to another user.
    [[nodiscard]] static CompositorProcess of(ProcessIdentifier process);
};

/// The file that it reads its configuration from (wayfire(1)): the one of its option or variable, else the first that
/// exists of the usual ones, or else the last of those. Empty where none can be named.
[[nodiscard]] std::string configurationPath(const CompositorProcess& compositor,
                                            const std::function<bool(const std::string& path)>& exists);

/// The plugins that this takes and that a configuration does not name, in this order: "ipc", "ipc-rules", "command".
/// Without a line of plugins Wayfire has its default ones, of which only "command" is such a one.
[[nodiscard]] std::vector<std::string> missingPluginsIn(std::string_view configuration);

} // namespace platform::wayfire
