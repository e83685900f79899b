#pragma once

#include <string>

namespace platform::linux {

/// Whether a process listens at the Unix socket of that path. Does not wait.
[[nodiscard]] bool isListenedTo(const std::string& path);

} // namespace platform::linux
