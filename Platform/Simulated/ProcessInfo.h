#pragma once

#include "Platform/ProcessInfo.h"

namespace platform::simulated {

class ProcessInfo final : public platform::ProcessInfo {
public:
    /// This program's own process on the simulated desktop.
    static constexpr ProcessIdentifier ownProcess = 1;

    [[nodiscard]] ProcessIdentifier processIdentifier() const override { return ownProcess; }
};

} // namespace platform::simulated
