#pragma once

#include "Platform/MemoryUse.h"

#include <optional>
#include <string>

namespace platform::linux {

/// The memory of this process as the kernel counts it: its resident set and the largest that has been (`VmRSS` and
/// `VmHWM` in proc(5)), shared libraries included. Nothing where the kernel does not report it. Any thread.
[[nodiscard]] std::optional<MemoryUse> readMemoryUse(const std::string& path = "/proc/self/status");

} // namespace platform::linux
