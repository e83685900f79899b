#pragma once

#include "CorvidKitCore/Date.h"
#include "Platform/Seam/Desktop/MainActor.h"
#include "Platform/Seam/Desktop/SystemClock.h"

#include <chrono>

namespace platform::simulated {

/// The time of day, which advances with the main actor's clock and can be set.
class SystemClock final : public platform::SystemClock {
public:
    explicit SystemClock(const platform::MainActor& mainActor)
        : mainActor(mainActor) {}

    [[nodiscard]] corvid::Date now() const override {
        return start + std::chrono::duration<double>(mainActor.now().time_since_epoch());
    }

    /// Sets the clock forward, or back with a negative number.
    void adjust(std::chrono::duration<double> difference) { start += difference; }

private:
    const platform::MainActor& mainActor;
    /// 2023-11-14 22:13:20 UTC, a round number of seconds.
    corvid::Date start = corvid::dateOf(1'700'000'000);
};

} // namespace platform::simulated
