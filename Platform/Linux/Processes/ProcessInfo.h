#pragma once

#include "Platform/Seam/Desktop/ProcessInfo.h"

namespace platform::linux {

/// This process as the kernel knows it.
class ProcessInfo final : public platform::ProcessInfo {
public:
    [[nodiscard]] ProcessIdentifier processIdentifier() const override;
    [[nodiscard]] std::optional<MemoryUse> memoryUse() const override;
};

} // namespace platform::linux
