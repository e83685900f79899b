#pragma once

#include "Platform/Seam/Desktop/SystemClock.h"

namespace platform::linux {

/// The machine's time of day (CLOCK_REALTIME).
class SystemClock final : public platform::SystemClock {
public:
    [[nodiscard]] corvid::Date now() const override;
};

} // namespace platform::linux
