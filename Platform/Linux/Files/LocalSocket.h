#pragma once

#include "Platform/Seam/Desktop/Accessibility.h"

#include <optional>
#include <string>

namespace platform::linux {

/// Whether a process listens at the Unix socket of that path. Does not wait.
[[nodiscard]] bool isListenedTo(const std::string& path);

/// The process that listens at the Unix socket of that path (unix(7), SO_PEERCRED). Does not wait; empty without one.
[[nodiscard]] std::optional<ProcessIdentifier> listenerAt(const std::string& path);

} // namespace platform::linux
