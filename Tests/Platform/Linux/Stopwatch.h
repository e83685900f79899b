#pragma once

#include <chrono>
#include <cstdint>
#include <fstream>

namespace platform::linux {

/// The time for which this thread has run or waited since the stopwatch was made or restarted. It excludes the time for
/// which the thread was ready to run while other processes had the processors, because a busy machine is no fault of
/// the measured code. If the kernel does not count that time, it is included (/proc/PID/schedstat, second number, in
/// nanoseconds). For the creating thread alone.
class Stopwatch {
public:
    [[nodiscard]] std::chrono::nanoseconds elapsed() const {
        return (std::chrono::steady_clock::now() - begin) - (waitedForProcessor() - waited);
    }

    void start() { *this = {}; }

private:
    static std::chrono::nanoseconds waitedForProcessor() {
        std::ifstream statistics("/proc/thread-self/schedstat");
        std::int64_t ran = 0;
        std::int64_t waited = 0;
        statistics >> ran >> waited;
        return std::chrono::nanoseconds(waited);
    }

    std::chrono::nanoseconds waited = waitedForProcessor();
    std::chrono::steady_clock::time_point begin = std::chrono::steady_clock::now();
};

} // namespace platform::linux
