#pragma once

#include "CorvidKitCore/Date.h"

namespace platform {

/// The time of day, which the user or the network may set forward and back. Any thread.
class SystemClock {
public:
    SystemClock() = default;
    SystemClock(const SystemClock&) = delete;
    SystemClock& operator=(const SystemClock&) = delete;
    virtual ~SystemClock() = default;

    [[nodiscard]] virtual corvid::Date now() const = 0;
};

} // namespace platform
