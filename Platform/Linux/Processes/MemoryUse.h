#pragma once

#include "Platform/Seam/Desktop/MemoryUse.h"

#include <optional>
#include <string>

namespace platform::linux {

/// The memory of this process as the kernel counts it: its present and its largest resident set (`VmRSS` and `VmHWM` in
/// proc(5)), with shared libraries. Empty if the kernel does not report it. Any thread.
[[nodiscard]] std::optional<MemoryUse> readMemoryUse(const std::string& path = "/proc/self/status");

} // namespace platform::linux
