#include "Platform/Linux/Services/SystemClock.h"

#include <chrono>

namespace platform::linux {

corvid::Date SystemClock::now() const {
    return std::chrono::system_clock::now();
}

} // namespace platform::linux
