#pragma once

#include "Platform/Seam/Desktop/ProcessInfo.h"

namespace platform::simulated {

class ProcessInfo final : public platform::ProcessInfo {
public:
    /// This program's own process on the simulated desktop.
    static constexpr ProcessIdentifier ownProcess = 1;

    [[nodiscard]] ProcessIdentifier processIdentifier() const override { return ownProcess; }

    [[nodiscard]] std::optional<MemoryUse> memoryUse() const override { return use; }

    /// The kernel's report on this program's memory.
    std::optional<MemoryUse> use{{.current = 4 << 20, .peak = 6 << 20}};
};

} // namespace platform::simulated
