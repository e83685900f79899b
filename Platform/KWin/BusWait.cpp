#include "Platform/KWin/BusWait.h"

#include <chrono>
#include <cstdint>

namespace platform::kwin {

bool waitOnBus(sd_bus* const& bus, const MainActor& clock, const std::function<bool()>& condition, Instant deadline) {
    while (!condition()) {
        const auto left = std::chrono::ceil<std::chrono::microseconds>(deadline - clock.now());
        if (bus == nullptr || left <= std::chrono::microseconds::zero()) {
            return false;
        }
        const int processed = sd_bus_process(bus, nullptr);
        if (processed < 0 || (processed == 0 && sd_bus_wait(bus, static_cast<std::uint64_t>(left.count())) < 0)) {
            return false;
        }
    }
    return true;
}

} // namespace platform::kwin
