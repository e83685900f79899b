#pragma once

#include "Platform/Seam/Desktop/Accessibility.h"
#include "Platform/Seam/Desktop/MemoryUse.h"

#include <optional>

namespace platform {

/// This process. Any thread.
class ProcessInfo {
public:
    ProcessInfo() = default;
    ProcessInfo(const ProcessInfo&) = delete;
    ProcessInfo& operator=(const ProcessInfo&) = delete;
    virtual ~ProcessInfo() = default;

    /// This process's own id, in the numbering of `Accessibility::processIdentifier`.
    [[nodiscard]] virtual ProcessIdentifier processIdentifier() const = 0;

    /// Its use of memory; empty if the kernel does not report it.
    [[nodiscard]] virtual std::optional<MemoryUse> memoryUse() const = 0;
};

} // namespace platform
