#include "CorvidKit/MemoryFootprint.h"

#include "Platform/Seam/Desktop/ProcessInfo.h"
#include "Platform/Seam/Platform.h"

namespace corvid::MemoryFootprint {

namespace {
constexpr double mebibyte = 1'048'576;
} // namespace

double Reading::currentMB() const {
    return static_cast<double>(current) / mebibyte;
}

double Reading::peakMB() const {
    return static_cast<double>(peak) / mebibyte;
}

Reading read() {
    const auto use = platform::current().processInfo.memoryUse();
    return use ? Reading{.current = use->current, .peak = use->peak} : Reading{};
}

} // namespace corvid::MemoryFootprint
