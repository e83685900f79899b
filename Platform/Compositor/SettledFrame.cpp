#include "Platform/Compositor/SettledFrame.h"

#include <chrono>
#include <thread>

namespace platform::compositor {

std::optional<corvid::CGRect> settledFrame(const MainActor& clock, Duration calm, Instant deadline,
                                           const std::function<std::optional<corvid::CGRect>()>& read) {
    constexpr std::chrono::milliseconds step{4};
    std::optional<corvid::CGRect> frame;
    Instant since = clock.now();
    while (const auto present = read()) {
        const Instant now = clock.now();
        if (frame != present) {
            frame = present;
            since = now;
        }
        if (now - since >= calm) {
            return frame;
        }
        if (now + step >= deadline) {
            break;
        }
        std::this_thread::sleep_for(step);
    }
    return std::nullopt;
}

} // namespace platform::compositor
